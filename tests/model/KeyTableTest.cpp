#include <QTest>
#include <optional>
#include <string>
#include <vector>

#include "app/model/KeyTable.h"
#include "app/model/PlistNode.h"

namespace {

std::vector<PlistNodePtr> nodesWithKeys(const std::vector<std::string>& keys) {
    std::vector<PlistNodePtr> nodes;
    for (const std::string& key : keys) {
        nodes.push_back(PlistNode::create(key, PlistValue::integer(0)));
    }
    return nodes;
}

}  // namespace

class KeyTableTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void returnsTheFirstOfEqualKeys() {
        const auto nodes = nodesWithKeys({"a", "", "b", "a", ""});
        KeyTable table(nodes);
        QCOMPARE(table.insert(0), std::size_t{0});
        QCOMPARE(table.insert(1), std::size_t{1});
        QCOMPARE(table.insert(2), std::size_t{2});
        QCOMPARE(table.insert(3), std::size_t{0});
        QCOMPARE(table.insert(4), std::size_t{1});
    }

    void findsOnlyWhatWasAdded() {
        const auto nodes = nodesWithKeys({"a", "b"});
        KeyTable table(nodes);
        table.insert(1);
        QCOMPARE(table.find("b"), std::optional<std::size_t>(1));
        QCOMPARE(table.find("a"), std::nullopt);
        QCOMPARE(table.find(""), std::nullopt);
    }

    void takesCanonicallyEquivalentKeysForEqual() {
        const auto nodes = nodesWithKeys({"caf\u00e9", "cafe\u0301", "cafe"});
        KeyTable table(nodes);
        QCOMPARE(table.insert(0), std::size_t{0});
        QCOMPARE(table.insert(1), std::size_t{0});
        QCOMPARE(table.insert(2), std::size_t{2});
    }

    void keepsManyKeysApart() {
        std::vector<std::string> keys;
        for (int i = 0; i < 20'000; ++i) {
            keys.push_back(std::to_string(i % 15'000));
        }
        const auto nodes = nodesWithKeys(keys);
        KeyTable table(nodes);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            QCOMPARE(table.insert(i), i % 15'000);
        }
        QCOMPARE(table.find("14999"), std::optional<std::size_t>(14'999));
        QCOMPARE(table.find("15000"), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(KeyTableTest)
#include "KeyTableTest.moc"
