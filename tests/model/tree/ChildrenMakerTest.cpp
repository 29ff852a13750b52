#include <QTest>
#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/ChildrenMaker.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

constexpr std::size_t total = 3000;

PlistNodePtr numbers() {
    std::vector<PlistValue> values;
    for (std::size_t i = 0; i < total; ++i) {
        values.push_back(PlistValue::integer(static_cast<int>(i)));
    }
    return PlistNode::create({}, PlistValue::array(std::move(values)));
}

constexpr std::size_t entries = 500;

/// A dictionary in which some keys are there more than once.
PlistNodePtr dictionary(std::mt19937& random) {
    std::uniform_int_distribution<int> number(0, 700);
    std::vector<PlistString> keys;
    for (std::size_t i = 0; i < entries; ++i) {
        keys.emplace_back("key " + std::to_string(number(random)));
    }
    std::vector<PlistValue> values(entries, PlistValue::boolean(true));
    return PlistNode::create({}, PlistValue::dictionary(std::move(keys), std::move(values)));
}

/// `TreeText::repeatedKeys`, by comparing each key with each.
QString comparedWithEach(const PlistValue& dictionary) {
    QString result;
    for (const PlistString& key : dictionary.keys()) {
        result += std::ranges::count(dictionary.keys(), key) > 1 ? u'x' : u'.';
    }
    return result;
}

}  // namespace

class ChildrenMakerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void makesChildrenInTurns() {
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
            QVERIFY(child.scalar() == atOnce->children()[i]->scalar());
            QCOMPARE(child.parent(), inTurns.get());
            QCOMPARE(child.indexInParent(), std::optional(static_cast<qint64>(i)));
            QCOMPARE(child.id(), inTurns->children()[0]->id() + static_cast<NodeId>(i));
        }
        QVERIFY(inTurns->value() == atOnce->value());
    }

    void makesNoneOfAnEmptyContainer() {
        const PlistNodePtr node = PlistNode::create({}, PlistValue());
        ChildrenMaker maker(*node);
        QVERIFY(maker.make(1));
        QVERIFY(node->isMaterialized());
        QCOMPARE(node->children().size(), std::size_t{0});
    }

    void makesNoneOfAScalar() {
        const PlistNodePtr node = PlistNode::create({}, PlistValue::integer(1));
        QVERIFY(ChildrenMaker(*node).make(1));
        QVERIFY(!node->isMaterialized());
    }

    void leavesTheNodeAsItWasIfItIsGivenUp() {
        const PlistNodePtr node = numbers();
        { QVERIFY(!ChildrenMaker(*node).make(1500)); }
        QVERIFY(!node->isMaterialized());
        QCOMPARE(node->children().size(), total);
    }

    void findsTheSameRepeatedKeysInAnyPortions() {
        std::mt19937 random(5);
        for (const std::size_t portion : {1U, 7U, 64U, 499U, 500U, 1000U}) {
            const PlistNodePtr node = dictionary(random);
            const QString wanted = comparedWithEach(node->value());
            QVERIFY(wanted.contains(u'x') && wanted.contains(u'.'));
            ChildrenMaker maker(*node);
            std::size_t turns = 1;
            while (!maker.make(portion)) {
                ++turns;
            }
            // As many turns for the keys as for the children.
            QCOMPARE(turns, 2 * ((entries + portion - 1) / portion));
            QCOMPARE(TreeText::repeatedKeys(*node), wanted);
        }
    }

    /// What was found by then does no harm to a later search.
    void mayBeGivenUpAmongTheKeys() {
        std::mt19937 random(6);
        const PlistNodePtr node = dictionary(random);
        {
            ChildrenMaker maker(*node);
            QVERIFY(!maker.make(entries));
            QVERIFY(!maker.make(entries / 2));
        }
        QCOMPARE(TreeText::repeatedKeys(*node), comparedWithEach(node->value()));
    }
};

const RegisteredTest<ChildrenMakerTest> registered;
#include "ChildrenMakerTest.moc"
