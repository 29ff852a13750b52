#include "app/model/outline/OutlineChanges.h"

#include <algorithm>
#include <utility>

#include "app/model/tree/PlistNode.h"

namespace {

/// The nodes from the topmost one down to `node`.
std::vector<PlistNode*> pathTo(PlistNode& node) {
    std::vector<PlistNode*> path;
    for (PlistNode* above = &node; above != nullptr; above = above->parent()) {
        path.push_back(above);
    }
    std::reverse(path.begin(), path.end());
    return path;
}

/// Whether the path begins at the root and leads through expanded containers only.
bool isShown(const std::vector<PlistNode*>& path, const PlistNode& root,
             const NodeIdSet& expanded) {
    return path.front() == &root &&
           std::all_of(path.begin(), path.end() - 1, [&expanded](const PlistNode* node) {
               return expanded.contains(node->id());
           });
}

}  // namespace

void OutlineChanges::add(PlistNode& node) {
    run_.reset();
    if (nodes_.size() < limit) {
        nodes_.emplace_back(&node);
    } else {
        areMany_ = true;
    }
}

void OutlineChanges::add(PlistNode& node, PlistNodeChanges changes,
                         std::optional<PlistNodeRun> run) {
    // Another key may make the keys of siblings duplicates.
    PlistNode* parent = changes.testFlag(PlistNodeChange::key) ? node.parent() : nullptr;
    add(parent != nullptr && parent->type() == PlistType::dictionary ? *parent : node);
    run_ = run;
}

void OutlineChanges::clear() {
    nodes_.clear();
    run_.reset();
    areMany_ = false;
}

PlistNode* OutlineChanges::top(PlistNode& root, const NodeIdSet& expanded) const {
    if (areMany_) {
        return &root;
    }
    std::vector<PlistNode*> common;
    for (const PlistNodePtr& node : nodes_) {
        std::vector<PlistNode*> path = pathTo(*node);
        if (!isShown(path, root, expanded)) {
            continue;
        }
        if (common.empty()) {
            common = std::move(path);
        } else {
            const auto [end, other] =
                std::mismatch(common.begin(), common.end(), path.begin(), path.end());
            common.erase(end, common.end());
        }
    }
    return common.empty() ? nullptr : common.back();
}
