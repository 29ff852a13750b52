#include "app/ui/text/PlainToolTip.h"

#include <QStringList>
#include <QTextBoundaryFinder>
#include <QToolTip>
#include <QWidget>

namespace {

/// Where a line that begins at `begin` ends: after the last whitespace within the length, or else
/// between two characters.
qsizetype lineEnd(const QString& text, qsizetype begin) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(begin);
    qsizetype end = begin;
    qsizetype afterSpace = begin;
    for (int i = 0; i < PlainToolTip::lineLength; ++i) {
        const qsizetype next = finder.toNextBoundary();
        if (next < 0 || next == text.size()) {
            return text.size();
        }
        if (text.at(end).isSpace()) {
            afterSpace = next;
        }
        end = next;
    }
    return afterSpace > begin ? afterSpace : end;
}

}  // namespace

QString PlainToolTip::wrapped(const QString& text) {
    QStringList lines;
    qsizetype begin = 0;
    while (begin < text.size() && lines.size() < lineLimit) {
        const qsizetype end = lineEnd(text, begin);
        lines += text.mid(begin, end - begin);
        begin = end;
    }
    QString result = lines.join(u'\n');
    if (begin < text.size()) {
        result += u'\u2026';
    }
    return result;
}

QString PlainToolTip::markup(const QString& text) {
    return QStringLiteral("<div style=\"white-space: pre\">%1</div>")
        .arg(text.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
}

void PlainToolTip::show(const QPoint& position, const QString& text, const QWidget* widget,
                        const QRect& rect) {
    // Qt only wants to know where the widget is, but asks for one that can be changed.
    QToolTip::showText(position, markup(wrapped(text)), const_cast<QWidget*>(widget), rect);
}
