#pragma once

#include <QPlainTextEdit>

/// A text editor of many lines that gives back its text exactly, unlike its base, which makes every
/// kind of line break and of blank the common one. Lines of megabytes do not hold it up.
///
/// One kind of line break at a time can be kept: that which the text has, or "\n" if it has none.
/// Return inserts one of that kind.
class ExactTextEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ExactTextEdit(QWidget* parent = nullptr);

    /// Shows a text. False if it would not come back exactly; it can then only be looked at.
    bool setExactText(const QString& text);

    /// The text as it is now. Takes time in proportion to its length.
    QString exactText() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    void stayOffMarks();
    int placeOffMark(int place, bool isBefore) const;
    void joinSections(QTextCursor::MoveOperation reach);

    QString lineBreak_ = QStringLiteral("\n");
    int lastPosition_ = 0;
};
