#pragma once

#include <QPlainTextEdit>
#include <QString>

/// Long lines cut into sections for text editors, which lay out each line as a whole and take
/// seconds for one of megabytes.
///
/// The sections of a line stand on lines of their own, and each but the first holds a mark that is
/// drawn as nothing. It says that the section belongs to the line above it, wherever in the section
/// it stands: so whatever is edited before, behind or across it, what was meant stays clear.
namespace LongLines {

/// The mark. Not assigned in Unicode and set aside there for what is not to be drawn, so texts
/// hardly hold it; one that does cannot be brought back by `joined`.
inline constexpr QChar mark(0xFFF0);

/// The most characters of a section: some lines of the screen.
inline constexpr qsizetype longest = 5000;

/// `text`, whose line breaks are "\n", with its long lines in sections.
QString inSections(const QString& text);

/// The text without marks, the lines set apart by `lineBreak`. In `sections` they are set apart by
/// U+2029, as text documents give them.
QString joined(const QString& sections, const QString& lineBreak);

}  // namespace LongLines

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
