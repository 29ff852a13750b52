#include <QTest>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/ChildrenMaker.h"
#include "app/model/tree/PlistNode.h"

namespace {

constexpr std::size_t total = 3000;

PlistNodePtr numbers() {
    std::vector<PlistEntry> entries;
    for (std::size_t i = 0; i < total; ++i) {
        entries.push_back({std::to_string(i), PlistValue::integer(static_cast<int>(i))});
    }
    return PlistNode::create("numbers", PlistValue::dictionary(std::move(entries)));
}

}  // namespace

class ChildrenMakerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void makesThemInTurns() {
        const PlistNodePtr node = numbers();
        ChildrenMaker maker(*node);
        QVERIFY(!maker.make(1));
        QVERIFY(!maker.make(1500));
        QVERIFY(!node->isMaterialized());
        QVERIFY(!maker.make(total - 1502));
        QVERIFY(maker.make(1));
        QVERIFY(node->isMaterialized());
    }

    void makesTheSameAsAllAtOnce() {
        const PlistNodePtr inTurns = numbers();
        const PlistNodePtr atOnce = numbers();
        ChildrenMaker maker(*inTurns);
        while (!maker.make(7)) {
        }
        QCOMPARE(inTurns->children().size(), total);
        for (std::size_t i = 0; i < total; ++i) {
            PlistNode& child = *inTurns->children()[i];
            const PlistNode& expected = *atOnce->children()[i];
            QVERIFY(child.key() == expected.key());
            QVERIFY(child.scalar() == expected.scalar());
            QCOMPARE(child.parent(), inTurns.get());
            QCOMPARE(child.indexInParent(), std::optional(static_cast<qint64>(i)));
            QCOMPARE(child.id(), inTurns->children()[0]->id() + static_cast<NodeId>(i));
        }
        QVERIFY(inTurns->value() == atOnce->value());
    }

    void makesNoneOfAnEmptyContainer() {
        const PlistNodePtr node = PlistNode::create({}, PlistValue::array({}));
        ChildrenMaker maker(*node);
        QVERIFY(maker.make(1));
        QVERIFY(node->isMaterialized());
        QCOMPARE(node->children().size(), std::size_t{0});
    }

    void leavesTheNodeAsItWasIfItIsGivenUp() {
        const PlistNodePtr node = numbers();
        { QVERIFY(!ChildrenMaker(*node).make(1500)); }
        QVERIFY(!node->isMaterialized());
        QCOMPARE(node->children().size(), total);
    }
};

QTEST_GUILESS_MAIN(ChildrenMakerTest)
#include "ChildrenMakerTest.moc"
