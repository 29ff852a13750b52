#include <QSignalSpy>
#include <QTest>
#include <functional>

#include "app/model/actions/DocumentActions.h"
#include "app/model/actions/PlistTransfer.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/ActionsDesk.h"
#include "tests/model/support/IntervalCount.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

using Reach = OutlineState::Reach;

using Action = std::function<void(ActionsDesk&)>;

PlistValue sample() {
    return tree(R"({box: {inner: [1]}, word: "x"})");
}

/// A document with its outline.
struct Window {
    Window() {
        document.apply({sample(), PlistFormat::xml});
        outline.rebuild(document.root());
    }

    PlistNode& box() const { return *document.root().children()[0]; }
    PlistNode& inner() const { return *box().children()[0]; }
    PlistNode& word() const { return *document.root().children()[1]; }
    DocumentActions actions() { return {document, outline}; }
    qsizetype rowCount() const { return static_cast<qsizetype>(outline.rows().size()); }

    PlistDocument document;
    OutlineState outline;
};

}  // namespace

class DocumentActionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void expandsOneLevelOrAll() {
        Window window;
        window.outline.select({window.box().id(), window.word().id()});
        QCOMPARE(window.actions().expandSelected(Reach::nodeAlone),
                 OutlineState::ExpandResult::done);
        QCOMPARE(window.rowCount(), 4);
        QVERIFY(!window.outline.isExpanded(window.inner().id()));
        window.actions().expandSelected(Reach::wholeSubtree);
        QCOMPARE(window.rowCount(), 5);
    }

    void expandsNothingWithoutSelection() {
        Window window;
        window.actions().expandSelected(Reach::wholeSubtree);
        QCOMPARE(window.rowCount(), 3);
    }

    void collapsesExpandedContainers() {
        Window window;
        window.outline.select({window.box().id()});
        window.actions().expandSelected(Reach::wholeSubtree);
        window.actions().collapseSelected(Reach::nodeAlone);
        QCOMPARE(window.rowCount(), 3);
        QVERIFY(window.outline.isExpanded(window.inner().id()));
        QCOMPARE(window.outline.selection(), NodeIdSet{window.box().id()});

        window.actions().expandSelected(Reach::nodeAlone);
        window.actions().collapseSelected(Reach::wholeSubtree);
        QVERIFY(!window.outline.isExpanded(window.inner().id()));
    }

    void handsTheSelectionToTheParent() {
        Window window;
        const QSignalSpy rows(&window.outline, &OutlineState::rowsChanged);
        window.outline.select({window.word().id()});
        window.actions().collapseSelected(Reach::nodeAlone);
        QCOMPARE(window.outline.selection(), NodeIdSet{window.document.root().id()});
        QCOMPARE(rows.count(), 0);

        // A collapsed container has nothing to collapse either.
        window.outline.select({window.box().id()});
        window.actions().collapseSelected(Reach::nodeAlone);
        QCOMPARE(window.outline.selection(), NodeIdSet{window.document.root().id()});
    }

    void leavesTheRootSelected() {
        Window window;
        window.outline.select({window.document.root().id()});
        window.actions().collapseSelected(Reach::nodeAlone);
        QCOMPARE(window.rowCount(), 1);
        window.actions().collapseSelected(Reach::nodeAlone);
        QCOMPARE(window.outline.selection(), NodeIdSet{window.document.root().id()});
    }

    void keepsSeveralSelectedRows() {
        Window window;
        const NodeIdSet both{window.box().id(), window.word().id()};
        window.outline.select(both);
        window.actions().collapseSelected(Reach::nodeAlone);
        QCOMPARE(window.outline.selection(), both);
    }

    void collapsesBehindAFilter() {
        Window window;
        window.outline.select({window.box().id()});
        window.actions().expandSelected(Reach::nodeAlone);
        window.outline.setFilter(NodeIdSet{window.document.root().id(), window.box().id()});
        window.actions().collapseSelected(Reach::nodeAlone);
        QVERIFY(!window.outline.isExpanded(window.box().id()));
        // Shown open all the same, and so not handed to the parent the next time either.
        window.actions().collapseSelected(Reach::nodeAlone);
        QCOMPARE(window.outline.selection(), NodeIdSet{window.box().id()});
    }

    void expandsAndCollapsesAll() {
        Window window;
        const QSignalSpy rows(&window.outline, &OutlineState::rowsChanged);
        QCOMPARE(window.actions().expandAll(), OutlineState::ExpandResult::done);
        QCOMPARE(window.rowCount(), 5);
        QCOMPARE(rows.count(), 1);
        window.actions().collapseAll();
        QCOMPARE(window.rowCount(), 3);
        QVERIFY(!window.outline.isExpanded(window.inner().id()));
        QCOMPARE(rows.count(), 2);
    }

    /// Whatever it is put together from: an action, its undo and its redo walk over the rows once.
    void makesTheRowsOnce_data() {
        QTest::addColumn<Action>("action");
        const auto add = [](const char* name, const Action& action) {
            QTest::newRow(name) << action;
        };
        add("add", [](ActionsDesk& desk) { desk.actions.addItem(); });
        add("duplicate", [](ActionsDesk& desk) { desk.actions.duplicate(); });
        add("delete", [](ActionsDesk& desk) { desk.actions.deleteSelected(); });
        add("move",
            [](ActionsDesk& desk) { desk.actions.moveSelected(DocumentActions::Direction::up); });
        add("sort", [](ActionsDesk& desk) { desk.actions.sortKeys(); });
        add("rename", [](ActionsDesk& desk) {
            QVERIFY(!desk.actions.rename(*desk.at({0}), QStringLiteral("new")));
        });
        add("change a value", [](ActionsDesk& desk) {
            QVERIFY(!desk.actions.setValueFromText(*desk.at({1}), QStringLiteral("new")));
        });
        add("to a container",
            [](ActionsDesk& desk) { desk.actions.changeType(*desk.at({1}), PlistType::array); });
        add("from a container",
            [](ActionsDesk& desk) { desk.actions.changeType(*desk.at({0}), PlistType::string); });
        add("between containers",
            [](ActionsDesk& desk) { desk.actions.changeType(*desk.at({0}), PlistType::array); });
        add("paste", [](ActionsDesk& desk) { desk.actions.paste(desk.actions.copy()); });
        add("drop", [](ActionsDesk& desk) {
            const PlistTransfer transfer = desk.actions.dragItems(*desk.at({1}));
            desk.actions.drop({&transfer, 1}, 1, DocumentActions::DragOrigin::thisProcess);
        });
        add("revert", [](ActionsDesk& desk) {
            desk.actions.editor().replaceContent(PlistNode::create({}, sample()), PlistFormat::xml,
                                                 {});
        });
        add("expand", [](ActionsDesk& desk) { desk.actions.expandAll(); });
        add("collapse", [](ActionsDesk& desk) { desk.actions.collapseAll(); });
    }

    void makesTheRowsOnce() {
        QFETCH(const Action, action);
        ActionsDesk desk(
            PlistValue::dictionary({{"box", sample()}, {"a", PlistValue::string("x")}}));
        desk.select({{1}});
        IntervalCount intervals;
        action(desk);
        QCOMPARE(intervals.takeNames(), QStringLiteral("Rows"));
        if (desk.undo.canUndo()) {
            desk.undo.undo();
            QCOMPARE(intervals.takeNames(), QStringLiteral("Rows"));
            desk.undo.redo();
            QCOMPARE(intervals.takeNames(), QStringLiteral("Rows"));
        }
    }

    /// A change of the type of a container shows its children in the same step.
    void tellsOfAChangeOfTheTypeOnce() {
        ActionsDesk desk(sample());
        const QSignalSpy inserted(&desk.outline, &OutlineState::rowsInserted);
        const QSignalSpy changed(&desk.outline, &OutlineState::rowsDataChanged);
        const QSignalSpy rows(&desk.outline, &OutlineState::rowsChanged);
        desk.actions.changeType(*desk.at({0}), PlistType::array);
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 box: array [-]",
                                                  "    0 array [+]", "  1 word: \"x\""}));
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(rows.count(), 1);
    }

    void expandsTheRootOnCollapsingAll() {
        Window window;
        window.outline.select({window.document.root().id()});
        window.actions().collapseSelected(Reach::wholeSubtree);
        QCOMPARE(window.rowCount(), 1);
        window.actions().collapseAll();
        QCOMPARE(window.rowCount(), 3);
    }

    void expandsNothingInAScalar() {
        Window window;
        window.document.apply({PlistValue::string("x"), PlistFormat::xml});
        window.outline.rebuild(window.document.root());
        QCOMPARE(window.actions().expandAll(), OutlineState::ExpandResult::done);
        window.actions().collapseAll();
        QCOMPARE(window.rowCount(), 1);
    }
};

const RegisteredTest<DocumentActionsTest> registered;
#include "DocumentActionsTest.moc"
