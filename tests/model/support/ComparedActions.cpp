#include "tests/model/support/ComparedActions.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/TreeText.h"

namespace {

using Direction = DocumentActions::Direction;
using Kind = RandomOperation::Kind;
using Reach = OutlineState::Reach;

/// What users type: for each type something that fits and something that does not.
QString typedText(std::uint32_t choice) {
    constexpr std::array texts = {"5",      "-12.5", "abc", "", "true", "2001-01-01T00:00:07Z",
                                  "e\u0301"};
    return QString::fromUtf8(texts[choice % texts.size()]);
}

QString textOf(const ModelComparison::Known& item) {
    return QStringLiteral("#%1 (%2: %3)")
        .arg(item.item->name)
        .arg(QString::fromStdString(item.item->key), TreeText::ofValue(item.item->scalar));
}

}  // namespace

ComparedActions::Known ComparedActions::chosen(std::uint32_t choice) const {
    return comparison_.known()[choice % comparison_.known().size()];
}

ComparedActions::Known ComparedActions::chosenRow(std::uint32_t choice) const {
    const std::vector<ReferenceOutline::Row>& rows = referenceOutline_.rows();
    if (rows.empty()) {
        return chosen(choice);
    }
    const std::size_t row = choice % rows.size();
    return {referenceDocument_.root().find(rows[row].item), &actions_.outline().rows()[row].node()};
}

bool ComparedActions::mayGrow() const {
    // Enough for every case, and few enough to be compared again and again.
    constexpr std::size_t manyItems = 100;
    return referenceDocument_.root().count() < manyItems;
}

QString ComparedActions::perform(const RandomOperation& operation) {
    switch (operation.kind) {
        case Kind::addItem:
            actions_.addItem();
            reference_.addItem();
            return QStringLiteral("add an item");
        case Kind::duplicate:
            if (mayGrow()) {
                actions_.duplicate();
                reference_.duplicate();
            }
            return QStringLiteral("duplicate");
        case Kind::deleteSelected:
            actions_.deleteSelected();
            reference_.deleteSelected();
            return QStringLiteral("delete what is selected");
        case Kind::moveUp:
            actions_.moveSelected(Direction::up);
            reference_.moveUp();
            return QStringLiteral("move up");
        case Kind::moveDown:
            actions_.moveSelected(Direction::down);
            reference_.moveDown();
            return QStringLiteral("move down");
        case Kind::sortSelected:
            actions_.sortKeys();
            reference_.sortKeys();
            return QStringLiteral("sort keys");
        case Kind::typeText:
        case Kind::chooseType:
            return changeItem(operation);
        case Kind::copy:
        case Kind::paste:
        case Kind::drop:
            return transfer(operation);
        default:
            return changeRows(operation);
    }
}

QString ComparedActions::changeItem(const RandomOperation& operation) {
    const auto& choices = operation.choices;
    const Known item = chosen(choices[0]);
    if (operation.kind == Kind::typeText) {
        const QString text = typedText(choices[1]);
        QString description = QStringLiteral("type \"%1\" into %2").arg(text, textOf(item));
        const std::optional<QString> message = actions_.setValueFromText(*item.node, text);
        comparison_.require(message == reference_.setValueFromText(item.item->name, text),
                            "another message");
        return description;
    }
    constexpr PlistType types[] = {PlistType::array, PlistType::dictionary, PlistType::string};
    const PlistType type = types[choices[1] % std::size(types)];
    QString description = QStringLiteral("choose %1 for %2")
                              .arg(TreeText::ofValue(PlistValue::defaultValue(type)), textOf(item));
    actions_.changeType(*item.node, type);
    reference_.changeType(item.item->name, type);
    return description;
}

QString ComparedActions::changeRows(const RandomOperation& operation) {
    const bool wholeSubtree = operation.choices[0] % 4 == 0;
    const Reach reach = wholeSubtree ? Reach::wholeSubtree : Reach::nodeAlone;
    switch (operation.kind) {
        case Kind::selectAll:
            actions_.selectAll();
            reference_.selectAll();
            return QStringLiteral("select all");
        case Kind::expandSelected:
            actions_.expandSelected(reach);
            reference_.expandSelected(wholeSubtree);
            return QStringLiteral("expand what is selected");
        case Kind::collapseSelected:
            actions_.collapseSelected(reach);
            reference_.collapseSelected(wholeSubtree);
            return QStringLiteral("collapse what is selected");
        default:
            actions_.collapseAll();
            reference_.collapseAll();
            return QStringLiteral("collapse all");
    }
}

QString ComparedActions::transfer(const RandomOperation& operation) {
    switch (operation.kind) {
        case Kind::copy:
            clipboard_ = actions_.copy();
            referenceClipboard_ = reference_.copy();
            compareTransfers(clipboard_, referenceClipboard_);
            return QStringLiteral("copy");
        case Kind::paste:
            if (mayGrow()) {
                actions_.paste(clipboard_);
                reference_.paste(referenceClipboard_);
            }
            return QStringLiteral("paste");
        default:
            return drop(operation);
    }
}

QString ComparedActions::drop(const RandomOperation& operation) {
    const auto& choices = operation.choices;
    std::vector<PlistTransfer> transfers;
    std::vector<ReferenceActions::Transfer> expected;
    QString description = QStringLiteral("drop");
    for (std::uint32_t i = 0; i < 1 + choices[0] % 2; ++i) {
        const Known item = chosenRow(choices[1 + i]);
        transfers.push_back(actions_.dragItems(*item.node));
        expected.push_back(reference_.dragItems(item.item->name));
        compareTransfers(transfers.back(), expected.back());
        description += QLatin1Char(' ') + textOf(item);
    }
    // Sometimes one of them comes from elsewhere, without ids.
    if (choices[3] % 8 == 0) {
        transfers.back().sourceIDs.clear();
        expected.back().sources.clear();
        description += QStringLiteral(" as a copy");
    }
    const auto rows = static_cast<std::uint32_t>(referenceOutline_.rows().size());
    const qint64 position = static_cast<qint64>(choices[4] % (rows + 3)) - 1;
    const bool isFromHere = choices[5] % 4 != 0;
    if (mayGrow()) {
        actions_.drop(transfers, position,
                      isFromHere ? DocumentActions::DragOrigin::thisProcess
                                 : DocumentActions::DragOrigin::elsewhere);
        reference_.drop(expected, position, isFromHere);
    }
    return description + QStringLiteral(" below %1 rows").arg(position);
}

void ComparedActions::compareTransfers(const PlistTransfer& transfer,
                                       const ReferenceActions::Transfer& expected) {
    comparison_.require(transfer.entries.size() == expected.entries.size() &&
                            transfer.sourceIDs.size() == expected.sources.size(),
                        "another number of copied items");
    for (std::size_t i = 0; i < expected.entries.size() && !comparison_.difference(); ++i) {
        comparison_.require(transfer.entries[i].key.view() == expected.entries[i].key.view(),
                            "another copied key");
        comparison_.require(
            referenceDocument_.root().find(expected.sources[i])->is(transfer.entries[i].value),
            "another copied value");
        comparison_.require(comparison_.nameOf(transfer.sourceIDs[i]) == expected.sources[i],
                            "another source of a copied item");
    }
}
