#include <QTest>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include "app/model/tree/NodeIdSet.h"
#include "tests/model/support/BrokenRule.h"
#include "tests/support/TestProgram.h"

namespace {

std::vector<NodeId> idsOf(const NodeIdSet& set) {
    return {set.begin(), set.end()};
}

}  // namespace

class NodeIdSetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty() {
        const NodeIdSet set;
        QVERIFY(set.isEmpty());
        QCOMPARE(set.size(), 0);
        QVERIFY(!set.contains(1));
        QVERIFY(set.begin() == set.end());
    }

    void knowsIdsOnce() {
        NodeIdSet set{5, 3, 5};
        QCOMPARE(set.size(), 2);
        QCOMPARE(idsOf(set), std::vector<NodeId>({3, 5}));
        set.remove(4);
        set.remove(5);
        set.remove(5);
        QCOMPARE(idsOf(set), std::vector<NodeId>({3}));
        set.clear();
        QVERIFY(set.isEmpty());
    }

    void holdsTheWholeRange() {
        const NodeId largest = std::numeric_limits<NodeId>::max();
        const NodeIdSet set{largest, 1, 1'023, 1'024, 4'000'000'000};
        QCOMPARE(idsOf(set), std::vector<NodeId>({1, 1'023, 1'024, 4'000'000'000, largest}));
        for (const NodeId id : {NodeId{0}, NodeId{-1}, largest - 1, NodeId{2}, NodeId{1'025},
                                std::numeric_limits<NodeId>::min()}) {
            QVERIFY(!set.contains(id));
        }
    }

    void takesPositiveIdsOnly() {
        NodeIdSet set;
        const BrokenRule broken;
        QVERIFY(broken.of([&set] { set.insert(0); }));
        QVERIFY(broken.of([&set] { set.insert(-7); }));
        set.remove(0);
        set.remove(-7);
        QVERIFY(set.isEmpty());
    }

    void comparesByContent() {
        NodeIdSet left{1, 5'000};
        const NodeIdSet right{5'000, 1};
        QVERIFY(left == right);
        left.insert(100'000);
        QVERIFY(left != right);
        left.remove(100'000);
        QVERIFY(left == right);
        left.remove(1);
        left.insert(2);
        QVERIFY(left != right);
    }

    void agreesWithAPlainSet() {
        std::mt19937 random(1);
        NodeIdSet set;
        std::set<NodeId> plain;
        for (int i = 0; i < 20'000; ++i) {
            const NodeId id = 1 + random() % 5'000;
            if (random() % 2 == 0) {
                set.insert(id);
                plain.insert(id);
            } else {
                set.remove(id);
                plain.erase(id);
            }
            QCOMPARE(set.contains(id), plain.count(id) == 1);
            QCOMPARE(set.size(), static_cast<qsizetype>(plain.size()));
        }
        QCOMPARE(idsOf(set), std::vector<NodeId>(plain.begin(), plain.end()));
    }
};

const RegisteredTest<NodeIdSetTest> registered;
#include "NodeIdSetTest.moc"
