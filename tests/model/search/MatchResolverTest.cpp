#include <QTest>
#include <cstdint>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/search/MatchResolver.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/SearchDesk.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

PlistNodePtr sample() {
    return PlistNode::create({}, tree(R"([["ab", 1], [2, 3, 4], ["b", "ab"]])"));
}

/// All in one turn.
MatchedNodes resolved(PlistNode& root, const PlistMatches& found,
                      std::int64_t limit = MatchResolver::madeNodeLimit) {
    MatchResolver resolver(root, found, limit);
    constexpr std::size_t enough = 1000;
    return resolver.resolve(enough) ? resolver.take() : MatchedNodes();
}

QString textOf(const std::vector<PlistNodePtr>& nodes, PlistNode& root) {
    std::vector<NodeId> ids;
    ids.reserve(nodes.size());
    for (const PlistNodePtr& node : nodes) {
        ids.push_back(node->id());
    }
    return SearchDesk::textOf(ids, root);
}

QString textOf(const NodeIdSet& ids, PlistNode& root) {
    return SearchDesk::textOf({ids.begin(), ids.end()}, root);
}

}  // namespace

class MatchResolverTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsTheNodesAndWhatIsAboveThem() {
        const PlistNodePtr root = sample();
        const PlistMatches found = PlistSearch::matches(root->value(), "a");
        const MatchedNodes nodes = resolved(*root, found);
        QCOMPARE(textOf(nodes.matches, *root), QStringLiteral("/0/0 /2/1"));
        QCOMPARE(textOf(nodes.visible, *root), QStringLiteral("/ /0 /2 /0/0 /2/1"));
        QVERIFY(nodes.areComplete);
        QVERIFY(!root->children()[1]->isMaterialized());
    }

    void leavesTheRootAloneWithoutMatches() {
        const PlistNodePtr root = sample();
        const MatchedNodes nodes = resolved(*root, PlistMatches());
        QVERIFY(nodes.matches.empty());
        QCOMPARE(textOf(nodes.visible, *root), QStringLiteral("/"));
        QVERIFY(nodes.areComplete);
        QVERIFY(!root->isMaterialized());
    }

    void makesNoMoreNodesThanAllowed_data() {
        QTest::addColumn<int>("limit");
        QTest::addColumn<QString>("matches");
        QTest::addColumn<QString>("visible");
        QTest::newRow("none") << 2 << QString() << QStringLiteral("/");
        QTest::newRow("the root's") << 4 << QString() << QStringLiteral("/");
        QTest::newRow("one array's") << 6 << QStringLiteral("/0/0") << QStringLiteral("/ /0 /0/0");
        QTest::newRow("all") << 7 << QStringLiteral("/0/0 /2/1")
                             << QStringLiteral("/ /0 /2 /0/0 /2/1");
    }

    void makesNoMoreNodesThanAllowed() {
        QFETCH(const int, limit);
        QFETCH(const QString, matches);
        QFETCH(const QString, visible);
        const PlistNodePtr root = sample();
        const PlistMatches found = PlistSearch::matches(root->value(), "a");
        const MatchedNodes nodes = resolved(*root, found, limit);
        QCOMPARE(textOf(nodes.matches, *root), matches);
        QCOMPARE(textOf(nodes.visible, *root), visible);
        QCOMPARE(nodes.areComplete, limit == 7);
    }

    void findsTheSameInManyTurns_data() { makesNoMoreNodesThanAllowed_data(); }

    void findsTheSameInManyTurns() {
        QFETCH(const int, limit);
        QFETCH(const QString, matches);
        QFETCH(const QString, visible);
        const PlistNodePtr root = sample();
        MatchResolver resolver(*root, PlistSearch::matches(root->value(), "a"), limit);
        int turns = 1;
        while (!resolver.resolve(1)) {
            ++turns;
        }
        QVERIFY(limit < 7 || turns >= 5);
        const MatchedNodes nodes = resolver.take();
        QCOMPARE(textOf(nodes.matches, *root), matches);
        QCOMPARE(textOf(nodes.visible, *root), visible);
        QCOMPARE(nodes.areComplete, limit == 7);
    }

    void doesNotCountNodesThatAreThere() {
        const PlistNodePtr root = sample();
        for (const PlistNodePtr& child : root->children()) {
            child->children();
        }
        const PlistMatches found = PlistSearch::matches(root->value(), "a");
        QVERIFY(resolved(*root, found, 0).areComplete);
    }

    void saysWhenTheSearchEndedEarly() {
        const PlistNodePtr root = sample();
        PlistMatches found = PlistSearch::matches(root->value(), "a");
        found.setOutcome(PlistMatches::Outcome::limitReached);
        QVERIFY(!resolved(*root, found).areComplete);
    }
};

const RegisteredTest<MatchResolverTest> registered;
#include "MatchResolverTest.moc"
