#include <QTest>
#include <optional>
#include <string>
#include <vector>

#include "app/model/tree/KeyTable.h"
#include "app/model/tree/PlistNode.h"
#include "tests/support/TestProgram.h"

namespace {

std::vector<PlistNodePtr> nodesWithKeys(const std::vector<std::string>& keys) {
    std::vector<PlistNodePtr> nodes;
    nodes.reserve(keys.size());
    for (const std::string& key : keys) {
        nodes.push_back(PlistNode::create(key, PlistValue::integer(0)));
    }
    return nodes;
}

/// "first=second" for every key that is there already.
QString repeatedAmong(const std::vector<std::string>& keys) {
    const auto nodes = nodesWithKeys(keys);
    QStringList pairs;
    KeyTable(nodes).insertAll([&pairs](std::size_t first, std::size_t second) {
        pairs += QStringLiteral("%1=%2").arg(first).arg(second);
    });
    return pairs.join(QLatin1Char(' '));
}

}  // namespace

class KeyTableTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addsSomeAtATime() {
        const auto nodes = nodesWithKeys({"a", "b", "a", "c", "b"});
        QStringList pairs;
        const auto note = [&pairs](std::size_t first, std::size_t second) {
            pairs += QStringLiteral("%1=%2").arg(first).arg(second);
        };
        KeyTable table(nodes);
        QVERIFY(!table.insertSome(2, note));
        QCOMPARE(pairs, QStringList());
        QVERIFY(!table.insertSome(1, note));
        QCOMPARE(pairs, QStringList(QStringLiteral("0=2")));
        QVERIFY(table.insertSome(99, note));
        QCOMPARE(pairs.join(u' '), QStringLiteral("0=2 1=4"));
    }

    void tellsOfRepeatedKeys() {
        QCOMPARE(repeatedAmong({"a", "", "b", "a", "", "a"}), QStringLiteral("0=3 1=4 0=5"));
        QCOMPARE(repeatedAmong({"a", "A", "b"}), QString());
        QCOMPARE(repeatedAmong({}), QString());
    }

    void takesCanonicallyEquivalentKeysForEqual() {
        QCOMPARE(repeatedAmong({"caf\u00e9", "cafe\u0301", "cafe"}), QStringLiteral("0=1"));
    }

    void findsTheFirst() {
        const auto nodes = nodesWithKeys({"a", "b", "b"});
        KeyTable table(nodes);
        QCOMPARE(table.find("b"), std::nullopt);
        table.insertAll([](std::size_t, std::size_t) {});
        QCOMPARE(table.find("b"), std::optional<std::size_t>(1));
        QCOMPARE(table.find("a"), std::optional<std::size_t>(0));
        QCOMPARE(table.find(""), std::nullopt);
    }

    void keepsManyKeysApart() {
        std::vector<std::string> keys(20'000);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            keys[i] = std::to_string(i % 15'000);
        }
        const auto nodes = nodesWithKeys(keys);
        KeyTable table(nodes);
        std::size_t expected = 0;
        table.insertAll([&expected](std::size_t first, std::size_t second) {
            QCOMPARE(first, expected++);
            QCOMPARE(second, first + 15'000);
        });
        QCOMPARE(expected, std::size_t{5'000});
        QCOMPARE(table.find("14999"), std::optional<std::size_t>(14'999));
        QCOMPARE(table.find("15000"), std::nullopt);
    }
};

const RegisteredTest<KeyTableTest> registered;
#include "KeyTableTest.moc"
