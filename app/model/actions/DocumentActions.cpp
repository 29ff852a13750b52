#include "app/model/actions/DocumentActions.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

#include "app/model/actions/InsertionPoint.h"
#include "app/model/actions/PlistTransfer.h"
#include "app/model/actions/TransferNodes.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/UniqueKeys.h"
#include "app/model/runtime/MainThread.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/model/tree/TypeName.h"

namespace {

using Column = OutlineState::Column;
using Field = OutlineState::EditingField;
using Row = OutlineState::Row;

std::vector<PlistNodePtr> containersOf(const std::vector<Row>& rows) {
    std::vector<PlistNodePtr> containers;
    for (const Row& row : rows) {
        if (row.node().isContainer()) {
            containers.emplace_back(&row.node());
        }
    }
    return containers;
}

bool hasSelectedAncestor(const PlistNode& node, const NodeIdSet& selection) {
    const PlistNode* above = node.parent();
    while (above != nullptr && !selection.contains(above->id())) {
        above = above->parent();
    }
    return above != nullptr;
}

/// Whether the row is a container that a collapse has something to do for: with a filter, which
/// shows all containers open, every one.
bool canCollapse(const OutlineState& outline, const Row& row) {
    return row.node().isContainer() &&
           (outline.filter().has_value() || outline.isExpanded(row.nodeId()));
}

/// Copies of the nodes, with keys of their own where they get into dictionaries.
std::vector<PlistEditor::Copy> copiesOf(std::span<const PlistNodePtr> nodes) {
    std::unordered_map<const PlistNode*, UniqueKeys> keysIn;
    std::vector<PlistEditor::Copy> copies;
    for (const PlistNodePtr& node : nodes) {
        PlistString key;
        if (node->isEntry()) {
            PlistNode& parent = *node->parent();
            UniqueKeys& keys = keysIn.try_emplace(&parent, parent.children()).first->second;
            key = keys.take(std::string(node->key().view()) + " copy");
        }
        copies.push_back({node, PlistNode::create(std::move(key), node->value())});
    }
    return copies;
}

}  // namespace

// --- What the selection allows ---

std::vector<PlistNodePtr> DocumentActions::selectedTopLevelNodes() const {
    std::vector<PlistNodePtr> nodes;
    for (const Row& row : outline_->selectedRows()) {
        PlistNode& node = row.node();
        if (node.parent() != nullptr && !hasSelectedAncestor(node, outline_->selection())) {
            nodes.emplace_back(&node);
        }
    }
    return nodes;
}

bool DocumentActions::hasSelectedTopLevelNodes() const {
    const NodeIdSet& selection = outline_->selection();
    if (selection.isEmpty()) {
        return false;
    }
    // The first selected row has no selected row above it, so it counts unless it is the root.
    const auto first = std::ranges::find_if(outline_->rows(), [&selection](const Row& row) {
        return selection.contains(row.nodeId());
    });
    return first != outline_->rows().end() && first->parentType().has_value();
}

bool DocumentActions::canAddItem() const {
    return document().root().isContainer();
}

PlistNode* DocumentActions::sortTarget() const {
    const std::vector<Row> rows = outline_->selectedRows();
    PlistNode* node = rows.empty() ? &document().root() : &rows.front().node();
    if (node->type() != PlistType::dictionary) {
        node = node->parent();
    }
    return node != nullptr && node->type() == PlistType::dictionary ? node : nullptr;
}

bool DocumentActions::canEditKey(const PlistNode& node) {
    return node.isEntry();
}

bool DocumentActions::canEditValue(const PlistNode& node) {
    const PlistType type = node.type();
    return type == PlistType::string || type == PlistType::integer || type == PlistType::real;
}

// --- Items ---

void DocumentActions::addItem() const {
    MainThread::check();
    const auto point = InsertionPoint::forNewItems(*outline_, document().root());
    if (!point) {
        return;
    }
    const bool hasKey = point->container->type() == PlistType::dictionary;
    const PlistNodePtr node = PlistNode::create(
        hasKey ? UniqueKeys(point->container->children()).take(UniqueKeys::newItem) : PlistString(),
        PlistValue::defaultValue(PlistType::string));
    const PlistNodePtr nodes[] = {node};
    openFor(*point->container);
    editor_.add(nodes, *point->container, point->index);
    selectAlone(nodes);
    outline_->setEditing(Field{node->id(), hasKey ? Column::key : Column::value});
}

void DocumentActions::duplicate() const {
    MainThread::check();
    const std::vector<PlistEditor::Copy> copies = copiesOf(selectedTopLevelNodes());
    if (copies.empty()) {
        return;
    }
    editor_.addCopies(copies);
    NodeIdSet ids;
    for (const PlistEditor::Copy& copy : copies) {
        ids.insert(copy.copy->id());
    }
    outline_->select(ids);
}

void DocumentActions::deleteSelected() const {
    MainThread::check();
    const std::vector<PlistNodePtr> nodes = selectedTopLevelNodes();
    if (nodes.empty()) {
        return;
    }
    // Without the root, the first of them is the first selected row.
    const std::optional<int> row = outline_->rowOf(*nodes.front());
    editor_.remove(nodes);
    selectRow(row.value_or(0));
}

void DocumentActions::moveSelected(Direction direction) const {
    MainThread::check();
    const std::vector<PlistNodePtr> nodes = selectedTopLevelNodes();
    if (nodes.empty()) {
        return;
    }
    PlistNode& parent = *nodes.front()->parent();
    if (!std::ranges::all_of(
            nodes, [&parent](const PlistNodePtr& node) { return node->parent() == &parent; })) {
        return;
    }
    // Rows stand in the order of their nodes.
    const qint64 first = *nodes.front()->indexInParent();
    const qint64 last = *nodes.back()->indexInParent();
    if (direction == Direction::up && first >= 1) {
        editor_.move(nodes, parent, first - 1);
    } else if (direction == Direction::down && last < parent.childCount() - 1) {
        editor_.move(nodes, parent, last + 2);
    }
}

void DocumentActions::sortKeys() const {
    if (PlistNode* node = sortTarget()) {
        editor_.sortKeys(*node);
    }
}

// --- One item ---

std::optional<QString> DocumentActions::rename(PlistNode& node, const QString& key) const {
    const std::optional<PlistEditor::EditError> error = editor_.rename(node, key.toStdString());
    return error ? std::optional(error->message()) : std::nullopt;
}

std::optional<QString> DocumentActions::setValueFromText(PlistNode& node,
                                                         const QString& text) const {
    const std::optional<PlistValue> value = PlistText::value(text.toStdString(), node.type());
    if (value) {
        editor_.changeValue(node, *value);
        return std::nullopt;
    }
    return QCoreApplication::translate("DocumentActions", "“%1” is not a valid %2.")
        .arg(text, TypeName::of(node.type()));
}

void DocumentActions::changeValue(PlistNode& node, const PlistValue& value) const {
    editor_.changeValue(node, value);
}

void DocumentActions::changeType(PlistNode& node, PlistType type) const {
    const bool expands = isContainer(type) && !outline_->isExpanded(node.id());
    if (expands && node.type() == type) {
        outline_->setExpanded(node, OutlineState::Expansion::expand,
                              OutlineState::Reach::nodeAlone);
        return;
    }
    if (expands) {
        outline_->expandWithNextRebuild(node);
    }
    editor_.changeType(node, type);
}

void DocumentActions::changeFormat(PlistFormat format) const {
    editor_.changeFormat(format);
}

// --- Editing in place ---

void DocumentActions::beginEditing(std::optional<Column> column) const {
    const std::vector<Row> rows = outline_->selectedRows();
    if (rows.empty()) {
        return;
    }
    const PlistNode& node = rows.front().node();
    const bool prefersKey = column == Column::key;
    const bool mayEditKey = column != Column::value && canEditKey(node);
    if (canEditValue(node) && !(prefersKey && mayEditKey)) {
        editLater({node.id(), Column::value});
    } else if (mayEditKey) {
        editLater({node.id(), Column::key});
    }
}

void DocumentActions::moveOnFromKey(const PlistNode& node) const {
    if (canEditValue(node)) {
        editLater({node.id(), Column::value});
    } else {
        outline_->setEditing(std::nullopt);
    }
}

void DocumentActions::editLater(Field field) const {
    outline_->setEditing(std::nullopt);
    // The outline as context: if it goes before its turn comes, the call goes with it.
    const auto edit = [outline = outline_, field] {
        // An edit in between may have taken the row away.
        if (outline->rowForId(field.nodeId)) {
            outline->setEditing(field);
        }
    };
    QMetaObject::invokeMethod(outline_, edit, Qt::QueuedConnection);
}

// --- Selection and expansion ---

void DocumentActions::selectAll() const {
    MainThread::check();
    NodeIdSet ids;
    for (const Row& row : outline_->rows()) {
        if (row.parentType()) {
            ids.insert(row.nodeId());
        }
    }
    outline_->select(ids);
}

void DocumentActions::selectAlone(std::span<const PlistNodePtr> nodes) const {
    NodeIdSet ids;
    for (const PlistNodePtr& node : nodes) {
        ids.insert(node->id());
    }
    outline_->select(ids);
}

void DocumentActions::selectRow(int row) const {
    const std::vector<Row>& rows = outline_->rows();
    if (!rows.empty()) {
        const std::size_t last = rows.size() - 1;
        outline_->select({rows[std::min(static_cast<std::size_t>(row), last)].nodeId()});
    }
}

/// Has a container and all that is above it open when the rows are made for what is added to it.
void DocumentActions::openFor(PlistNode& container) const {
    for (PlistNode* node = &container; node != nullptr; node = node->parent()) {
        outline_->expandWithNextRebuild(*node);
    }
}

OutlineState::ExpandResult DocumentActions::expandSelected(OutlineState::Reach reach) const {
    const std::vector<PlistNodePtr> containers = containersOf(outline_->selectedRows());
    return outline_->setExpanded(containers, OutlineState::Expansion::expand, reach);
}

void DocumentActions::collapseSelected(OutlineState::Reach reach) const {
    const std::vector<Row> rows = outline_->selectedRows();
    if (reach == OutlineState::Reach::nodeAlone && rows.size() == 1 &&
        !canCollapse(*outline_, rows.front())) {
        if (const PlistNode* parent = rows.front().node().parent()) {
            outline_->select({parent->id()});
        }
        return;
    }
    outline_->setExpanded(containersOf(rows), OutlineState::Expansion::collapse, reach);
}

OutlineState::ExpandResult DocumentActions::expandAll() const {
    return outline_->setExpanded(document().root(), OutlineState::Expansion::expand,
                                 OutlineState::Reach::wholeSubtree);
}

void DocumentActions::collapseAll() const {
    outline_->collapseAll();
}

// --- Copies ---

PlistTransfer DocumentActions::copy() const {
    PlistTransfer transfer = TransferNodes::copied(selectedTopLevelNodes());
    transfer.detach();
    return transfer;
}

PlistTransfer DocumentActions::dragItems(PlistNode& node) const {
    if (outline_->selection().contains(node.id())) {
        return TransferNodes::copied(selectedTopLevelNodes());
    }
    const PlistNodePtr nodes[] = {PlistNodePtr(&node)};
    return TransferNodes::copied(nodes);
}

void DocumentActions::paste(const PlistTransfer& transfer) const {
    MainThread::check();
    if (const auto point = InsertionPoint::forNewItems(*outline_, document().root())) {
        insertEntries(transfer.entries, *point);
    }
}

void DocumentActions::insertEntries(std::span<const PlistEntry> entries,
                                    const InsertionPoint& point) const {
    if (entries.empty()) {
        return;
    }
    const std::vector<PlistNodePtr> nodes = TransferNodes::made(entries, *point.container);
    openFor(*point.container);
    editor_.add(nodes, *point.container, point.index);
    selectAlone(nodes);
}

void DocumentActions::drop(std::span<const PlistTransfer> transfers, qint64 position,
                           DragOrigin origin) const {
    MainThread::check();
    const auto point = InsertionPoint::forDrop(*outline_, document().root(), position);
    if (!point) {
        return;
    }
    const PlistTransfer all = TransferNodes::joined(transfers);
    const std::vector<PlistNodePtr> nodes = origin == DragOrigin::thisProcess
                                                ? TransferNodes::shown(all, *outline_)
                                                : std::vector<PlistNodePtr>();
    if (nodes.empty()) {
        insertEntries(all.entries, *point);
        return;
    }
    const std::vector<PlistNodePtr> moved = editor_.move(nodes, *point->container, point->index);
    if (!moved.empty()) {
        selectAlone(moved);
    }
}
