#include <QLocale>
#include <QTest>

#include "app/ui/text/ByteCount.h"
#include "tests/ui/support/UiTest.h"

class ByteCountTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void namesSizes_data() {
        QTest::addColumn<qint64>("count");
        QTest::addColumn<QString>("text");
        const auto add = [](qint64 count, const char* text) {
            QTest::addRow("%lld", static_cast<long long>(count))
                << count << QString::fromUtf8(text);
        };
        add(0, "Zero kB");
        add(1, "1 byte");
        add(2, "2 bytes");
        add(12, "12 bytes");
        add(999, "999 bytes");
        add(1000, "1 kB");
        add(1499, "1 kB");
        add(1500, "2 kB");
        add(65536, "66 kB");
        add(999'499, "999 kB");
        add(999'500, "1 MB");
        add(1'000'000, "1 MB");
        add(1'234'567, "1.2 MB");
        add(999'949'999, "999.9 MB");
        add(999'950'000, "1 GB");
        add(1'234'567'890, "1.23 GB");
        add(1'200'000'000, "1.2 GB");
        add(5'000'000'000'000, "5 TB");
        add(7'250'000'000'000'000, "7.25 PB");
        add(9'223'372'036'854'775'807, "9.22 EB");
    }

    void namesSizes() {
        QFETCH(qint64, count);
        QTEST(ByteCount::text(count), "text");
    }

    void usesTheDecimalSignOfTheUser() {
        QLocale::setDefault(QLocale(QLocale::German));
        QCOMPARE(ByteCount::text(1'234'567), QStringLiteral("1,2 MB"));
    }
};

int main(int argc, char** argv) {
    return runUiTest<ByteCountTest>(argc, argv);
}
#include "ByteCountTest.moc"
