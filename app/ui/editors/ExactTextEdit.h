#pragma once

#include <QPlainTextEdit>
#include <QString>

/// Long lines split into sections for text editors, which lay out each line as a whole and take
/// seconds for one of megabytes.
///
/// Each section is a line of its own, and all but the first contain a mark that is invisible. It
/// says that the section continues the line above, wherever in the section it is: so the meaning
/// stays clear, whatever is edited before, after or across it.
namespace LongLines {

/// The mark. Unicode has not assigned it and reserves it for characters that are not drawn, so
/// hardly any text contains it; one that does cannot be restored by `joined`.
inline constexpr QChar mark(0xFFF0);

/// How long a section is at most, in UTF-16 code units: some lines on the screen.
inline constexpr qsizetype longest = 5000;

/// `text`, whose line breaks are "\n", with its long lines split into sections.
QString inSections(const QString& text);

/// The text without marks, its lines separated by `lineBreak`. In `sections` they are separated by
/// U+2029, as text documents return them.
QString joined(const QString& sections, const QString& lineBreak);

}  // namespace LongLines

/// A text editor of many lines that returns its text exactly, unlike its base, which normalizes
/// line breaks and spaces. It stays fast with lines of megabytes.
///
/// It keeps one kind of line break at a time: the one that the text has, or "\n" if it has none.
/// Return inserts one of that kind.
class ExactTextEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ExactTextEdit(QWidget* parent = nullptr);

    /// Shows a text. False if it could not be returned exactly; it is read-only then.
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
