#include <QLocale>
#include <QTest>
#include <cstdint>
#include <numeric>
#include <vector>

#include "app/ui/text/DataText.h"
#include "tests/ui/support/UiTest.h"

class DataTextTest : public QObject {
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
        QTEST(DataText::size(count), "text");
    }

    void usesTheDecimalSignOfTheUser() {
        QLocale::setDefault(QLocale(QLocale::German));
        QCOMPARE(DataText::size(1'234'567), QStringLiteral("1,2 MB"));
    }

    void summaryShowsSizeAndFirstBytes_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0 << QStringLiteral("Zero kB");
        QTest::newRow("one") << 1 << QStringLiteral("1 byte · 00");
        QTest::newRow("group") << 4 << QStringLiteral("4 bytes · 00010203");
        QTest::newRow("next group") << 5 << QStringLiteral("5 bytes · 00010203 04");
        QTest::newRow("eight") << 8 << QStringLiteral("8 bytes · 00010203 04050607");
        QTest::newRow("nine") << 9 << QStringLiteral("9 bytes · 00010203 04050607…");
        QTest::newRow("twelve") << 12 << QStringLiteral("12 bytes · 00010203 04050607…");
        QTest::newRow("many") << 65536 << QStringLiteral("66 kB · 00010203 04050607…");
    }

    void summaryShowsSizeAndFirstBytes() {
        QFETCH(int, count);
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(count));
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
        QTEST(DataText::summary(bytes), "text");
    }

    void summaryHasCapitalDigits() {
        const std::vector<std::uint8_t> bytes{0xDE, 0xAD, 0xBE, 0xEF};
        QCOMPARE(DataText::summary(bytes), QStringLiteral("4 bytes · DEADBEEF"));
    }
};

const RegisteredUiTest<DataTextTest> registered;
#include "DataTextTest.moc"
