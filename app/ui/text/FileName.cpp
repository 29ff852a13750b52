#include "app/ui/text/FileName.h"

#include <QCoreApplication>
#include <QTextBoundaryFinder>

namespace {

constexpr qsizetype longestName = 255;

}  // namespace

QString FileName::safe(const QString& text) {
    QString name;
    for (const QChar character : text) {
        if (character != u'/' && character.category() != QChar::Other_Control) {
            name += character;
        }
    }
    while (name.startsWith(u'.')) {
        name.remove(0, 1);
    }
    // Whole characters are removed, so that none is cut in two.
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, name);
    finder.toEnd();
    while (name.left(finder.position()).toUtf8().size() > longestName) {
        finder.toPreviousBoundary();
    }
    name.truncate(finder.position());
    return name.isEmpty() ? QCoreApplication::translate("FileName", "Untitled") : name;
}
