#include <QTest>

#include "app/ui/look/Contrast.h"
#include "app/ui/look/DarkPalette.h"
#include "app/ui/look/SelectionColor.h"

class SelectionColorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        QVERIFY(contrast(ground, text) < 4.5);
        const QColor found = SelectionColor::of(palette, QPalette::Active);
        QVERIFY2(contrast(found, text) >= 4.5, qPrintable(QString::number(contrast(found, text))));
        // No further away than it has to be.
        QVERIFY(contrast(found, text) < 5.2);
    }

    void leavesReadableColoursAlone() {
        const QPalette dark = DarkPalette::make();
        QCOMPARE(SelectionColor::of(dark, QPalette::Active),
                 dark.color(QPalette::Active, QPalette::Highlight));
        QCOMPARE(SelectionColor::of(paletteOf(Qt::yellow, Qt::black), QPalette::Active),
                 QColor(Qt::yellow));
    }

    /// A theme that has the same colour for both cannot be helped, and must not hang anything.
    void endsForAnyPalette() {
        QVERIFY(SelectionColor::of(paletteOf(Qt::black, Qt::black), QPalette::Active).isValid());
    }

private:
    static QPalette paletteOf(const QColor& ground, const QColor& text) {
        QPalette palette;
        palette.setColor(QPalette::Highlight, ground);
        palette.setColor(QPalette::HighlightedText, text);
        return palette;
    }
};

QTEST_MAIN(SelectionColorTest)
#include "SelectionColorTest.moc"
