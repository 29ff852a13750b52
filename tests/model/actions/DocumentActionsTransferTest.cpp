#include <QTest>
#include <cstdint>
#include <memory>
#include <vector>

#include "PlistCore/value/PlistCell.h"
#include "app/model/actions/DocumentActions.h"
#include "app/model/actions/PlistTransfer.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/ActionsDesk.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

using Origin = DocumentActions::DragOrigin;
using Representation = PlistTransfer::Representation;

PlistValue number(int value) {
    return PlistValue::integer(value);
}

/// {name: 0, items: [1, 2], more: {b: 5, a: 6}}, all expanded. Its rows are root, name, items, 1,
/// 2, more, b, a.
std::unique_ptr<ActionsDesk> openSample() {
    auto desk = std::make_unique<ActionsDesk>(tree("{name: 0, items: [1, 2], more: {b: 5, a: 6}}"));
    desk->expand({{1}, {2}});
    return desk;
}

QString textOf(const PlistTransfer& transfer) {
    QStringList parts;
    for (const PlistEntry& entry : transfer.entries) {
        const std::string_view key = entry.key.view();
        parts += QString::fromUtf8(key.data(), qsizetype(key.size())) + QLatin1Char('=') +
                 TreeText::whole(entry.value);
    }
    return parts.join(QLatin1String(", "));
}

PlistTransfer foreign(std::vector<PlistEntry> entries) {
    return {std::move(entries), {}};
}

}  // namespace

/// Copying, pasting, dragging and dropping.
class DocumentActionsTransferTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { desk_ = openSample(); }
    void cleanup() { desk_.reset(); }

    // --- Copying ---

    void copiesWithKeysOutOfDictionaries() {
        desk_->select({{2, 1}, {0}});
        const PlistTransfer transfer = desk_->actions.copy();
        QCOMPARE(textOf(transfer), QStringLiteral("name=0, a=6"));
        QCOMPARE(transfer.sourceIDs,
                 (std::vector<NodeId>{desk_->at({0})->id(), desk_->at({2, 1})->id()}));
    }

    void copiesMixturesWithoutKeys() {
        desk_->select({{0}, {1, 1}, {2}});
        QCOMPARE(textOf(desk_->actions.copy()), QStringLiteral("=0, =2, ={b: 5, a: 6}"));
    }

    void copiesATreeOnce() {
        desk_->select({{2}, {2, 0}});
        QCOMPARE(textOf(desk_->actions.copy()), QStringLiteral("more={b: 5, a: 6}"));
        desk_->select({{}, {0}});
        QCOMPARE(textOf(desk_->actions.copy()), QString());
        desk_->actions.selectAll();
        QCOMPARE(textOf(desk_->actions.copy()),
                 QStringLiteral("name=0, items=[1, 2], more={b: 5, a: 6}"));
    }

    void keepsCopiesWithoutTheDocument() {
        desk_->select({{2}});
        const PlistTransfer transfer = desk_->actions.copy();
        desk_.reset();
        QCOMPARE(textOf(PlistTransfer::imported(Representation::xml,
                                                transfer.exported(Representation::xml))),
                 QStringLiteral("more={b: 5, a: 6}"));
    }

    /// What waits on the clipboard holds no large file in memory.
    void letsGoOfTheFileInCopies() {
        const std::vector<PlistValue> items = {
            PlistValue::string("a text that is too long to lie in place"),
            PlistValue::data(std::vector<std::uint8_t>(10'000'000))};
        const PlistBytes bytes = PlistCodec::write(PlistValue::array(items), PlistFormat::binary);
        ActionsDesk desk(PlistCodec::read(bytes.span()).root);
        QVERIFY(desk.at({0})->scalar().cell().has(plist::detail::PlistCell::inArena));
        desk.select({{0}});
        const PlistTransfer transfer = desk.actions.copy();
        QVERIFY(!transfer.entries.front().value.cell().has(plist::detail::PlistCell::inArena));
        QVERIFY(transfer.entries.front().value == items.front());
    }

    // --- Pasting ---

    void pastesIntoADictionary() {
        desk_->select({{2}});
        desk_->actions.paste(foreign(
            {{"a", number(7)}, {"", number(8)}, {"a", number(9)}, {"New Item", number(10)}}));
        QCOMPARE(desk_->rows(),
                 ActionsDesk::lines({": dictionary [-]", "  0 name: 0", "  1 items: array [-]",
                                     "    0 1", "    1 2", "  2 more: dictionary [-]",
                                     "    0 a 2: 7 *", "    1 New Item: 8 *", "    2 a 3: 9 *",
                                     "    3 New Item 2: 10 *", "    4 b: 5", "    5 a: 6"}));
        QCOMPARE(desk_->history(), QStringLiteral("1 Add Item, +1"));
        QCOMPARE(desk_->backAndForth(), QString());
    }

    void pastesIntoAnArrayKeepingHiddenKeys() {
        desk_->select({{1, 0}});
        desk_->actions.paste(foreign({{"x", number(7)}, {"x", number(8)}}));
        QCOMPARE(desk_->value(),
                 QStringLiteral("{name: 0, items: [1, 7, 8, 2], more: {b: 5, a: 6}}"));
        QVERIFY(desk_->at({1, 1})->key() == "x");
        QVERIFY(desk_->at({1, 2})->key() == "x");
    }

    void pastesIntoACollapsedRoot() {
        desk_->select({{}});
        desk_->actions.collapseSelected(OutlineState::Reach::nodeAlone);
        desk_->actions.paste(foreign({{"", number(7)}}));
        QVERIFY(desk_->outline.isExpanded(desk_->document.root().id()));
        QCOMPARE(desk_->outline.selection(), NodeIdSet{desk_->at({0})->id()});
    }

    void pastesNothing() {
        desk_->select({{0}});
        desk_->actions.paste({});
        QCOMPARE(desk_->outline.selection(), NodeIdSet{desk_->at({0})->id()});
        ActionsDesk scalar(number(1));
        scalar.actions.paste(foreign({{"", number(7)}}));
        QCOMPARE(desk_->history() + scalar.history(), QStringLiteral("0 , +00 , +0"));
    }

    void copiesAndPastesTwice() {
        desk_->select({{2}});
        const PlistTransfer transfer = desk_->actions.copy();
        desk_->select({{0}});
        desk_->actions.paste(transfer);
        desk_->actions.paste(transfer);
        QCOMPARE(desk_->value(),
                 QStringLiteral("{name: 0, more 2: {b: 5, a: 6}, more 3: {b: 5, a: 6}, "
                                "items: [1, 2], more: {b: 5, a: 6}}"));
        QCOMPARE(desk_->backAndForth(), QString());
    }

    /// What can be read is 512 containers deep, and the list around copied items makes it one more:
    /// there the own form fails with a message, and XML serves.
    void copiesAndPastesTheDeepest() {
        PlistValue deep = tree("[1]");
        for (int i = 1; i < 511; ++i) {
            deep = PlistValue::array({deep});
        }
        ActionsDesk desk(PlistValue::dictionary({{"deep", deep}}));
        desk.select({{0}});
        for (const Representation representation : PlistTransfer::representations) {
            const QByteArray bytes = desk.actions.copy().exported(representation);
            desk.actions.paste(PlistTransfer::imported(representation, bytes));
        }
        QCOMPARE(desk.document.root().childCount(), 4);
        ActionsDesk list(PlistValue::array({PlistValue::array({deep})}));
        list.select({{0}});
        const PlistTransfer transfer = list.actions.copy();
        const QByteArray bytes = transfer.exported(Representation::nodes);
        QVERIFY_THROWS_EXCEPTION(PlistError, PlistTransfer::imported(Representation::nodes, bytes));
        list.actions.paste(
            PlistTransfer::imported(Representation::xml, transfer.exported(Representation::xml)));
        QCOMPARE(list.document.root().childCount(), 2);
    }

    // --- Dragging ---

    void dragsTheSelectionOrTheRow() {
        desk_->select({{0}, {1, 1}});
        QCOMPARE(textOf(desk_->actions.dragItems(*desk_->at({0}))), QStringLiteral("=0, =2"));
        const PlistTransfer other = desk_->actions.dragItems(*desk_->at({2}));
        QCOMPARE(textOf(other), QStringLiteral("more={b: 5, a: 6}"));
        QCOMPARE(other.sourceIDs, std::vector<NodeId>{desk_->at({2})->id()});
    }

    // --- Dropping ---

    void movesItsOwnNodes() {
        const NodeId id = desk_->at({2, 0})->id();
        desk_->select({{2, 0}, {0}});
        const std::vector<PlistTransfer> transfers = {desk_->actions.dragItems(*desk_->at({0}))};
        desk_->actions.drop(transfers, 4, Origin::thisProcess);
        QCOMPARE(desk_->rows(), ActionsDesk::lines({": dictionary [-]", "  0 items: array [-]",
                                                    "    0 1", "    1 0 *", "    2 5 *", "    3 2",
                                                    "  1 more: dictionary [-]", "    0 a: 6"}));
        QCOMPARE(desk_->at({0, 2})->id(), id);
        QCOMPARE(desk_->history(), QStringLiteral("1 Move, +2"));
        QCOMPARE(desk_->backAndForth(), QString());
    }

    void joinsTransfers() {
        const std::vector<PlistTransfer> transfers = {desk_->actions.dragItems(*desk_->at({2, 1})),
                                                      desk_->actions.dragItems(*desk_->at({0}))};
        desk_->actions.drop(transfers, 3, Origin::thisProcess);
        QCOMPARE(desk_->value(), QStringLiteral("{items: [6, 0, 1, 2], more: {b: 5}}"));
    }

    void numbersTheKeysOfMovedNodes() {
        desk_->actions.rename(*desk_->at({0}), QStringLiteral("a"));
        const PlistTransfer transfer = desk_->actions.dragItems(*desk_->at({0}));
        desk_->actions.drop({&transfer, 1}, 6, Origin::thisProcess);
        QCOMPARE(desk_->value(), QStringLiteral("{items: [1, 2], more: {a 2: 0, b: 5, a: 6}}"));
        QCOMPARE(desk_->backAndForth(), QString());
    }

    void movesToWhereTheNodesAre() {
        const PlistTransfer transfer = desk_->actions.dragItems(*desk_->at({0}));
        desk_->actions.drop({&transfer, 1}, 1, Origin::thisProcess);
        QCOMPARE(desk_->history(), QStringLiteral("1 Move, +2"));
        QCOMPARE(desk_->backAndForth(), QString());
    }

    void movesNothingIntoItself() {
        desk_->select({{0}});
        const PlistTransfer transfer = desk_->actions.dragItems(*desk_->at({2}));
        desk_->actions.drop({&transfer, 1}, 7, Origin::thisProcess);
        const PlistTransfer root = desk_->actions.dragItems(desk_->document.root());
        desk_->actions.drop({&root, 1}, 7, Origin::thisProcess);
        QCOMPARE(desk_->history(), QStringLiteral("0 , +0"));
        QCOMPARE(desk_->outline.selection(), NodeIdSet{desk_->at({0})->id()});
    }

    void insertsWhatComesFromElsewhere() {
        const PlistTransfer transfer = desk_->actions.dragItems(*desk_->at({0}));
        // The numbers may name nodes here by chance only.
        desk_->actions.drop({&transfer, 1}, 3, Origin::elsewhere);
        QCOMPARE(desk_->value(), QStringLiteral("{name: 0, items: [0, 1, 2], more: {b: 5, a: 6}}"));
        QCOMPARE(desk_->outline.selection(), NodeIdSet{desk_->at({1, 0})->id()});
        QCOMPARE(desk_->history(), QStringLiteral("1 Add Item, +1"));
    }

    void insertsFromAnotherWindow() {
        const auto other = openSample();
        const PlistTransfer transfer = other->actions.dragItems(*other->at({0}));
        desk_->actions.drop({&transfer, 1}, 0, Origin::thisProcess);
        QCOMPARE(desk_->value(), QStringLiteral("{name 2: 0, name: 0, items: [1, 2], "
                                                "more: {b: 5, a: 6}}"));
        QCOMPARE(other->history(), QStringLiteral("0 , +0"));
    }

    void insertsWhatHasNoRowAnyMore() {
        const PlistTransfer transfer = desk_->actions.dragItems(*desk_->at({2, 0}));
        desk_->outline.setExpanded(*desk_->at({2}), OutlineState::Expansion::collapse,
                                   OutlineState::Reach::nodeAlone);
        desk_->actions.drop({&transfer, 1}, 0, Origin::thisProcess);
        QCOMPARE(desk_->value(), QStringLiteral("{b: 5, name: 0, items: [1, 2], "
                                                "more: {b: 5, a: 6}}"));
    }

    void insertsAllIfOneComesFromElsewhere() {
        const std::vector<PlistTransfer> transfers = {desk_->actions.dragItems(*desk_->at({0})),
                                                      foreign({{"x", number(7)}})};
        desk_->actions.drop(transfers, 3, Origin::thisProcess);
        QCOMPARE(desk_->value(),
                 QStringLiteral("{name: 0, items: [0, 7, 1, 2], more: {b: 5, a: 6}}"));
        QCOMPARE(desk_->outline.selection().size(), 2);
        QCOMPARE(desk_->history(), QStringLiteral("1 Add Item, +1"));
    }

    void dropsNothing() {
        desk_->actions.drop({}, 3, Origin::thisProcess);
        const PlistTransfer empty;
        desk_->actions.drop({&empty, 1}, 3, Origin::thisProcess);
        ActionsDesk scalar(number(1));
        const PlistTransfer transfer = foreign({{"x", number(7)}});
        scalar.actions.drop({&transfer, 1}, 1, Origin::elsewhere);
        QCOMPARE(desk_->history() + scalar.history(), QStringLiteral("0 , +00 , +0"));
    }

private:
    std::unique_ptr<ActionsDesk> desk_;
};

const RegisteredTest<DocumentActionsTransferTest> registered;
#include "DocumentActionsTransferTest.moc"
