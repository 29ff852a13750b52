#include "app/ui/editors/ExactTextEdit.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QStringTokenizer>
#include <QTextDocument>
#include <optional>

namespace {

/// Where to split a line that is too long: after a space if there is one, and not within a
/// character.
qsizetype cutIn(QStringView line) {
    const qsizetype space = line.first(LongLines::longest).lastIndexOf(u' ');
    if (space >= 0) {
        return space + 1;
    }
    return line[LongLines::longest - 1].isHighSurrogate() ? LongLines::longest - 1
                                                          : LongLines::longest;
}

void appendSections(QString& sections, QStringView line) {
    while (line.size() > LongLines::longest) {
        const qsizetype cut = cutIn(line);
        sections += line.first(cut);
        sections += u'\n';
        sections += LongLines::mark;
        line = line.sliced(cut);
    }
    sections += line;
}

/// The kind of line break that a text has. If it has several, any of them: none would keep all.
QString lineBreakOf(const QString& text) {
    for (const QString& kind : {QStringLiteral("\r\n"), QStringLiteral("\n"), QStringLiteral("\r"),
                                QStringLiteral("\u2029")}) {
        if (text.contains(kind)) {
            return kind;
        }
    }
    return QStringLiteral("\n");
}

/// How far a key deletes from the cursor; nothing for keys that delete nothing.
std::optional<QTextCursor::MoveOperation> deletedBy(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Delete)) {
        return QTextCursor::NextCharacter;
    }
    if (event.matches(QKeySequence::DeleteStartOfWord)) {
        return QTextCursor::PreviousWord;
    }
    if (event.matches(QKeySequence::DeleteEndOfWord)) {
        return QTextCursor::NextWord;
    }
    return event.key() == Qt::Key_Backspace ? std::optional(QTextCursor::PreviousCharacter)
                                            : std::nullopt;
}

}  // namespace

// --- Long lines ---

QString LongLines::inSections(const QString& text) {
    QString sections;
    sections.reserve(text.size() + text.size() / longest * 2);
    bool isFirst = true;
    for (const QStringView line : qTokenize(text, u'\n')) {
        if (!isFirst) {
            sections += u'\n';
        }
        isFirst = false;
        appendSections(sections, line);
    }
    return sections;
}

QString LongLines::joined(const QString& sections, const QString& lineBreak) {
    QString text;
    text.reserve(sections.size());
    bool isFirst = true;
    for (const QStringView section : qTokenize(sections, u'\u2029')) {
        if (!isFirst && !section.contains(mark)) {
            text += lineBreak;
        }
        isFirst = false;
        text += section;
    }
    return text.remove(mark);
}

// --- The editor ---

ExactTextEdit::ExactTextEdit(QWidget* parent) : QPlainTextEdit(parent) {
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &ExactTextEdit::stayOffMarks);
    connect(this, &QPlainTextEdit::selectionChanged, this, &ExactTextEdit::stayOffMarks);
}

bool ExactTextEdit::setExactText(const QString& text) {
    lineBreak_ = lineBreakOf(text);
    QString lines = text;
    if (lineBreak_ != QLatin1String("\n")) {
        lines.replace(lineBreak_, QStringLiteral("\n"));
    }
    setPlainText(LongLines::inSections(lines));
    const bool isExact = exactText() == text;
    setReadOnly(!isExact);
    return isExact;
}

QString ExactTextEdit::exactText() const {
    return LongLines::joined(document()->toRawText(), lineBreak_);
}

void ExactTextEdit::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::InsertLineSeparator) && !isReadOnly()) {
        // The base would insert U+2028, which looks like a line break but is not one in most files.
        textCursor().insertBlock();
        ensureCursorVisible();
        event->accept();
        return;
    }
    const std::optional<QTextCursor::MoveOperation> reach = deletedBy(*event);
    if (reach && !isReadOnly() && !textCursor().hasSelection()) {
        joinSections(*reach);
    }
    QPlainTextEdit::keyPressEvent(event);
}

/// Keeps the cursor and the ends of a selection from being between a section and its mark: a mark
/// that is deleted without the separator before it would leave a line break.
void ExactTextEdit::stayOffMarks() {
    QTextCursor cursor = textCursor();
    const int position = cursor.position();
    const int anchor = cursor.anchor();
    lastPosition_ = placeOffMark(position, lastPosition_ == position + 1);
    // A triple click begins its selection there, for example. A selection shrinks rather than
    // grows.
    const int newAnchor =
        anchor == position ? lastPosition_ : placeOffMark(anchor, anchor > position);
    if (lastPosition_ != position || newAnchor != anchor) {
        cursor.setPosition(newAnchor);
        cursor.setPosition(lastPosition_, QTextCursor::KeepAnchor);
        setTextCursor(cursor);
    }
}

/// The place before the separator of two sections or after the mark, instead of between them.
int ExactTextEdit::placeOffMark(int place, bool isBefore) const {
    if (document()->characterAt(place) != LongLines::mark) {
        return place;
    }
    return isBefore && place > 0 ? place - 1 : place + 1;
}

/// Joins the sections between which something is about to be deleted: the key is to delete what is
/// visible, not their separator.
void ExactTextEdit::joinSections(QTextCursor::MoveOperation reach) {
    QTextCursor deleted = textCursor();
    deleted.movePosition(reach, QTextCursor::KeepAnchor);
    for (int at = deleted.selectionEnd(); at >= deleted.selectionStart() && at > 0; --at) {
        if (document()->characterAt(at) == LongLines::mark) {
            QTextCursor seam(document());
            seam.setPosition(at - 1);
            seam.setPosition(at + 1, QTextCursor::KeepAnchor);
            seam.removeSelectedText();
            return;
        }
    }
}

QMimeData* ExactTextEdit::createMimeDataFromSelection() const {
    auto* copied = new QMimeData;
    copied->setText(LongLines::joined(textCursor().selectedText(), lineBreak_));
    return copied;
}
