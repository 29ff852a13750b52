#include <QTest>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/DuplicateKeyFinder.h"
#include "app/model/tree/PlistNode.h"

namespace {

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

/// Which children have a key like that of another, by comparing each with each.
QString expected(PlistNode& node) {
    QString result;
    for (const PlistNodePtr& child : node.children()) {
        int equal = 0;
        for (const PlistNodePtr& other : node.children()) {
            equal += other->key() == child->key() ? 1 : 0;
        }
        result += equal > 1 ? u'x' : u'.';
    }
    return result;
}

QString repeated(PlistNode& node) {
    QString result;
    for (const PlistNodePtr& child : node.children()) {
        result += child->isDuplicateKey() ? u'x' : u'.';
    }
    return result;
}

}  // namespace

class DuplicateKeyFinderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsTheSameInAnyPortions() {
        std::mt19937 random(5);
        for (const std::size_t portion : {1U, 7U, 64U, 499U, 500U, 1000U}) {
            const PlistNodePtr node = dictionary(random);
            const QString wanted = expected(*node);
            QVERIFY(wanted.contains(u'x') && wanted.contains(u'.'));
            DuplicateKeyFinder finder(*node);
            std::size_t turns = 1;
            while (!finder.find(portion)) {
                ++turns;
            }
            QCOMPARE(turns, (entries + portion - 1) / portion);
            QCOMPARE(repeated(*node), wanted);
        }
    }

    /// What was found by then does no harm to a later search.
    void mayBeGivenUp() {
        std::mt19937 random(6);
        const PlistNodePtr node = dictionary(random);
        const QString wanted = expected(*node);
        {
            DuplicateKeyFinder finder(*node);
            QVERIFY(!finder.find(entries / 2));
        }
        QCOMPARE(repeated(*node), wanted);
    }

    void endsAtOnceWithoutKeys() {
        const PlistNodePtr node = PlistNode::create({}, PlistValue());
        QVERIFY(node->children().empty());
        QVERIFY(DuplicateKeyFinder(*node).find(1));
    }
};

QTEST_GUILESS_MAIN(DuplicateKeyFinderTest)
#include "DuplicateKeyFinderTest.moc"
