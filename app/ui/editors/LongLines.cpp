#include "app/ui/editors/LongLines.h"

#include <QStringTokenizer>

namespace {

/// Where to cut a line that is too long: after a blank if there is one, and not within a character.
qsizetype cutIn(QStringView line) {
    const qsizetype blank = line.first(LongLines::longest).lastIndexOf(u' ');
    if (blank >= 0) {
        return blank + 1;
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

}  // namespace

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
