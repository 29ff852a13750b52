#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/search/MatchedNodes.h"
#include "app/model/tree/PlistNodePtr.h"

/// Finds the nodes of matches, all at once or some at a time: a million of them take longer than a
/// window may leave its user without an answer. Belongs to the main thread.
class MatchResolver {
public:
    /// As `MatchedNodes::resolve`. The tree must not change before all is done.
    MatchResolver(PlistNode& root, PlistMatches found,
                  std::int64_t limit = MatchedNodes::madeNodeLimit);

    /// Does about `count` more steps; true when all are done. A container makes all its children in
    /// one step.
    bool resolve(std::size_t count);

    /// The nodes, once all is done.
    MatchedNodes take();

private:
    bool findNodes(std::size_t count);
    bool collectMatches(std::size_t count);
    bool collectVisible(std::size_t count);

    PlistMatches found_;
    std::int64_t limit_;
    PlistNodePtr root_;
    std::vector<PlistNode*> nodes_;  ///< at the places, up to the one where the limit is reached
    bool isLimitReached_ = false;
    // Places often stand in the same container as the one before.
    const PlistNode* container_ = nullptr;
    std::span<const PlistNodePtr> children_;
    std::size_t visibleCount_ = 1;  ///< up to the last match
    std::size_t nextMatch_ = 0;
    std::size_t nextVisible_ = 0;
    MatchedNodes result_;
};
