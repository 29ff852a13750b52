#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;

/// A strip across a window with something that the user should know about the document, and perhaps
/// buttons for what can be done about it.
class NoticeStrip : public QWidget {
    Q_OBJECT

public:
    explicit NoticeStrip(const QString& text, QWidget* parent = nullptr);

    /// What the strip says, to screen readers too.
    void setText(const QString& text);

protected:
    /// Adds a button at the end; `text` may have a mnemonic.
    QPushButton* addButton(const QString& text);

    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* label_;
    QWidget* icon_;
    QHBoxLayout* layout_;
};
