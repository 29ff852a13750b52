#include <QSignalSpy>
#include <QTest>

#include "app/model/actions/DocumentActions.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/ActionsDesk.h"
#include "tests/model/support/IntervalCount.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

using Direction = DocumentActions::Direction;

PlistValue number(int value) {
    return PlistValue::integer(value);
}

PlistValue sample() {
    return tree("{name: 0, items: [1, 2, 3, 4], more: {b: 5, a: 6}}");
}

PlistValue letters() {
    return tree("{a: 0, b: 1, c: 2, d: 3, e: 4}");
}

}  // namespace

/// Adding, duplicating, deleting, moving and sorting items.
class DocumentActionsItemsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // --- What the selection allows ---

    void actsOnTheTopmostSelectedNodes() {
        ActionsDesk desk(sample());
        desk.expand({{1}, {2}});
        desk.select({{2, 1}, {1}, {1, 3}, {0}});
        const auto nodes = desk.actions.selectedTopLevelNodes();
        QCOMPARE(nodes, (std::vector<PlistNodePtr>{desk.at({0}), desk.at({1}), desk.at({2, 1})}));
        QVERIFY(desk.actions.hasSelectedTopLevelNodes());
    }

    void actsOnNothingWithTheRootSelected() {
        ActionsDesk desk(sample());
        desk.select({{}, {0}});
        QVERIFY(desk.actions.selectedTopLevelNodes().empty());
        QVERIFY(!desk.actions.hasSelectedTopLevelNodes());
        desk.actions.deleteSelected();
        desk.actions.duplicate();
        desk.actions.moveSelected(Direction::down);
        QCOMPARE(desk.history(), QStringLiteral("0 , +0"));
        desk.select({});
        QVERIFY(!desk.actions.hasSelectedTopLevelNodes());
    }

    void selectsAllButTheRoot() {
        ActionsDesk desk(sample());
        desk.expand({{2}});
        desk.actions.selectAll();
        QCOMPARE(desk.rows(), ActionsDesk::lines(
                                  {": dictionary [-]", "  0 name: 0 *", "  1 items: array [+] *",
                                   "  2 more: dictionary [-] *", "    0 b: 5 *", "    1 a: 6 *"}));
        QCOMPARE(desk.actions.selectedTopLevelNodes().size(), std::size_t{3});
    }

    // --- Adding ---

    void addsAtTheEndWithoutASelection() {
        ActionsDesk desk(sample());
        desk.actions.addItem();
        QCOMPARE(desk.rows(),
                 ActionsDesk::lines({": dictionary [-]", "  0 name: 0", "  1 items: array [+]",
                                     "  2 more: dictionary [+]", "  3 New Item: \"\" * <key>"}));
        QCOMPARE(desk.history(), QStringLiteral("1 Add Item, +1"));
        QCOMPARE(desk.backAndForth(), QString());
    }

    void addsBelowAScalar() {
        ActionsDesk desk(sample());
        desk.select({{0}});
        desk.actions.addItem();
        QCOMPARE(desk.rows(), ActionsDesk::lines(
                                  {": dictionary [-]", "  0 name: 0", "  1 New Item: \"\" * <key>",
                                   "  2 items: array [+]", "  3 more: dictionary [+]"}));
    }

    void addsBelowACollapsedContainer() {
        ActionsDesk desk(sample());
        desk.select({{1}});
        desk.actions.addItem();
        QCOMPARE(desk.rows(),
                 ActionsDesk::lines({": dictionary [-]", "  0 name: 0", "  1 items: array [+]",
                                     "  2 New Item: \"\" * <key>", "  3 more: dictionary [+]"}));
    }

    void addsIntoAnExpandedArrayWithoutAKey() {
        ActionsDesk desk(sample());
        desk.expand({{1}});
        desk.select({{1}});
        desk.actions.addItem();
        QCOMPARE(desk.rows(),
                 ActionsDesk::lines({": dictionary [-]", "  0 name: 0", "  1 items: array [-]",
                                     "    0 \"\" * <value>", "    1 1", "    2 2", "    3 3",
                                     "    4 4", "  2 more: dictionary [+]"}));
        QVERIFY(desk.at({1, 0})->key().isEmpty());
        QCOMPARE(desk.backAndForth(), QString());
    }

    void goesByTheLastSelectedRow() {
        ActionsDesk desk(sample());
        desk.expand({{2}});
        desk.select({{2, 0}, {0}});
        desk.actions.addItem();
        QCOMPARE(desk.value(), QStringLiteral("{name: 0, items: [1, 2, 3, 4], "
                                              "more: {b: 5, New Item: \"\", a: 6}}"));
    }

    void addsIntoAnyContainerBehindAFilter() {
        ActionsDesk desk(sample());
        desk.outline.setFilter(
            NodeIdSet{desk.at({})->id(), desk.at({2})->id(), desk.at({2, 1})->id()});
        desk.select({{2}});
        desk.actions.addItem();
        QCOMPARE(desk.value(), QStringLiteral("{name: 0, items: [1, 2, 3, 4], "
                                              "more: {New Item: \"\", b: 5, a: 6}}"));
        // The new item has no row before the search has run again, but it is there.
        QCOMPARE(desk.outline.selection(), NodeIdSet{desk.at({2, 0})->id()});
        QCOMPARE(desk.outline.editing()->nodeId, desk.at({2, 0})->id());
        QVERIFY(desk.outline.isExpanded(desk.at({2})->id()));
    }

    void expandsACollapsedRoot() {
        ActionsDesk desk(letters());
        desk.select({{}});
        desk.actions.collapseSelected(OutlineState::Reach::nodeAlone);
        QCOMPARE(desk.outline.rows().size(), std::size_t{1});
        desk.actions.addItem();
        QCOMPARE(desk.rows(),
                 ActionsDesk::lines({": dictionary [-]", "  0 New Item: \"\" * <key>", "  1 a: 0",
                                     "  2 b: 1", "  3 c: 2", "  4 d: 3", "  5 e: 4"}));
    }

    void numbersNewKeys() {
        ActionsDesk desk(tree("{New Item: 1}"));
        desk.select({{}});
        desk.actions.addItem();
        desk.select({{}});
        desk.actions.addItem();
        QCOMPARE(desk.value(), QStringLiteral("{New Item 3: \"\", New Item 2: \"\", New Item: 1}"));
        // Without going back to the dictionary, the next one comes below the last.
        desk.actions.addItem();
        QCOMPARE(desk.value(), QStringLiteral("{New Item 3: \"\", New Item 4: \"\", "
                                              "New Item 2: \"\", New Item: 1}"));
        QCOMPARE(desk.history(), QStringLiteral("3 Add Item, +3"));
        QCOMPARE(desk.backAndForth(), QString());
    }

    void addsNothingToAScalarRoot() {
        ActionsDesk desk(number(1));
        QVERIFY(!desk.actions.canAddItem());
        desk.actions.addItem();
        desk.select({{}});
        desk.actions.addItem();
        QCOMPARE(desk.rows(), QStringLiteral(": 1 *"));
        QCOMPARE(desk.history(), QStringLiteral("0 , +0"));
        QVERIFY(ActionsDesk(letters()).actions.canAddItem());
    }

    void makesTheRowsOnceToAdd() {
        ActionsDesk desk(sample());
        const QSignalSpy inserted(&desk.outline, &OutlineState::rowsInserted);
        const QSignalSpy changed(&desk.outline, &OutlineState::rowsChanged);
        IntervalCount intervals;
        desk.actions.addItem();
        QCOMPARE(intervals.takeNames(), QStringLiteral("Rows"));
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(changed.count(), 1);
        desk.select({{}});
        desk.actions.collapseSelected(OutlineState::Reach::nodeAlone);
        intervals.takeNames();
        desk.actions.addItem();
        QCOMPARE(intervals.takeNames(), QStringLiteral("Rows"));
        QVERIFY(desk.outline.isExpanded(desk.document.root().id()));
    }

    void worksWithoutUndo() {
        ActionsDesk desk(letters());
        const DocumentActions actions(desk.document, desk.outline);
        actions.addItem();
        actions.duplicate();
        QCOMPARE(desk.document.root().childCount(), 7);
        QVERIFY(!desk.undo.canUndo());
    }

    // --- Duplicating ---

    void duplicatesBehindTheOriginal() {
        ActionsDesk desk(tree("{name: [1], name copy: 2}"));
        desk.select({{0}});
        desk.actions.duplicate();
        QCOMPARE(desk.rows(),
                 ActionsDesk::lines({": dictionary [-]", "  0 name: array [+]",
                                     "  1 name copy 2: array [+] *", "  2 name copy: 2"}));
        QVERIFY(desk.at({0, 0})->id() != desk.at({1, 0})->id());
        QCOMPARE(desk.history(), QStringLiteral("1 Add Item, +1"));
        QCOMPARE(desk.backAndForth(), QString());
    }

    void duplicatesSeveralInOneStep() {
        ActionsDesk desk(sample());
        desk.expand({{1}, {2}});
        desk.select({{1, 0}, {2, 1}, {1, 2}, {1, 3}, {0}});
        desk.actions.duplicate();
        QCOMPARE(
            desk.rows(),
            ActionsDesk::lines(
                {": dictionary [-]", "  0 name: 0", "  1 name copy: 0 *", "  2 items: array [-]",
                 "    0 1", "    1 1 *", "    2 2", "    3 3", "    4 3 *", "    5 4", "    6 4 *",
                 "  3 more: dictionary [-]", "    0 b: 5", "    1 a: 6", "    2 a copy: 6 *"}));
        QCOMPARE(desk.history(), QStringLiteral("1 Add Item, +5"));
        desk.undo.undo();
        QCOMPARE(desk.undo.redoActionName(), QStringLiteral("Add Item"));
        QVERIFY(desk.document.root().value() == sample());
        desk.undo.redo();
        QCOMPARE(desk.backAndForth(), QString());
    }

    void numbersTheKeysOfCopies() {
        ActionsDesk desk(tree("{a: 1, a: 2}"));
        desk.select({{0}, {1}});
        desk.actions.duplicate();
        QCOMPARE(desk.value(), QStringLiteral("{a: 1, a copy: 1, a: 2, a copy 2: 2}"));
    }

    void givesCopiesInArraysNoKey() {
        ActionsDesk desk(letters());
        desk.actions.changeType(desk.document.root(), PlistType::array);
        desk.select({{0}});
        desk.actions.duplicate();
        QVERIFY(desk.at({0})->key() == "a");
        QVERIFY(desk.at({1})->key().isEmpty());
    }

    // --- Deleting ---

    void deletesAndSelectsTheNextRow() {
        ActionsDesk desk(letters());
        desk.select({{1}, {3}});
        desk.actions.deleteSelected();
        QCOMPARE(desk.rows(),
                 ActionsDesk::lines({": dictionary [-]", "  0 a: 0", "  1 c: 2 *", "  2 e: 4"}));
        QCOMPARE(desk.history(), QStringLiteral("1 Delete, +1"));
        QCOMPARE(desk.backAndForth(), QString());
    }

    void selectsTheNewLastRow() {
        ActionsDesk desk(letters());
        desk.select({{3}, {4}});
        desk.actions.deleteSelected();
        QCOMPARE(desk.rows(),
                 ActionsDesk::lines({": dictionary [-]", "  0 a: 0", "  1 b: 1", "  2 c: 2 *"}));
        desk.actions.selectAll();
        desk.actions.deleteSelected();
        QCOMPARE(desk.rows(), QStringLiteral(": dictionary [-] *"));
    }

    void deletesAContainerWithItsSelectedChildren() {
        ActionsDesk desk(sample());
        desk.expand({{1}});
        const NodeId id = desk.at({1})->id();
        desk.select({{1}, {1, 1}, {1, 3}});
        desk.actions.deleteSelected();
        QCOMPARE(desk.value(), QStringLiteral("{name: 0, more: {b: 5, a: 6}}"));
        desk.undo.undo();
        QCOMPARE(desk.at({1})->id(), id);
        QVERIFY(desk.document.root().value() == sample());
    }

    void registersNothingWhereNothingIsDeleted() {
        ActionsDesk desk(letters());
        desk.actions.deleteSelected();
        QCOMPARE(desk.history(), QStringLiteral("0 , +0"));
    }

    // --- Moving ---

    void movesUp() {
        ActionsDesk desk(letters());
        desk.select({{2}, {3}});
        desk.actions.moveSelected(Direction::up);
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 a: 0", "  1 c: 2 *",
                                                  "  2 d: 3 *", "  3 b: 1", "  4 e: 4"}));
        QCOMPARE(desk.history(), QStringLiteral("1 Move, +2"));
        QCOMPARE(desk.backAndForth(), QString());
    }

    void movesDown() {
        ActionsDesk desk(letters());
        desk.select({{0}});
        desk.actions.moveSelected(Direction::down);
        QCOMPARE(desk.value(), QStringLiteral("{b: 1, a: 0, c: 2, d: 3, e: 4}"));
    }

    void gathersSiblingsInOneBlock() {
        ActionsDesk desk(letters());
        desk.select({{0}, {2}});
        desk.actions.moveSelected(Direction::down);
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 b: 1", "  1 d: 3",
                                                  "  2 a: 0 *", "  3 c: 2 *", "  4 e: 4"}));
        QCOMPARE(desk.backAndForth(), QString());

        ActionsDesk other(letters());
        other.select({{1}, {4}});
        other.actions.moveSelected(Direction::up);
        QCOMPARE(other.value(), QStringLiteral("{b: 1, e: 4, a: 0, c: 2, d: 3}"));
    }

    void staysAtTheEnds() {
        ActionsDesk desk(letters());
        desk.select({{0}, {3}});
        desk.actions.moveSelected(Direction::up);
        desk.select({{2}, {4}});
        desk.actions.moveSelected(Direction::down);
        QCOMPARE(desk.history(), QStringLiteral("0 , +0"));
    }

    void movesOnlySiblings() {
        ActionsDesk desk(sample());
        desk.expand({{2}});
        desk.select({{1}, {2, 1}});
        desk.actions.moveSelected(Direction::up);
        desk.actions.moveSelected(Direction::down);
        QCOMPARE(desk.history(), QStringLiteral("0 , +0"));
        // A selected child of a selected container goes along.
        desk.select({{2}, {2, 1}});
        desk.actions.moveSelected(Direction::up);
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 name: 0",
                                                  "  1 more: dictionary [-] *", "    0 b: 5",
                                                  "    1 a: 6 *", "  2 items: array [+]"}));
    }

    // --- Sorting ---

    void findsWhatToSort() {
        ActionsDesk desk(sample());
        desk.expand({{1}, {2}});
        QCOMPARE(desk.actions.sortTarget(), &desk.document.root());
        desk.select({{2}});
        QCOMPARE(desk.actions.sortTarget(), desk.at({2}).get());
        desk.select({{2, 0}});
        QCOMPARE(desk.actions.sortTarget(), desk.at({2}).get());
        desk.select({{1}});
        QCOMPARE(desk.actions.sortTarget(), &desk.document.root());
        desk.select({{1, 0}, {2}});
        QCOMPARE(desk.actions.sortTarget(), nullptr);
        desk.actions.sortKeys();
        QCOMPARE(desk.history(), QStringLiteral("0 , +0"));
        ActionsDesk list(tree("[1]"));
        QCOMPARE(list.actions.sortTarget(), nullptr);
        list.select({{0}});
        QCOMPARE(list.actions.sortTarget(), nullptr);
    }

    void sortsKeepingTheSelection() {
        ActionsDesk desk(sample());
        desk.select({{0}});
        desk.actions.sortKeys();
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 items: array [+]",
                                                  "  1 more: dictionary [+]", "  2 name: 0 *"}));
        QCOMPARE(desk.history(), QStringLiteral("1 Sort Keys, +1"));
        desk.actions.sortKeys();
        QCOMPARE(desk.history(), QStringLiteral("1 Sort Keys, +0"));
        QCOMPARE(desk.backAndForth(), QString());
    }
};

const RegisteredTest<DocumentActionsItemsTest> registered;
#include "DocumentActionsItemsTest.moc"
