#include <QTest>

#include "app/ui/look/Colors.h"
#include "app/ui/look/DarkPalette.h"
#include "tests/ui/support/UiTest.h"

class ColorsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void secondaryTextIsReadableAndStandsBack_data() {
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("ground");
        QTest::newRow("black on white") << QColor(Qt::black) << QColor(Qt::white);
        QTest::newRow("black on grey") << QColor(Qt::black) << QColor(0xEF, 0xEF, 0xEF);
        QTest::newRow("white on black") << QColor(Qt::white) << QColor(Qt::black);
        QTest::newRow("white on dark grey") << QColor(Qt::white) << QColor(0x35, 0x35, 0x35);
        QTest::newRow("light on dark") << QColor(0xFC, 0xFC, 0xFC) << QColor(0x1B, 0x1E, 0x20);
        QTest::newRow("dark on light") << QColor(0x23, 0x26, 0x29) << QColor(0xFC, 0xFC, 0xFC);
    }

    void secondaryTextIsReadableAndStandsBack() {
        QFETCH(QColor, text);
        QFETCH(QColor, ground);
        QPalette palette;
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Base, ground);
        const QColor color =
            Colors::secondary(palette, QPalette::Active, QPalette::Text, QPalette::Base);
        QVERIFY2(Colors::contrast(color, ground) >= 4.5,
                 qPrintable(QString::number(Colors::contrast(color, ground))));
        QVERIFY(Colors::contrast(color, ground) < Colors::contrast(text, ground));
    }

    void makesSelectedTextReadable_data() {
        QTest::addColumn<QColor>("ground");
        QTest::addColumn<QColor>("text");
        QTest::newRow("the plain style's") << QColor(48, 140, 198) << QColor(Qt::white);
        QTest::newRow("pale") << QColor(200, 220, 255) << QColor(Qt::white);
        QTest::newRow("dark on dark") << QColor(60, 60, 90) << QColor(Qt::black);
    }

    void makesSelectedTextReadable() {
        QFETCH(const QColor, ground);
        QFETCH(const QColor, text);
        const QPalette palette = paletteOf(ground, text);
        QVERIFY(Colors::contrast(ground, text) < 4.5);
        const QColor found = Colors::selection(palette, QPalette::Active);
        QVERIFY2(Colors::contrast(found, text) >= 4.5,
                 qPrintable(QString::number(Colors::contrast(found, text))));
        // No further away than it has to be.
        QVERIFY(Colors::contrast(found, text) < 5.2);
    }

    void leavesReadableSelectionsAlone() {
        const QPalette dark = DarkPalette::make();
        QCOMPARE(Colors::selection(dark, QPalette::Active),
                 dark.color(QPalette::Active, QPalette::Highlight));
        QCOMPARE(Colors::selection(paletteOf(Qt::yellow, Qt::black), QPalette::Active),
                 QColor(Qt::yellow));
    }

    /// A theme that has the same colour for both cannot be helped, and must not hang anything.
    void endsForAnyPalette() {
        QVERIFY(Colors::selection(paletteOf(Qt::black, Qt::black), QPalette::Active).isValid());
    }

private:
    static QPalette paletteOf(const QColor& ground, const QColor& text) {
        QPalette palette;
        palette.setColor(QPalette::Highlight, ground);
        palette.setColor(QPalette::HighlightedText, text);
        return palette;
    }
};

const RegisteredUiTest<ColorsTest> registered;
#include "ColorsTest.moc"
