#include "tests/model/support/ModelComparison.h"

#include <cstddef>
#include <span>
#include <string>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/ReferenceDocument.h"
#include "tests/model/support/ReferenceOutline.h"

std::optional<ModelComparison::Name> ModelComparison::nameOf(NodeId id) const {
    const auto found = names_.find(id);
    return found == names_.end() ? std::nullopt : std::optional(found->second);
}

void ModelComparison::compareDocuments(PlistDocument& document,
                                       const ReferenceDocument& reference) {
    require(reference.root().is(document.root().value()), "another value");
    require(document.format() == reference.content().format, "another format");
    require(document.wasReadOnlyFormat() == reference.content().wasReadOnlyFormat,
            "another notice of the format");
    require(document.revision() == reference.revision(), "another revision");
    known_.clear();
    compareNode({&reference.root(), &document.root()}, nullptr, 0);
}

void ModelComparison::compareNode(const Known& pair, const PlistNode* parent, qint64 index) {
    const ReferenceItem& item = *pair.item;
    PlistNode& node = *pair.node;
    known_.push_back(pair);
    require(ids_.try_emplace(item.name, node.id()).first->second == node.id() &&
                names_.try_emplace(node.id(), item.name).first->second == item.name,
            "another node");
    require(node.key().view() == item.key, "another key");
    require(ReferenceText::areIdentical(node.scalar(), item.scalar), "another scalar or type");
    require(node.parent() == parent, "another parent");
    require(parent == nullptr || node.indexInParent() == index, "another place");
    require(node.childCount() == static_cast<qint64>(item.children.size()), "another child count");
    if (difference_) {
        return;
    }
    if (makesAllNodes_ || node.isMaterialized()) {
        const std::span<const PlistNodePtr> children = node.children();
        for (std::size_t i = 0; i < children.size(); ++i) {
            compareNode({&item.children[i], children[i].get()}, &node, static_cast<qint64>(i));
        }
    }
}

void ModelComparison::compareHistories(const UndoManager& undo,
                                       const ReferenceDocument& reference) {
    require(undo.undoCount() == static_cast<qsizetype>(reference.undoCount()),
            "another number of steps to undo");
    require(undo.redoCount() == static_cast<qsizetype>(reference.redoCount()),
            "another number of steps to redo");
    require(undo.undoActionName() == reference.undoName(), "another name of the undo");
    require(undo.redoActionName() == reference.redoName(), "another name of the redo");
    require(undo.isModified() == reference.isModified(), "modified differs");
}

void ModelComparison::compareOutlines(const OutlineState& outline,
                                      const ReferenceOutline& reference) {
    compareRows(outline, reference);
    compareSelection(outline, reference);
}

void ModelComparison::compareRows(const OutlineState& outline, const ReferenceOutline& reference) {
    const std::vector<OutlineState::Row>& rows = outline.rows();
    const std::vector<ReferenceOutline::Row>& expected = reference.rows();
    require(rows.size() == expected.size(), "another number of rows");
    for (std::size_t i = 0; i < rows.size() && !difference_; ++i) {
        const OutlineState::Row& row = rows[i];
        const std::optional<Name> name = nameOf(row.nodeId());
        require(name && ReferenceOutline::Row{.item = *name,
                                              .depth = static_cast<std::size_t>(row.depth()),
                                              .index = static_cast<std::size_t>(row.index()),
                                              .parentType = row.parentType(),
                                              .isDuplicateKey = row.isDuplicateKey(),
                                              .isExpanded = row.isExpanded()} == expected[i],
                "another row");
        require(outline.rowOf(row.node()) == static_cast<int>(i), "another row of the node");
        require(outline.hintedRowOf(row.node()) == static_cast<int>(i), "another hint of the row");
        if (difference_) {
            *difference_ +=
                QStringLiteral("\n%1 should be\n").arg(i) + ReferenceOutline::text(expected[i]);
        }
    }
}

void ModelComparison::compareSelection(const OutlineState& outline,
                                       const ReferenceOutline& reference) {
    require(outline.selection().size() == static_cast<qsizetype>(reference.selection().size()),
            "another number of selected nodes");
    for (const NodeId id : outline.selection()) {
        const std::optional<Name> name = nameOf(id);
        require(name && reference.selection().contains(*name), "another node is selected");
    }
    const std::optional<OutlineState::EditingField>& field = outline.editing();
    require(field.has_value() == reference.editing().has_value() &&
                (!field ||
                 ReferenceOutline::Field{.item = nameOf(field->nodeId).value_or(0),
                                         .isKey = field->column == OutlineState::Column::key} ==
                     reference.editing()),
            "another field is being edited");
    for (const Known& item : known_) {
        require(outline.isExpanded(item.node->id()) == reference.isExpanded(item.item->name),
                "another node is expanded");
    }
}
