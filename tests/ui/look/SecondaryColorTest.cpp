#include <QTest>

#include "app/ui/look/Contrast.h"
#include "app/ui/look/SecondaryColor.h"

class SecondaryColorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isReadableAndStandsBack_data() {
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("ground");
        QTest::newRow("black on white") << QColor(Qt::black) << QColor(Qt::white);
        QTest::newRow("black on grey") << QColor(Qt::black) << QColor(0xEF, 0xEF, 0xEF);
        QTest::newRow("white on black") << QColor(Qt::white) << QColor(Qt::black);
        QTest::newRow("white on dark grey") << QColor(Qt::white) << QColor(0x35, 0x35, 0x35);
        QTest::newRow("light on dark") << QColor(0xFC, 0xFC, 0xFC) << QColor(0x1B, 0x1E, 0x20);
        QTest::newRow("dark on light") << QColor(0x23, 0x26, 0x29) << QColor(0xFC, 0xFC, 0xFC);
    }

    void isReadableAndStandsBack() {
        QFETCH(QColor, text);
        QFETCH(QColor, ground);
        QPalette palette;
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Base, ground);
        const QColor color =
            SecondaryColor::of(palette, QPalette::Active, QPalette::Text, QPalette::Base);
        QVERIFY2(contrast(color, ground) >= 4.5,
                 qPrintable(QString::number(contrast(color, ground))));
        QVERIFY(contrast(color, ground) < contrast(text, ground));
    }
};

QTEST_GUILESS_MAIN(SecondaryColorTest)
#include "SecondaryColorTest.moc"
