#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "app/model/outline/OutlineRow.h"
#include "app/model/tree/NodeId.h"
#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNodeObserver.h"
#include "app/model/tree/PlistNodePtr.h"

/// Makes the rows of a tree, from top to bottom, through what is expanded or left by a filter.
/// Makes children where they are to be shown, and leaves in every node the number of its row.
class OutlineWalk {
public:
    /// Both sets must outlive the walk; without a filter every node under expanded ones is shown.
    OutlineWalk(const NodeIdSet& expanded, const std::optional<NodeIdSet>& filter)
        : expanded_(expanded), filter_(filter) {}

    /// `expectedCount` is a guess of how many rows there will be.
    std::vector<OutlineRow> rows(PlistNode& root, std::size_t expectedCount);

    /// The row of one node and those below it. `top` is its row up to now, of which only expansion
    /// and content may have changed; its number stays `number`. Not for the root.
    std::vector<OutlineRow> segment(const OutlineRow& top, std::size_t number);

    /// The rows of the children that have come to the array in the row `parent`, and of what is
    /// below them; the first has the number `number`. Counts as a visit to the parent's row too.
    std::vector<OutlineRow> run(const OutlineRow& parent, const PlistNodeRun& run,
                                std::size_t number);

private:
    /// A container whose children are being visited.
    struct OpenContainer {
        std::span<const PlistNodePtr> children;
        std::uint32_t next;
        std::uint32_t childDepth;
        PlistType type;
    };

    bool isShown(const PlistNode& node) const;
    bool isOpen(const PlistNode& node) const;
    void addRoot(PlistNode& root);
    void addOpenContainers();
    void addNextChild();
    void note(PlistNode& node, std::uint32_t index);
    void open(PlistNode& node, std::uint32_t childDepth);

    const NodeIdSet& expanded_;
    const std::optional<NodeIdSet>& filter_;
    std::size_t firstRow_ = 0;  ///< the number of the first of `rows_`
    std::vector<OutlineRow> rows_;
    std::vector<OpenContainer> openContainers_;
};
