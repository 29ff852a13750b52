#pragma once

#include <QWidget>

/// A strip across a window with something that the user should know about the document.
class NoticeBanner : public QWidget {
    Q_OBJECT

public:
    explicit NoticeBanner(const QString& text, QWidget* parent = nullptr);

    QString text() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    class QLabel* label_;
};
