#include <QSignalSpy>
#include <QTest>

#include "PlistCore/PlistEntry.h"
#include "app/model/DocumentActions.h"
#include "app/model/PlistDocument.h"
#include "app/model/PlistNode.h"

namespace {

using Reach = OutlineState::Reach;

/// A document {box: {inner: [1]}, word: "x"} with its outline.
struct Window {
    Window() {
        const PlistValue inner = PlistValue::array({PlistValue::integer(1)});
        document.apply({PlistValue::dictionary({{"box", PlistValue::dictionary({{"inner", inner}})},
                                                {"word", PlistValue::string("x")}}),
                        PlistFormat::xml});
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

QTEST_GUILESS_MAIN(DocumentActionsTest)
#include "DocumentActionsTest.moc"
