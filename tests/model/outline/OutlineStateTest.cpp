#include <QSignalSpy>
#include <QTest>
#include <string>
#include <vector>

#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/BrokenRule.h"
#include "tests/model/support/OutlineWindow.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

using Column = OutlineState::Column;
using Expansion = OutlineState::Expansion;
using ExpandResult = OutlineState::ExpandResult;
using Reach = OutlineState::Reach;
using Window = OutlineWindow;

/// The id that the next node gets, which is one more than the number of nodes made so far.
NodeId nextId() {
    return PlistNode::create({}, number(0))->id() + 1;
}

/// A dictionary of two equal dictionaries of two equal dictionaries ...: 2^levels leaves.
PlistValue doubling(int levels) {
    PlistValue value = number(1);
    for (int i = 0; i < levels; ++i) {
        value = PlistValue::array({value, value});
    }
    return value;
}

}  // namespace

class OutlineStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // --- The first rows ---

    void startsEmpty() {
        const OutlineState outline;
        QVERIFY(outline.rows().empty());
        QVERIFY(outline.root() == nullptr);
        QVERIFY(outline.selection().isEmpty());
        QVERIFY(!outline.editing());
        QVERIFY(!outline.pointerColumn());
        QVERIFY(!outline.filter());
    }

    void showsTheRootExpanded() {
        const Window window(sample());
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 name: \"Ada\"\n"
                                               "  1 items: array [+]\n"
                                               "  2 more: dictionary [+]"));
        QVERIFY(!window.outline.rows()[0].parentType());
        QCOMPARE(window.outline.rows()[1].parentType(), PlistType::dictionary);
    }

    void showsAScalarRoot() {
        const Window window(number(5));
        QCOMPARE(window.rows(), QStringLiteral(": 5"));
        QVERIFY(!window.outline.rows()[0].isExpanded());
    }

    void showsAnEmptyRoot() {
        const Window window((PlistValue()));
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]"));
    }

    void resetsOnceForANewRoot() {
        OutlineState outline;
        const QSignalSpy about(&outline, &OutlineState::rowsAboutToBeReset);
        const QSignalSpy reset(&outline, &OutlineState::rowsReset);
        const QSignalSpy changed(&outline, &OutlineState::rowsChanged);
        const QSignalSpy selection(&outline, &OutlineState::selectionChanged);
        const QSignalSpy editing(&outline, &OutlineState::editingChanged);
        const PlistNodePtr root = PlistNode::create({}, sample());
        outline.rebuild(*root);
        QCOMPARE(about.count(), 1);
        QCOMPARE(reset.count(), 1);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(selection.count(), 0);
        QCOMPARE(editing.count(), 0);
        outline.rebuild(*root);
        QCOMPARE(reset.count(), 1);
        QCOMPARE(changed.count(), 1);
    }

    // --- Expanding ---

    void expandsOneLevel() {
        Window window(sample());
        window.expand(QStringLiteral("items"));
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 name: \"Ada\"\n"
                                               "  1 items: array [-]\n"
                                               "    0 dictionary [+]\n"
                                               "    1 \"x\"\n"
                                               "  2 more: dictionary [+]"));
        QCOMPARE(window.outline.rows()[3].parentType(), PlistType::array);
        QCOMPARE(window.told(), QStringLiteral("insert 3-4, change 2-2"));
        window.collapse(QStringLiteral("items"));
        QCOMPARE(window.told(), QStringLiteral("remove 3-4, change 2-2"));
        QCOMPARE(window.outline.rows().size(), std::size_t{4});
    }

    void expandsTheWholeSubtree() {
        Window window(sample());
        window.expand({}, Reach::wholeSubtree);
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 name: \"Ada\"\n"
                                               "  1 items: array [-]\n"
                                               "    0 dictionary [-]\n"
                                               "      0 a: 1\n"
                                               "    1 \"x\"\n"
                                               "  2 more: dictionary [-]\n"
                                               "    0 b: 2"));
        // The row of "more" stands between those that came.
        QCOMPARE(window.told(), QStringLiteral("rearrange"));
        window.collapse({}, Reach::wholeSubtree);
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [+]"));
        QVERIFY(window.outline.expanded().isEmpty());
        QCOMPARE(window.told(), QStringLiteral("remove 1-7, change 0-0"));
        window.expand({});
        QCOMPARE(window.outline.rows().size(), std::size_t{4});
    }

    void keepsTheExpansionBelowACollapsedContainer() {
        Window window(sample());
        window.expand(QStringLiteral("items"));
        window.expand(QStringLiteral("items/0"));
        window.collapse(QStringLiteral("items"));
        window.expand(QStringLiteral("items"));
        QCOMPARE(window.outline.rows().size(), std::size_t{7});
    }

    void ignoresScalars() {
        Window window(sample());
        window.expand(QStringLiteral("name"));
        window.expand(QStringLiteral("name"), Reach::wholeSubtree);
        QCOMPARE(window.outline.expanded(), idsOf({window.root.get()}));
        QCOMPARE(window.told(), QString());
    }

    void expandsSeveralAtOnce() {
        Window window(sample());
        const PlistNodePtr nodes[] = {PlistNodePtr(&window.node(QStringLiteral("items"))),
                                      PlistNodePtr(&window.node(QStringLiteral("more"))),
                                      PlistNodePtr(&window.node(QStringLiteral("name")))};
        const QSignalSpy changed(&window.outline, &OutlineState::rowsChanged);
        window.outline.setExpanded(nodes, Expansion::expand, Reach::nodeAlone);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(window.outline.rows().size(), std::size_t{7});
        QVERIFY(window.outline.isExpanded(nodes[0]->id()));
        QVERIFY(!window.outline.isExpanded(nodes[2]->id()));
    }

    void setsExpansionBeforeThereIsARoot() {
        OutlineState outline;
        const PlistNodePtr node = PlistNode::create({}, sample());
        outline.setExpanded(*node, Expansion::expand, Reach::nodeAlone);
        outline.reveal(*node);
        outline.setFilter(std::nullopt);
        QVERIFY(outline.isExpanded(node->id()));
        QVERIFY(outline.rows().empty());
    }

    void refusesToExpandMoreThanMemoryHolds() {
        Window window(PlistValue::array({doubling(40), doubling(3)}));
        const NodeId before = nextId();
        QCOMPARE(window.outline.setExpanded(*window.root, Expansion::expand, Reach::wholeSubtree),
                 ExpandResult::tooManyRows);
        QCOMPARE(nextId(), before + 1);
        QCOMPARE(window.outline.rows().size(), std::size_t{3});
        QCOMPARE(window.told(), QString());
        window.expand(QStringLiteral("1"), Reach::wholeSubtree);
        QCOMPARE(window.outline.rows().size(), std::size_t{3 + 14});
        window.collapse({}, Reach::wholeSubtree);
        QCOMPARE(window.outline.rows().size(), std::size_t{1});
    }

    void countsNestedTargetsOnce() {
        // Each level alone is far below the limit; counted once for every level they are not.
        std::vector<PlistValue> items(2'000, number(1));
        PlistValue value = PlistValue::array(std::move(items));
        constexpr int depth = 6'000;
        for (int i = 0; i < depth; ++i) {
            value = PlistValue::array({value});
        }
        const PlistNodePtr root = PlistNode::create({}, value);
        std::vector<PlistNodePtr> nodes{root};
        for (int i = 0; i < depth; ++i) {
            nodes.push_back(nodes.back()->children()[0]);
        }
        OutlineState outline;
        QCOMPARE(outline.setExpanded(nodes, Expansion::expand, Reach::wholeSubtree),
                 ExpandResult::done);
        QCOMPARE(outline.expanded().size(), depth + 1);
    }

    // --- Laziness ---

    void makesNoNodesBelowCollapsedContainers() {
        const NodeId before = nextId();
        Window window(sample());
        QCOMPARE(nextId(), before + 1 + 4);
        for (const PlistNodePtr& child : window.root->children()) {
            QVERIFY(!child->isMaterialized());
        }
        window.outline.rebuild(*window.root);
        QCOMPARE(nextId(), before + 2 + 4);
        // Nothing below has ever been expanded, so nothing has to be made to collapse it.
        window.collapse({}, Reach::wholeSubtree);
        QCOMPARE(nextId(), before + 3 + 4);
    }

    void makesNoNodesForAFilter() {
        Window window(sample());
        const NodeId before = nextId();
        window.outline.setFilter(idsOf({window.root.get(), &window.node(QStringLiteral("more"))}));
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  2 more: dictionary [-]"));
        QCOMPARE(nextId(), before + 1);
    }

    // --- Repeated keys ---

    void flagsEveryRepeatedKey() {
        const Window window(tree("{a: 1, b: 2, a: 3}"));
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 a: 1 (duplicate)\n"
                                               "  1 b: 2\n"
                                               "  2 a: 3 (duplicate)"));
    }

    void flagsKeysThatAreEqualAsText() {
        const Window window(tree("{caf\u00e9: 1, cafe\u0301: 2}"));
        QVERIFY(window.outline.rows()[1].isDuplicateKey());
        QVERIFY(window.outline.rows()[2].isDuplicateKey());
    }

    void followsRenames() {
        Window window(tree("{a: 1, b: 2, c: 3}"));
        window.node(QStringLiteral("c")).setKey("a");
        window.outline.rebuild(*window.root);
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 a: 1 (duplicate)\n"
                                               "  1 b: 2\n"
                                               "  2 a: 3 (duplicate)"));
        QCOMPARE(window.told(), QStringLiteral("change 1-3"));
    }

    void flagsNoHiddenKeysOfArrays() {
        Window window(tree("{a: 1, a: 2}"));
        window.root->convertContainer(PlistType::array);
        window.outline.rebuild(*window.root);
        QCOMPARE(window.rows(), QStringLiteral(": array [-]\n"
                                               "  0 1\n"
                                               "  1 2"));
        QCOMPARE(window.told(), QStringLiteral("change 0-2"));
    }

    // --- Signals ---

    void tellsOfOneInsertedRow() {
        Window window(tree("[1, 2, 3]"));
        const PlistNodePtr added = PlistNode::create({}, number(9));
        window.root->insertChildren(std::span(&added, 1), 1);
        window.outline.rebuild(*window.root);
        // Above, the count has changed; below, the positions.
        QCOMPARE(window.told(), QStringLiteral("insert 2-2, change 0-4"));
        const std::size_t last[] = {3};
        window.root->removeChildren(last);
        window.outline.rebuild(*window.root);
        QCOMPARE(window.told(), QStringLiteral("remove 4-4, change 0-0"));
    }

    void tellsOfAValue() {
        Window window(sample());
        window.node(QStringLiteral("more/b")).setValue(number(3));
        window.node(QStringLiteral("name")).setValue(text("Bob"));
        window.outline.rebuild(*window.root);
        QCOMPARE(window.told(), QStringLiteral("change 1-1"));
        window.outline.rebuild(*window.root);
        QCOMPARE(window.told(), QString());
    }

    void tellsOfAReplacementInOneRemovalAndOneInsertion() {
        Window window(sample());
        window.expand(QStringLiteral("items"));
        window.told();
        PlistNode& items = window.node(QStringLiteral("items"));
        items.setValue(tree("[1, 2, 3]"));
        window.outline.rebuild(*window.root);
        QCOMPARE(window.told(), QStringLiteral("remove 3-4, insert 3-5, change 2-2"));
    }

    void tellsOfAMoveAsARearrangement() {
        Window window(tree("[1, 2, 3]"));
        const auto children = window.root->children();
        const std::vector<PlistNodePtr> moved{children[1], children[2], children[0]};
        const QPersistentModelIndex first(window.mirror->index(1, 0));
        window.root->setChildren(moved);
        window.outline.rebuild(*window.root);
        QCOMPARE(window.told(), QStringLiteral("rearrange"));
        QCOMPARE(first.row(), 3);
    }

    void keepsNodesAliveUntilTheirRowsGo() {
        Window window(tree("[1, 2]"));
        const std::size_t first[] = {0};
        window.root->removeChildren(first);
        QCOMPARE(window.rows(), QStringLiteral(": array [-]\n"
                                               "  0 1\n"
                                               "  1 2"));
        window.outline.rebuild(*window.root);
        QCOMPARE(window.rows(), QStringLiteral(": array [-]\n"
                                               "  0 2"));
    }

    void allowsNoChangeOfRowsWhileTheyChange() {
        Window window(sample());
        const BrokenRule broken;
        std::optional<QString> rule;
        const auto meddle = [&] {
            rule = broken.of([&window] { window.outline.rebuild(*window.root); });
        };
        connect(&window.outline, &OutlineState::rowsInserted, this, meddle);
        window.expand(QStringLiteral("items"));
        QCOMPARE(rule, QStringLiteral("nobody changes the rows while they change"));
    }

    // --- Looking rows up ---

    void findsRows() {
        Window window(sample());
        PlistNode& inner = window.node(QStringLiteral("items/0"));
        QCOMPARE(window.outline.rowOf(inner), std::nullopt);
        QCOMPARE(window.outline.rowForId(inner.id()), std::nullopt);
        window.expand(QStringLiteral("items"));
        QCOMPARE(window.outline.rowOf(inner), std::optional(3));
        QCOMPARE(window.outline.rowForId(inner.id()), std::optional(3));
        window.collapse(QStringLiteral("items"));
        QCOMPARE(window.outline.rowOf(inner), std::nullopt);
    }

    void findsRowsOfATreeThatAnotherOutlineShowsToo() {
        Window window(sample());
        OutlineState other;
        other.rebuild(*window.root);
        other.setExpanded(window.node(QStringLiteral("items")), Expansion::expand,
                          Reach::nodeAlone);
        PlistNode& more = window.node(QStringLiteral("more"));
        QCOMPARE(other.rowOf(more), std::optional(5));
        QCOMPARE(window.outline.rowOf(more), std::optional(3));
    }

    void putsTheRowsWhereThePositionsAre() {
        Window window(tree("[1, 2, 3]"));
        const std::size_t first[] = {0};
        window.root->removeChildren(first);
        window.outline.rebuild(*window.root);
        QCOMPARE(window.outline.rows()[1].index(), 0);
        QCOMPARE(window.outline.rows()[1].node().indexInParent(), std::optional<qint64>(0));
    }

    // --- Selection ---

    void selectsOnlyDifferences() {
        Window window(sample());
        const QSignalSpy spy(&window.outline, &OutlineState::selectionChanged);
        const NodeIdSet ids =
            idsOf({&window.node(QStringLiteral("more")), &window.node(QStringLiteral("name"))});
        window.outline.select(ids);
        window.outline.select(ids);
        QCOMPARE(spy.count(), 1);
        const auto rows = window.outline.selectedRows();
        QCOMPARE(rows.size(), std::size_t{2});
        QCOMPARE(rows[0], window.outline.rows()[1]);
        QCOMPARE(rows[1], window.outline.rows()[3]);
    }

    void deselectsWhatIsCollapsedAway() {
        Window window(sample());
        window.expand(QStringLiteral("items"));
        PlistNode& inside = window.node(QStringLiteral("items/1"));
        PlistNode& outside = window.node(QStringLiteral("more"));
        window.outline.select(idsOf({&inside, &outside}));
        const QSignalSpy spy(&window.outline, &OutlineState::selectionChanged);
        window.collapse(QStringLiteral("items"));
        QCOMPARE(window.outline.selection(), idsOf({&outside}));
        QCOMPARE(spy.count(), 1);
        window.outline.rebuild(*window.root);
        QCOMPARE(spy.count(), 1);
    }

    void deselectsIdsThatWereNeverRows() {
        Window window(sample());
        window.outline.select({window.root->id(), 1'000'000'000});
        window.outline.rebuild(*window.root);
        QCOMPARE(window.outline.selection(), idsOf({window.root.get()}));
    }

    // --- Editing and pointer ---

    void setsTheEditingFieldOnce() {
        Window window(sample());
        const QSignalSpy spy(&window.outline, &OutlineState::editingChanged);
        const OutlineState::EditingField field{window.root->id(), Column::value};
        window.outline.setEditing(field);
        window.outline.setEditing(field);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(window.outline.editing(), field);
        window.outline.setEditing(OutlineState::EditingField{window.root->id(), Column::key});
        QCOMPARE(spy.count(), 2);
        window.outline.setEditing(std::nullopt);
        window.outline.setEditing(std::nullopt);
        QCOMPARE(spy.count(), 3);
    }

    void keepsThePointerColumn() {
        OutlineState outline;
        outline.setPointerColumn(Column::value);
        QCOMPARE(outline.pointerColumn(), Column::value);
        outline.setPointerColumn(std::nullopt);
        QVERIFY(!outline.pointerColumn());
    }
};

const RegisteredTest<OutlineStateTest> registered;
#include "OutlineStateTest.moc"
