#include <QTest>
#include <cstdint>
#include <numeric>
#include <vector>

#include "app/ui/text/DataSummary.h"
#include "tests/ui/support/UiTest.h"

class DataSummaryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsSizeAndFirstBytes_data() {
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

    void showsSizeAndFirstBytes() {
        QFETCH(int, count);
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(count));
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
        QTEST(DataSummary::text(bytes), "text");
    }

    void usesCapitalDigits() {
        const std::vector<std::uint8_t> bytes{0xDE, 0xAD, 0xBE, 0xEF};
        QCOMPARE(DataSummary::hexadecimal(bytes), QStringLiteral("DEADBEEF"));
    }
};

int main(int argc, char** argv) {
    return runUiTest<DataSummaryTest>(argc, argv);
}
#include "DataSummaryTest.moc"
