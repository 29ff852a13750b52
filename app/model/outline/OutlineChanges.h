#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNodeObserver.h"
#include "app/model/tree/PlistNodePtr.h"

/// What has changed in a tree since its rows were made, as far as that decides which rows have to
/// be rebuilt.
class OutlineChanges {
public:
    /// The row of `node`, and those below it, may have changed.
    void add(PlistNode& node);

    /// The same for a change that the tree reports.
    void add(PlistNode& node, PlistNodeChanges changes, std::optional<PlistNodeRun> run);

    /// Which children of `top` came or went, if that is all that has happened.
    std::optional<PlistNodeRun> onlyRun() const { return nodes_.size() == 1 ? run_ : std::nullopt; }

    bool isEmpty() const noexcept { return nodes_.empty() && !areMany_; }
    void clear();

    /// The lowest node whose row and those below it include all that may have changed; null if
    /// nothing that is shown has changed. The root where there are many changes.
    PlistNode* top(PlistNode& root, const NodeIdSet& expanded) const;

private:
    /// More would cost more to look at than to make all rows.
    static constexpr std::size_t limit = 64;

    std::vector<PlistNodePtr> nodes_;
    std::optional<PlistNodeRun> run_;  ///< of the last change
    bool areMany_ = false;
};
