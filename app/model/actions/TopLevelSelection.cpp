#include "app/model/actions/TopLevelSelection.h"

#include <algorithm>

#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNode.h"

namespace {

bool hasSelectedAncestor(const PlistNode& node, const NodeIdSet& selection) {
    const PlistNode* above = node.parent();
    while (above != nullptr && !selection.contains(above->id())) {
        above = above->parent();
    }
    return above != nullptr;
}

}  // namespace

std::vector<PlistNodePtr> TopLevelSelection::nodes(const OutlineState& outline) {
    std::vector<PlistNodePtr> nodes;
    for (const OutlineRow& row : outline.selectedRows()) {
        PlistNode& node = row.node();
        if (node.parent() != nullptr && !hasSelectedAncestor(node, outline.selection())) {
            nodes.emplace_back(&node);
        }
    }
    return nodes;
}

bool TopLevelSelection::hasNodes(const OutlineState& outline) {
    const NodeIdSet& selection = outline.selection();
    if (selection.isEmpty()) {
        return false;
    }
    // The first selected row has no selected row above it, so it counts unless it is the root.
    const auto first = std::ranges::find_if(outline.rows(), [&selection](const OutlineRow& row) {
        return selection.contains(row.nodeId());
    });
    return first != outline.rows().end() && first->parentType().has_value();
}
