#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

const double notANumber = std::numeric_limits<double>::quiet_NaN();

PlistValue number(int value) {
    return PlistValue::integer(value);
}

PlistValue text(const char* value) {
    return PlistValue::string(value);
}

PlistNodePtr item(const char* key, PlistValue value) {
    return PlistNode::create(key, std::move(value));
}

PlistValue sample() {
    return tree(R"({name: "Ada", items: [1, 2, 3, 4], more: {b: 5, a: 6}})");
}

/// A document with its undo manager, and what a window would hear of it.
struct Desk {
    explicit Desk(const PlistValue& value = sample()) : editor(document, &undo) {
        document.apply({value, PlistFormat::xml});
        treeChanged = std::make_unique<QSignalSpy>(&document, &PlistDocument::treeChanged);
    }

    PlistNode& root() const { return document.root(); }
    PlistNodePtr at(std::initializer_list<std::size_t> path) const {
        PlistNodePtr node(&root());
        for (const std::size_t position : path) {
            node = node->children()[position];
        }
        return node;
    }

    QString value() const { return TreeText::whole(root().value()); }

    /// The entries, how far the revision has come, and how often the tree was said to have changed.
    QString history() const {
        return QStringLiteral("undo %1 %2, redo %3 %4, revision +%5, changed %6")
            .arg(undo.undoCount())
            .arg(undo.undoActionName())
            .arg(undo.redoCount())
            .arg(undo.redoActionName())
            .arg(document.revision() - revisionWhenRead)
            .arg(treeChanged->count());
    }

    PlistDocument document;
    UndoManager undo;
    PlistEditor editor;
    /// A document that was read once has counted that.
    static constexpr qint64 revisionWhenRead = 1;
    std::unique_ptr<QSignalSpy> treeChanged;
};

std::vector<NodeId> idsOf(PlistNode& node) {
    std::vector<NodeId> ids;
    for (const PlistNodePtr& child : node.children()) {
        ids.push_back(child->id());
    }
    return ids;
}

}  // namespace

class PlistEditorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // --- Rename ---

    void renames() {
        Desk desk;
        QVERIFY(!desk.editor.rename(*desk.at({0}), "first name"));
        QCOMPARE(desk.history(), QStringLiteral("undo 1 Rename, redo 0 , revision +0, changed 1"));
        QVERIFY(desk.at({0})->key() == "first name");
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
        QCOMPARE(desk.history(), QStringLiteral("undo 0 , redo 1 Rename, revision +0, changed 2"));
        desk.undo.redo();
        QVERIFY(desk.at({0})->key() == "first name");
    }

    void refusesKeysOfSiblings() {
        Desk desk;
        const auto error = desk.editor.rename(*desk.at({1}), "name");
        QCOMPARE(error, PlistEditor::EditError(PlistEditor::EditError::DuplicateKey{"name"}));
        QCOMPARE(error->message(), QStringLiteral("The key “name” already exists."));
        QVERIFY(desk.root().value() == sample());
        QCOMPARE(desk.history(), QStringLiteral("undo 0 , redo 0 , revision +0, changed 0"));
    }

    void refusesToRenameTheRoot() {
        Desk desk;
        const auto error = desk.editor.rename(desk.root(), "key");
        QCOMPARE(error, PlistEditor::EditError(PlistEditor::EditError::RootCannotChange{}));
        QCOMPARE(error->message(), QStringLiteral("The root cannot be renamed, moved or deleted."));
    }

    void ignoresTheSameKey() {
        Desk desk(tree("{caf\u00e9: 1, a: 2}"));
        QVERIFY(!desk.editor.rename(*desk.at({0}), "caf\u00e9"));
        QVERIFY(!desk.editor.rename(*desk.at({0}), "cafe\u0301"));
        QVERIFY(desk.editor.rename(*desk.at({1}), "cafe\u0301"));
        QCOMPARE(desk.undo.undoCount(), 0);
    }

    void takesAnyKeyInAnArray() {
        Desk desk;
        QVERIFY(!desk.editor.rename(*desk.at({1, 0}), "same"));
        QVERIFY(!desk.editor.rename(*desk.at({1, 1}), "same"));
        QCOMPARE(desk.undo.undoCount(), 2);
    }

    // --- Change value ---

    void changesAValue() {
        Desk desk;
        desk.editor.changeValue(*desk.at({0}), text("Bob"));
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 1 Change Value, redo 0 , revision +1, changed 1"));
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 0 , redo 1 Change Value, revision +2, changed 2"));
        desk.undo.redo();
        QVERIFY(desk.at({0})->value() == text("Bob"));
    }

    void changesOnlyDifferentScalars() {
        Desk desk(
            PlistValue::array({PlistValue::real(0.0), PlistValue::real(notANumber), number(1)}));
        desk.editor.changeValue(*desk.at({0}), PlistValue::real(-0.0));
        desk.editor.changeValue(*desk.at({2}), number(1));
        desk.editor.changeValue(*desk.at({2}), PlistValue::array());
        desk.editor.changeValue(desk.root(), number(1));
        QCOMPARE(desk.undo.undoCount(), 0);
        desk.editor.changeValue(*desk.at({1}), PlistValue::real(notANumber));
        QCOMPARE(desk.undo.undoCount(), 1);
    }

    /// Another spelling of the same text is no change: the first one stays, byte for byte.
    void keepsTheSpellingOfEqualTexts() {
        const auto spelling = [](const Desk& edited) {
            const PlistValue scalar = edited.at({0})->scalar();
            return std::string(scalar.text());
        };
        Desk desk(tree("[\"caf\u00e9\"]"));
        desk.editor.changeValue(*desk.at({0}), text("cafe\u0301"));
        QCOMPARE(desk.undo.undoCount(), 0);
        QCOMPARE(spelling(desk), std::string("caf\u00e9"));
        desk.editor.changeValue(*desk.at({0}), text("cafe"));
        desk.editor.changeValue(*desk.at({0}), text("cafe\u0301"));
        QCOMPARE(spelling(desk), std::string("cafe\u0301"));
    }

    // --- Change type ---

    void changesAScalarsType() {
        Desk desk;
        desk.editor.changeType(*desk.at({1, 0}), PlistType::string);
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 1 Change Type, redo 0 , revision +1, changed 1"));
        QVERIFY(desk.at({1, 0})->value() == text("1"));
        desk.editor.changeType(*desk.at({1, 0}), PlistType::string);
        QCOMPARE(desk.undo.undoCount(), 1);
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
    }

    void bringsTheVeryChildrenBack() {
        Desk desk;
        const PlistNodePtr items = desk.at({1});
        const std::vector<NodeId> ids = idsOf(*items);
        desk.editor.changeType(*items, PlistType::boolean);
        QVERIFY(!items->isContainer());
        desk.undo.undo();
        QCOMPARE(idsOf(*items), ids);
        desk.undo.redo();
        desk.undo.undo();
        QCOMPARE(idsOf(*items), ids);
        QVERIFY(desk.root().value() == sample());
    }

    void givesKeysToTheItemsOfAnArray() {
        Desk desk(tree("[1, 2, 3]"));
        desk.at({0})->setKey("x");
        desk.at({2})->setKey("x");
        const std::vector<NodeId> ids = idsOf(desk.root());
        desk.editor.changeType(desk.root(), PlistType::dictionary);
        QCOMPARE(desk.value(), QStringLiteral("{x: 1, Item 1: 2, Item 2: 3}"));
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 1 Change Type, redo 0 , revision +1, changed 1"));
        desk.undo.undo();
        QCOMPARE(desk.value(), QStringLiteral("[1, 2, 3]"));
        QVERIFY(desk.at({0})->key() == "x");
        QVERIFY(desk.at({1})->key().isEmpty());
        QVERIFY(desk.at({2})->key() == "x");
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 0 , redo 1 Change Type, revision +2, changed 2"));
        desk.undo.redo();
        QCOMPARE(desk.value(), QStringLiteral("{x: 1, Item 1: 2, Item 2: 3}"));
        desk.editor.changeType(desk.root(), PlistType::array);
        QVERIFY(desk.at({1})->key() == "Item 1");
        QCOMPARE(idsOf(desk.root()), ids);
    }

    void avoidsKeysThatWereGiven() {
        Desk desk(tree("[1, 2, 3, 4]"));
        desk.at({0})->setKey("Item 1");
        desk.at({2})->setKey("Item 1 copy");
        desk.at({3})->setKey("Item 1");
        desk.editor.changeType(desk.root(), PlistType::dictionary);
        QCOMPARE(desk.value(), QStringLiteral("{Item 1: 1, Item 1 copy: 2, Item 2: 3, Item 3: 4}"));
    }

    // --- Change format ---

    void changesTheFormat() {
        Desk desk;
        desk.editor.changeFormat(PlistFormat::xml);
        desk.editor.changeFormat(PlistFormat::openStep);
        QCOMPARE(desk.undo.undoCount(), 0);
        desk.editor.changeFormat(PlistFormat::binary);
        QCOMPARE(desk.document.format(), PlistFormat::binary);
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 1 Change Format, redo 0 , revision +0, changed 0"));
        QVERIFY(desk.undo.isModified());
        desk.undo.undo();
        QCOMPARE(desk.document.format(), PlistFormat::xml);
        desk.undo.redo();
        QCOMPARE(desk.document.format(), PlistFormat::binary);
    }

    // --- Add ---

    void addsItems() {
        Desk desk;
        const std::vector<PlistNodePtr> added{item("p", number(8)), item("q", number(9))};
        desk.editor.add(added, *desk.at({2}), 1);
        QCOMPARE(desk.value(), QStringLiteral("{name: \"Ada\", items: [1, 2, 3, 4], "
                                              "more: {b: 5, p: 8, q: 9, a: 6}}"));
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 1 Add Item, redo 0 , revision +1, changed 1"));
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 0 , redo 1 Add Item, revision +2, changed 2"));
        desk.undo.redo();
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 1 Add Item, redo 0 , revision +3, changed 3"));
        QVERIFY(desk.at({2, 1}) == added[0]);
    }

    void clampsThePlace() {
        Desk desk(tree("[1]"));
        desk.editor.add(std::vector{item("", number(2))}, desk.root(), 99);
        desk.editor.add(std::vector{item("", number(0))}, desk.root(), -5);
        QCOMPARE(desk.value(), QStringLiteral("[0, 1, 2]"));
    }

    void addsNothingToAScalar() {
        Desk desk;
        desk.editor.add(std::vector{item("", number(2))}, *desk.at({0}), 0);
        desk.editor.add({}, desk.root(), 0);
        QCOMPARE(desk.history(), QStringLiteral("undo 0 , redo 0 , revision +0, changed 0"));
    }

    // --- Delete ---

    void deletesAndPutsBack() {
        Desk desk;
        const std::vector<NodeId> ids = idsOf(*desk.at({1}));
        const std::vector<PlistNodePtr> gone{desk.at({1, 3}), desk.at({0}), desk.at({1, 0}),
                                             desk.at({1, 1}), desk.at({1, 0})};
        desk.editor.remove(gone);
        QCOMPARE(desk.value(), QStringLiteral("{items: [3], more: {b: 5, a: 6}}"));
        QCOMPARE(desk.history(), QStringLiteral("undo 1 Delete, redo 0 , revision +1, changed 1"));
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
        QCOMPARE(idsOf(*desk.at({1})), ids);
        QVERIFY(desk.at({1, 3}) == gone[0]);
        QCOMPARE(desk.history(), QStringLiteral("undo 0 , redo 1 Delete, revision +2, changed 2"));
        desk.undo.redo();
        QCOMPARE(desk.value(), QStringLiteral("{items: [3], more: {b: 5, a: 6}}"));
    }

    void deletesANodeWithItsDescendantOnce() {
        Desk desk;
        const PlistNodePtr items = desk.at({1});
        const PlistNodePtr second = desk.at({1, 1});
        desk.editor.remove(std::vector{items, second});
        QCOMPARE(desk.value(), QStringLiteral("{name: \"Ada\", more: {b: 5, a: 6}}"));
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
        QVERIFY(desk.at({1}) == items);
        QVERIFY(desk.at({1, 1}) == second);
        desk.undo.redo();
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
    }

    void skipsTheRootAndStrangers() {
        Desk desk;
        desk.editor.remove(std::vector{PlistNodePtr(&desk.root()), item("", number(1))});
        desk.editor.remove({});
        QCOMPARE(desk.history(), QStringLiteral("undo 0 , redo 0 , revision +0, changed 0"));
        desk.editor.remove(std::vector{PlistNodePtr(&desk.root()), desk.at({0})});
        QCOMPARE(desk.undo.undoCount(), 1);
    }

    // --- Move ---

    void movesAmongSiblings() {
        Desk desk;
        desk.editor.move(std::vector{desk.at({1, 1})}, *desk.at({1}), 3);
        QCOMPARE(TreeText::whole(desk.at({1})->value()), QStringLiteral("[1, 3, 2, 4]"));
        QCOMPARE(desk.history(), QStringLiteral("undo 1 Move, redo 0 , revision +2, changed 1"));
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
        QCOMPARE(desk.history(), QStringLiteral("undo 0 , redo 1 Move, revision +4, changed 2"));
        desk.undo.redo();
        QCOMPARE(TreeText::whole(desk.at({1})->value()), QStringLiteral("[1, 3, 2, 4]"));
    }

    void gathersWhatItMoves() {
        Desk desk;
        desk.editor.move(std::vector{desk.at({1, 3}), desk.at({1, 0})}, *desk.at({1}), 2);
        QCOMPARE(TreeText::whole(desk.at({1})->value()), QStringLiteral("[2, 4, 1, 3]"));
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
    }

    void makesKeysUniqueWhereItMovesTo() {
        Desk desk(tree("{a: 1, in: {a: 2, b: 3}, list: [4, 5]}"));
        const std::vector<NodeId> ids = idsOf(*desk.at({1}));
        desk.editor.move(
            std::vector{desk.at({1, 0}), desk.at({2, 0}), desk.at({1, 1}), desk.at({2, 1})},
            desk.root(), 1);
        QCOMPARE(desk.value(),
                 QStringLiteral("{a: 1, a 2: 2, : 4, b: 3,  2: 5, in: {}, list: []}"));
        QCOMPARE(desk.history(), QStringLiteral("undo 1 Move, redo 0 , revision +2, changed 1"));
        desk.undo.undo();
        QCOMPARE(desk.value(), QStringLiteral("{a: 1, in: {a: 2, b: 3}, list: [4, 5]}"));
        QCOMPARE(idsOf(*desk.at({1})), ids);
        QVERIFY(desk.at({2, 1})->key().isEmpty());
        desk.undo.redo();
        QCOMPARE(desk.value(),
                 QStringLiteral("{a: 1, a 2: 2, : 4, b: 3,  2: 5, in: {}, list: []}"));
    }

    void movesEachNodeOnce() {
        Desk desk;
        const std::vector<PlistNodePtr> moved =
            desk.editor.move(std::vector{desk.at({1, 1}), desk.at({1, 1})}, desk.root(), 0);
        QCOMPARE(moved.size(), std::size_t{1});
        QCOMPARE(desk.value(), QStringLiteral("{: 2, name: \"Ada\", items: [1, 3, 4], "
                                              "more: {b: 5, a: 6}}"));
    }

    void keepsItsOwnKeyWithinADictionary() {
        Desk desk;
        desk.editor.move(std::vector{desk.at({0})}, desk.root(), 3);
        QVERIFY(desk.at({2})->key() == "name");
    }

    void movesNothingIntoItself() {
        Desk desk;
        const PlistNodePtr more = desk.at({2});
        desk.editor.move(std::vector{more}, *more, 0);
        desk.editor.move(std::vector{PlistNodePtr(&desk.root())}, *more, 0);
        desk.editor.move(std::vector{desk.at({1})}, *desk.at({0}), 0);
        desk.editor.move({}, desk.root(), 0);
        QCOMPARE(desk.history(), QStringLiteral("undo 0 , redo 0 , revision +0, changed 0"));
        desk.editor.move(std::vector{more, desk.at({0})}, *more, 2);
        QCOMPARE(desk.value(),
                 QStringLiteral("{items: [1, 2, 3, 4], more: {b: 5, a: 6, name: \"Ada\"}}"));
    }

    void registersAMoveToTheSamePlace() {
        Desk desk;
        desk.editor.move(std::vector{desk.at({1, 1})}, *desk.at({1}), 1);
        QVERIFY(desk.root().value() == sample());
        QCOMPARE(desk.history(), QStringLiteral("undo 1 Move, redo 0 , revision +2, changed 1"));
    }

    // --- Sort ---

    void sortsKeysByCodePoints() {
        Desk desk(tree("{b: 1, B: 2, \u00e9: 3, a: 4, e\u0301: 5, f: 6}"));
        desk.editor.sortKeys(desk.root());
        QCOMPARE(desk.value(), QStringLiteral("{B: 2, a: 4, b: 1, f: 6, \u00e9: 3, e\u0301: 5}"));
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 1 Sort Keys, redo 0 , revision +1, changed 1"));
        desk.editor.sortKeys(desk.root());
        QCOMPARE(desk.undo.undoCount(), 1);
        desk.undo.undo();
        QCOMPARE(desk.value(), QStringLiteral("{b: 1, B: 2, \u00e9: 3, a: 4, e\u0301: 5, f: 6}"));
        QCOMPARE(desk.history(),
                 QStringLiteral("undo 0 , redo 1 Sort Keys, revision +1, changed 2"));
        desk.undo.redo();
        QCOMPARE(desk.value(), QStringLiteral("{B: 2, a: 4, b: 1, f: 6, \u00e9: 3, e\u0301: 5}"));
        QCOMPARE(desk.document.revision() - Desk::revisionWhenRead, 1);
    }

    void sortsDirectEntriesOfDictionariesOnly() {
        Desk desk;
        desk.editor.sortKeys(*desk.at({1}));
        desk.editor.sortKeys(*desk.at({0}));
        QCOMPARE(desk.undo.undoCount(), 0);
        desk.editor.sortKeys(desk.root());
        QCOMPARE(desk.value(),
                 QStringLiteral("{items: [1, 2, 3, 4], more: {b: 5, a: 6}, name: \"Ada\"}"));
    }

    // --- Replacing the content ---

    void revertsInOneStep() {
        Desk desk;
        desk.editor.changeValue(*desk.at({0}), text("Bob"));
        const PlistNodePtr old(&desk.root());
        const QSignalSpy root(&desk.document, &PlistDocument::rootChanged);
        desk.editor.replaceContent(PlistNode::create({}, number(1)), PlistFormat::openStep,
                                   QStringLiteral("Revert"));
        QCOMPARE(desk.history(), QStringLiteral("undo 2 Revert, redo 0 , revision +2, changed 2"));
        QVERIFY(desk.document.wasReadOnlyFormat());
        desk.undo.undo();
        QVERIFY(&desk.root() == old.get());
        QVERIFY(!desk.document.wasReadOnlyFormat());
        QVERIFY(desk.at({0})->value() == text("Bob"));
        QCOMPARE(root.count(), 2);
        desk.undo.redo();
        QVERIFY(desk.root().value() == number(1));
        QVERIFY(desk.document.wasReadOnlyFormat());
        desk.undo.undo();
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
    }

    /// Both ways, with the format that somebody had picked for saving.
    void revertsTheFormatToo() {
        Desk desk;
        desk.editor.changeFormat(PlistFormat::binary);
        desk.editor.replaceContent(PlistNode::create({}, number(1)), PlistFormat::xml,
                                   QStringLiteral("Revert"));
        QCOMPARE(desk.document.format(), PlistFormat::xml);
        desk.undo.undo();
        QCOMPARE(desk.document.format(), PlistFormat::binary);
        QCOMPARE(desk.undo.undoActionName(), QStringLiteral("Change Format"));
        desk.undo.redo();
        QCOMPARE(desk.document.format(), PlistFormat::xml);
        desk.undo.undo();
        desk.undo.undo();
        QCOMPARE(desk.document.format(), PlistFormat::xml);
        QVERIFY(desk.root().value() == sample());
        QVERIFY(!desk.undo.isModified());
    }

    void takesEditsOfThoseWhoHearOfAnEdit() {
        Desk desk;
        const PlistNodePtr more = desk.at({2});
        QMetaObject::Connection connection;
        connection =
            connect(&desk.document, &PlistDocument::treeChanged, this, [&desk, &connection, more] {
                disconnect(connection);
                desk.editor.rename(*more, "rest");
            });
        desk.editor.changeValue(*desk.at({0}), text("Bob"));
        QCOMPARE(desk.undo.undoCount(), 2);
        QCOMPARE(desk.undo.undoActionName(), QStringLiteral("Rename"));
        desk.undo.undo();
        QCOMPARE(desk.undo.undoActionName(), QStringLiteral("Change Value"));
        QVERIFY(desk.at({0})->value() == text("Bob"));
    }

    void takesEditsOfThoseWhoHearOfAnUndo() {
        Desk desk;
        desk.editor.changeValue(*desk.at({0}), text("Bob"));
        const PlistNodePtr more = desk.at({2});
        QMetaObject::Connection connection;
        connection =
            connect(&desk.document, &PlistDocument::treeChanged, this, [&desk, &connection, more] {
                disconnect(connection);
                desk.editor.rename(*more, "rest");
            });
        desk.undo.undo();
        // The edit is an entry of its own, and there is nothing to be done again behind it.
        QCOMPARE(desk.undo.undoCount(), 1);
        QCOMPARE(desk.undo.undoActionName(), QStringLiteral("Rename"));
        QCOMPARE(desk.undo.redoCount(), 0);
        QVERIFY(desk.undo.isModified());
        desk.undo.undo();
        QVERIFY(desk.root().value() == sample());
        QVERIFY(!desk.undo.isModified());
        desk.undo.redo();
        QVERIFY(desk.at({2})->key() == PlistString("rest"));
        QVERIFY(desk.at({0})->value() == text("Ada"));
    }

    // --- Without an undo manager ---

    void editsWithoutUndo() {
        PlistDocument document;
        document.apply({sample(), PlistFormat::xml});
        const QSignalSpy changed(&document, &PlistDocument::treeChanged);
        auto manager = std::make_unique<UndoManager>();
        const PlistEditor editor(document, manager.get());
        manager.reset();
        QVERIFY(editor.undoManager() == nullptr);
        const PlistNodePtr items = document.root().children()[1];
        editor.move(std::vector{items->children()[0]}, document.root(), 0);
        editor.sortKeys(document.root());
        editor.remove(std::vector{items});
        QCOMPARE(changed.count(), 3);
        QCOMPARE(TreeText::whole(document.root().value()),
                 QStringLiteral("{: 1, more: {b: 5, a: 6}, name: \"Ada\"}"));
    }

    // --- With an outline ---

    void keepsExpansionAndIdsOverUndo() {
        Desk desk;
        OutlineState outline;
        outline.rebuild(desk.root());
        connect(&desk.document, &PlistDocument::treeChanged, &outline,
                [&] { outline.rebuild(desk.root()); });
        const PlistNodePtr items = desk.at({1});
        outline.setExpanded(std::vector{items, desk.at({2})}, OutlineState::Expansion::expand,
                            OutlineState::Reach::nodeAlone);
        const QString before = TreeText::ofRows(outline);
        outline.select({items->id(), desk.at({1, 2})->id()});
        const QSignalSpy reset(&outline, &OutlineState::rowsReset);
        const QSignalSpy rows(&outline, &OutlineState::rowsChanged);
        desk.editor.move(std::vector{items}, *desk.at({2}), 0);
        QCOMPARE(outline.selection().size(), 2);
        desk.undo.undo();
        QCOMPARE(TreeText::ofRows(outline), before);
        QCOMPARE(outline.selection().size(), 2);
        desk.editor.changeType(*items, PlistType::string);
        desk.undo.undo();
        QCOMPARE(TreeText::ofRows(outline), before);
        // The rows of its items were away for a while.
        QCOMPARE(outline.selection(), NodeIdSet{items->id()});
        QCOMPARE(reset.count(), 0);
        QCOMPARE(rows.count(), 4);
    }
};

const RegisteredTest<PlistEditorTest> registered;
#include "PlistEditorTest.moc"
