#include "app/model/outline/OutlineWalk.h"

#include <utility>

#include "app/model/tree/PlistNode.h"

namespace {

constexpr std::size_t sixteenth = 16;
constexpr std::size_t fewRows = 64;

}  // namespace

std::vector<OutlineRow> OutlineWalk::rows(PlistNode& root, std::size_t expectedCount) {
    // Growing would copy all rows; room that stays unused costs nothing.
    rows_.reserve(expectedCount + expectedCount / sixteenth + fewRows);
    if (isShown(root)) {
        addRoot(root);
    }
    addOpenContainers();
    return std::move(rows_);
}

std::vector<OutlineRow> OutlineWalk::segment(const OutlineRow& top, std::size_t number) {
    firstRow_ = number;
    PlistNode& node = top.node();
    const auto depth = static_cast<std::uint32_t>(top.depth());
    const auto index = static_cast<std::uint32_t>(top.index());
    const bool isExpanded = isOpen(node);
    rows_.reserve(isExpanded ? static_cast<std::size_t>(node.childCount()) + fewRows : 1);
    rows_.emplace_back(node, node.id(), depth, index, *top.parentType(), top.isDuplicateKey(),
                       isExpanded, node.has(PlistNode::touched));
    note(node, index);
    if (isExpanded) {
        open(node, depth + 1);
    }
    addOpenContainers();
    return std::move(rows_);
}

std::vector<OutlineRow> OutlineWalk::run(const OutlineRow& parent, const PlistNodeRun& run,
                                         std::size_t number) {
    firstRow_ = number;
    PlistNode& node = parent.node();
    node.clear(PlistNode::touched);
    const auto depth = static_cast<std::uint32_t>(parent.depth());
    const auto first = static_cast<std::uint32_t>(run.first);
    // The children after the run keep their rows.
    const std::span<const PlistNodePtr> children = node.children().first(run.first + run.added);
    openContainers_.push_back({children, first, depth + 1, node.type()});
    addOpenContainers();
    return std::move(rows_);
}

void OutlineWalk::addOpenContainers() {
    while (!openContainers_.empty()) {
        const OpenContainer& top = openContainers_.back();
        if (top.next == top.children.size()) {
            openContainers_.pop_back();
        } else {
            addNextChild();
        }
    }
}

bool OutlineWalk::isShown(const PlistNode& node) const {
    return !filter_ || filter_->contains(node.id());
}

bool OutlineWalk::isOpen(const PlistNode& node) const {
    return node.isContainer() && (filter_ || expanded_.contains(node.id()));
}

void OutlineWalk::addRoot(PlistNode& root) {
    const bool isExpanded = isOpen(root);
    rows_.emplace_back(root, root.id(), isExpanded, root.has(PlistNode::touched));
    note(root, 0);
    if (isExpanded) {
        open(root, 1);
    }
}

void OutlineWalk::addNextChild() {
    OpenContainer& top = openContainers_.back();
    const std::uint32_t index = top.next++;
    PlistNode& node = *top.children[index];
    if (!isShown(node)) {
        return;
    }
    const bool isDuplicate = top.type == PlistType::dictionary && node.has(PlistNode::duplicateKey);
    const bool isExpanded = isOpen(node);
    rows_.emplace_back(node, node.id(), top.childDepth, index, top.type, isDuplicate, isExpanded,
                       node.has(PlistNode::touched));
    note(node, index);
    if (isExpanded) {
        open(node, top.childDepth + 1);
    }
}

void OutlineWalk::note(PlistNode& node, std::uint32_t index) {
    node.clear(PlistNode::touched);
    node.positionHint_ = index;
    node.rowHint_ = static_cast<int>(firstRow_ + rows_.size()) - 1;
}

void OutlineWalk::open(PlistNode& node, std::uint32_t childDepth) {
    // Children that were never made have no ids that a filter could hold.
    if (filter_ && !node.isMaterialized()) {
        return;
    }
    const std::span<const PlistNodePtr> children = node.children();
    if (children.empty()) {
        return;
    }
    if (node.type() == PlistType::dictionary) {
        node.updateDuplicateKeys();
    }
    openContainers_.push_back({children, 0, childDepth, node.type()});
}
