#include <QTest>
#include <string>

#include "app/ui/text/SingleLineText.h"
#include "tests/support/TestProgram.h"

class SingleLineTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void marksWhatBreaksALine_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("plain") << QStringLiteral("Gull Rock") << QStringLiteral("Gull Rock");
        QTest::newRow("line feed") << QStringLiteral("a\nb") << QStringLiteral("a↵b");
        QTest::newRow("carriage return") << QStringLiteral("a\rb") << QStringLiteral("a↵b");
        QTest::newRow("both are one") << QStringLiteral("a\r\nb\r") << QStringLiteral("a↵b↵");
        QTest::newRow("separators")
            << QStringLiteral("a\u2028b\u2029c\u0085d") << QStringLiteral("a↵b↵c↵d");
        QTest::newRow("tab") << QStringLiteral("a\tb") << QStringLiteral("a⇥b");
        QTest::newRow("escape") << QStringLiteral("\u001b[1m") << QStringLiteral("␛[1m");
        QTest::newRow("delete") << QStringLiteral("\u007f") << QStringLiteral("␡");
        QTest::newRow("C1") << QStringLiteral("a\u009bb") << QStringLiteral("a[U+009B]b");
        QTest::newRow("override") << QStringLiteral("a\u202etxt.exe")
                                  << QStringLiteral("a[U+202E]txt.exe");
        QTest::newRow("isolates") << QStringLiteral("\u2066x\u2069")
                                  << QStringLiteral("[U+2066]x[U+2069]");
        QTest::newRow("byte-order mark")
            << QStringLiteral("\ufeffx") << QStringLiteral("[U+FEFF]x");
        QTest::newRow("direction marks stay")
            << QStringLiteral("x\u200ey\u200dz") << QStringLiteral("x\u200ey\u200dz");
        QTest::newRow("Hebrew and emoji") << QStringLiteral("שלום 🏮") << QStringLiteral("שלום 🏮");
    }

    void marksWhatBreaksALine() {
        QFETCH(QString, text);
        QFETCH(QString, line);
        QCOMPARE(SingleLineText::fromText(text), line);
        QCOMPARE(SingleLineText::fromUtf8(text.toStdString()), line);
    }

    void showsNul() {
        QCOMPARE(SingleLineText::fromUtf8(std::string("a\0b", 3)), QStringLiteral("a␀b"));
    }

    void cutsLongTexts() {
        const std::string atLimit(SingleLineText::longest, 'x');
        QCOMPARE(SingleLineText::fromUtf8(atLimit).size(), SingleLineText::longest);
        const QString cut = SingleLineText::fromUtf8(std::string(10'000'000, 'x'));
        QCOMPARE(cut.size(), SingleLineText::longest + 1);
        QVERIFY(cut.endsWith(u'…'));
    }

    void cutsBetweenCharacters() {
        // One byte, then characters of three bytes: the limit falls into one of them.
        std::string text = "x";
        while (text.size() < 5000) {
            text += "港";
        }
        const QString cut = SingleLineText::fromUtf8(text);
        QVERIFY(!cut.contains(QChar::ReplacementCharacter));
        QVERIFY(cut.endsWith(QStringLiteral("港…")));
    }
};

const RegisteredTest<SingleLineTextTest> registered;
#include "SingleLineTextTest.moc"
