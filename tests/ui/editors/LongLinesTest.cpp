#include <QTest>

#include "app/ui/editors/LongLines.h"

namespace {

/// As text documents give their text back.
QString ofDocument(QString sections) {
    return sections.replace(u'\n', QChar::ParagraphSeparator);
}

QString thereAndBack(const QString& text) {
    return LongLines::joined(ofDocument(LongLines::inSections(text)), QStringLiteral("\n"));
}

}  // namespace

class LongLinesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void leavesShortLinesAlone() {
        for (const char* text : {"", "\n", "one", "one\n\ntwo\n"}) {
            const QString line = QString::fromLatin1(text);
            QCOMPARE(LongLines::inSections(line), line);
            QCOMPARE(thereAndBack(line), line);
        }
        const QString longest(LongLines::longest, u'x');
        QCOMPARE(LongLines::inSections(longest), longest);
    }

    void cutsLongLines() {
        const QString text = QString(LongLines::longest * 2 + 1, u'x') + QStringLiteral("\nend");
        const QStringList sections = LongLines::inSections(text).split(u'\n');
        QCOMPARE(sections.size(), 4);
        QCOMPARE(sections[0].size(), LongLines::longest);
        QCOMPARE(sections[1], LongLines::mark + QString(LongLines::longest, u'x'));
        QCOMPARE(sections[2], LongLines::mark + QStringLiteral("x"));
        QCOMPARE(sections[3], QStringLiteral("end"));
        QCOMPARE(thereAndBack(text), text);
    }

    void cutsBehindBlanks() {
        const QString text = QString(4000, u'x') + u' ' + QString(4000, u'y');
        const QStringList sections = LongLines::inSections(text).split(u'\n');
        QCOMPARE(sections.size(), 2);
        QCOMPARE(sections[0], QString(4000, u'x') + u' ');
        QCOMPARE(thereAndBack(text), text);
    }

    void doesNotCutCharacters() {
        QString text(1, u'x');
        for (int i = 0; i < 10'000; ++i) {
            text += QStringLiteral("\U0001F600");
        }
        for (const QString& section : LongLines::inSections(text).split(u'\n')) {
            QVERIFY(!section.back().isHighSurrogate());
        }
        QCOMPARE(thereAndBack(text), text);
    }

    void joinsWhereverTheMarkStands() {
        const QString mark(LongLines::mark);
        const QString sections = QStringLiteral("one\u2029t%1wo\u2029three%1\u2029four").arg(mark);
        QCOMPARE(LongLines::joined(sections, QStringLiteral("\r\n")),
                 QStringLiteral("onetwothree\r\nfour"));
        QCOMPARE(LongLines::joined(mark + QStringLiteral("x"), QStringLiteral("\n")),
                 QStringLiteral("x"));
    }
};

QTEST_APPLESS_MAIN(LongLinesTest)
#include "LongLinesTest.moc"
