#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/ActionsDesk.h"
#include "tests/model/support/RowMirror.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

PlistFile fileOf(int value) {
    return {PlistValue::array({PlistValue::integer(value)}), PlistFormat::xml};
}

PlistValue letters() {
    return tree("{a: 0, b: 1}");
}

/// Two arrays of three numbers each.
PlistValue twoLists() {
    return tree("[[0, 1, 2], [0, 1, 2]]");
}

}  // namespace

/// An outline that follows a document.
class OutlineStateFollowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsTheDocumentAtOnce() {
        const ActionsDesk desk(letters());
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 a: 0", "  1 b: 1"}));
    }

    void followsEditsAndUndo() {
        ActionsDesk desk(letters());
        desk.actions.changeValue(*desk.at({0}), PlistValue::integer(5));
        const QString after = ActionsDesk::lines({": dictionary [-]", "  0 a: 5", "  1 b: 1"});
        QCOMPARE(desk.rows(), after);
        desk.actions.editor().remove(std::vector<PlistNodePtr>{desk.at({0})});
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 b: 1"}));
        desk.undo.undo();
        QCOMPARE(desk.rows(), after);
    }

    void followsRenamesAndUndoneSorts() {
        ActionsDesk desk(letters());
        desk.actions.rename(*desk.at({0}), QStringLiteral("z"));
        desk.actions.sortKeys();
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 b: 1", "  1 z: 0"}));
        desk.undo.undo();
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 z: 0", "  1 b: 1"}));
    }

    void followsNewRoots() {
        ActionsDesk desk(letters());
        desk.document.apply(fileOf(7));
        QCOMPARE(desk.rows(), ActionsDesk::lines({": array [-]", "  0 7"}));
        desk.actions.editor().replaceContent(PlistNode::create({}, fileOf(8).root),
                                             PlistFormat::xml, QStringLiteral("Revert"));
        QCOMPARE(desk.rows(), ActionsDesk::lines({": array [-]", "  0 8"}));
        desk.undo.undo();
        QCOMPARE(desk.rows(), ActionsDesk::lines({": array [-]", "  0 7"}));
    }

    /// Between the two halves of a move the nodes have no rows: had the outline looked then, they
    /// would have lost their selection.
    void keepsTheSelectionThroughAMove() {
        ActionsDesk desk(letters());
        desk.select({{0}});
        desk.actions.moveSelected(DocumentActions::Direction::down);
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 b: 1", "  1 a: 0 *"}));
        desk.undo.undo();
        QCOMPARE(desk.rows(), ActionsDesk::lines({": dictionary [-]", "  0 a: 0 *", "  1 b: 1"}));
    }

    /// Rows far away from an edit are not looked at, and all the same their nodes find them.
    void findsRowsBehindManyEdits() {
        ActionsDesk desk(twoLists());
        desk.outline.setExpanded(desk.document.root(), OutlineState::Expansion::expand,
                                 OutlineState::Reach::wholeSubtree);
        const PlistNodePtr last = desk.at({1, 2});
        const PlistNodePtr list = desk.at({0});
        constexpr int edits = 3 * static_cast<int>(RowHintCorrections::limit);
        for (int i = 1; i <= edits; ++i) {
            const PlistNodePtr added = PlistNode::create({}, PlistValue::integer(i));
            desk.actions.editor().add({&added, 1}, *list, i % 3);
            QCOMPARE(desk.outline.hintedRowOf(*last), std::optional(8 + i));
            QCOMPARE(desk.outline.hintedRowOf(*added), std::optional(2 + i % 3));
        }
        for (int i = edits; i > 0; --i) {
            desk.undo.undo();
            QCOMPARE(desk.outline.hintedRowOf(*last), std::optional(7 + i));
        }
    }

    void tellsOfTheRowsInAnEditedPartOnly() {
        ActionsDesk desk(twoLists());
        RowMirror mirror(desk.outline);
        desk.outline.setExpanded(*desk.at({0}), OutlineState::Expansion::expand,
                                 OutlineState::Reach::nodeAlone);
        QCOMPARE(mirror.takeSignals(),
                 QStringList({QStringLiteral("insert 2-4"), QStringLiteral("change 1-1")}));
        desk.actions.changeValue(*desk.at({0, 1}), PlistValue::integer(5));
        QCOMPARE(mirror.takeSignals(), QStringList(QStringLiteral("change 3-3")));
        desk.actions.editor().remove(std::vector<PlistNodePtr>{desk.at({0, 2})});
        QCOMPARE(mirror.takeSignals(),
                 QStringList({QStringLiteral("remove 4-4"), QStringLiteral("change 1-1")}));
        desk.actions.changeValue(*desk.at({1, 0}), PlistValue::integer(5));
        QCOMPARE(mirror.takeSignals(), QStringList());
        QCOMPARE(mirror.text(), desk.rows());
    }

    /// Of an array's rows those are made and moved that come and go, and all behind them get their
    /// new numbers, but not those below these.
    void tellsOfTheItemsBehindNewAndLostOnes() {
        ActionsDesk desk(twoLists());
        desk.outline.setExpanded(*desk.at({1}), OutlineState::Expansion::expand,
                                 OutlineState::Reach::nodeAlone);
        RowMirror mirror(desk.outline);
        const std::vector<PlistNodePtr> added{PlistNode::create({}, PlistValue::integer(8)),
                                              PlistNode::create({}, PlistValue::integer(9))};
        desk.actions.editor().add(added, desk.document.root(), 1);
        QCOMPARE(mirror.takeSignals(),
                 QStringList({QStringLiteral("insert 2-3"), QStringLiteral("change 0-4")}));
        desk.actions.editor().remove(std::vector<PlistNodePtr>{desk.at({0})});
        QCOMPARE(mirror.takeSignals(),
                 QStringList({QStringLiteral("remove 1-1"), QStringLiteral("change 0-3")}));
        desk.actions.editor().remove(std::vector<PlistNodePtr>{desk.at({2})});
        QCOMPARE(mirror.takeSignals(),
                 QStringList({QStringLiteral("remove 3-6"), QStringLiteral("change 0-0")}));
        QCOMPARE(mirror.text(), ActionsDesk::lines({": array [-]", "  0 8", "  1 9"}));
        QCOMPARE(mirror.text(), desk.rows());
    }

    /// Making all rows anew finds nothing that following the edits has missed.
    void followsRandomEditsOfArraysExactly() {
        std::mt19937 random(11);
        const auto below = [&random](std::size_t count) { return random() % count; };
        ActionsDesk desk(PlistValue::array({twoLists(), twoLists(), PlistValue::integer(4)}));
        RowMirror mirror(desk.outline);
        for (int step = 0; step < 2000; ++step) {
            const PlistNodePtr node(&desk.outline.rows()[below(desk.outline.rows().size())].node());
            switch (below(desk.outline.rows().size() < 200 ? 6 : 8)) {
                case 0:
                    desk.outline.setExpanded(*node, OutlineState::Expansion::collapse,
                                             OutlineState::Reach::nodeAlone);
                    break;
                case 1:
                    desk.outline.setExpanded(*node, OutlineState::Expansion::expand,
                                             OutlineState::Reach::nodeAlone);
                    break;
                case 2:
                    desk.undo.undo();
                    break;
                case 3:
                    desk.undo.redo();
                    break;
                case 4:
                case 5: {
                    PlistNode& parent = node->isContainer() ? *node : *node->parent();
                    std::vector<PlistNodePtr> added;
                    for (std::size_t i = below(3) + 1; i > 0; --i) {
                        added.push_back(PlistNode::create(
                            {}, below(3) == 0 ? twoLists() : PlistValue::integer(step)));
                    }
                    const auto places = static_cast<std::size_t>(parent.childCount()) + 1;
                    desk.actions.editor().add(added, parent, static_cast<qint64>(below(places)));
                    break;
                }
                default:
                    desk.actions.editor().remove(std::vector<PlistNodePtr>{node});
            }
            QCOMPARE(mirror.text(), desk.rows());
            for (std::size_t i = 0; i < desk.outline.rows().size(); ++i) {
                QCOMPARE(desk.outline.hintedRowOf(desk.outline.rows()[i].node()),
                         std::optional(static_cast<int>(i)));
            }
            if (below(20) == 0) {
                mirror.takeSignals();
                desk.outline.rebuild(desk.document.root());
                QCOMPARE(mirror.takeSignals(), QStringList());
            }
        }
    }

    /// What changes in several places at once is told as one range.
    void tellsOfSeveralPlacesAtOnce() {
        ActionsDesk desk(twoLists());
        desk.outline.setExpanded(desk.document.root(), OutlineState::Expansion::expand,
                                 OutlineState::Reach::wholeSubtree);
        RowMirror mirror(desk.outline);
        {
            const EditGroup group(desk.document, &desk.undo, QStringLiteral("Both"));
            desk.actions.changeValue(*desk.at({0, 1}), PlistValue::integer(5));
            desk.actions.changeValue(*desk.at({1, 1}), PlistValue::integer(6));
        }
        QCOMPARE(mirror.takeSignals(), QStringList(QStringLiteral("change 3-7")));
        QCOMPARE(mirror.text(), desk.rows());
    }

    void findsKeysThatAnotherKeyMakesDuplicates() {
        ActionsDesk desk(PlistValue::array({letters()}));
        desk.outline.setExpanded(*desk.at({0}), OutlineState::Expansion::expand,
                                 OutlineState::Reach::nodeAlone);
        desk.actions.editor().rename(*desk.at({0, 1}), PlistString("c"));
        QVERIFY(!desk.outline.rows()[2].isDuplicateKey());
        const PlistNodePtr second = PlistNode::create("a", PlistValue::integer(2));
        desk.actions.editor().add({&second, 1}, *desk.at({0}), 2);
        QVERIFY(desk.outline.rows()[2].isDuplicateKey());
        QVERIFY(desk.outline.rows()[4].isDuplicateKey());
        desk.actions.rename(*second, QStringLiteral("d"));
        QVERIFY(!desk.outline.rows()[2].isDuplicateKey());
    }

    void outlivesTheDocument() {
        OutlineState outline;
        {
            PlistDocument document;
            document.apply(fileOf(7));
            outline.follow(document);
        }
        QCOMPARE(outline.rows().size(), std::size_t{2});
    }

    // --- Groups of edits ---

    void looksOnceAtAGroupOfEdits() {
        ActionsDesk desk(letters());
        const QSignalSpy changed(&desk.outline, &OutlineState::rowsChanged);
        {
            const EditGroup group(desk.document, &desk.undo, QStringLiteral("Both"));
            desk.actions.changeValue(*desk.at({0}), PlistValue::integer(5));
            {
                const EditGroup inner(desk.document, &desk.undo, QStringLiteral("Inner"));
                desk.actions.changeValue(*desk.at({1}), PlistValue::integer(6));
            }
            QCOMPARE(changed.count(), 0);
        }
        QCOMPARE(changed.count(), 1);
        QCOMPARE(desk.history(), QStringLiteral("1 Both, +2"));
        QCOMPARE(desk.backAndForth(), QString());
    }

    void groupsWithoutUndo() {
        ActionsDesk desk(letters());
        const PlistEditor editor(desk.document);
        const QSignalSpy changed(&desk.outline, &OutlineState::rowsChanged);
        {
            const EditGroup group(desk.document, nullptr);
            editor.changeValue(*desk.at({0}), PlistValue::integer(5));
            editor.changeValue(*desk.at({1}), PlistValue::integer(6));
        }
        QCOMPARE(changed.count(), 1);
        QVERIFY(!desk.undo.canUndo());
    }

    void leavesTheNameOfTheEditInside() {
        ActionsDesk desk(letters());
        {
            const EditGroup group(desk.document, &desk.undo);
            desk.actions.changeValue(*desk.at({0}), PlistValue::integer(5));
        }
        QCOMPARE(desk.history(), QStringLiteral("1 Change Value, +1"));
    }
};

const RegisteredTest<OutlineStateFollowTest> registered;
#include "OutlineStateFollowTest.moc"
