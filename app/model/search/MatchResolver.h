#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNodePtr.h"

class PlistNode;

/// The nodes of a tree at the places where a search has found something.
struct MatchedNodes {
    /// The matches, in the order of the search.
    std::vector<PlistNodePtr> matches;

    /// The matches and all that is above them; the root in any case.
    NodeIdSet visible;

    /// Whether these are all matches that the value has.
    bool areComplete = true;
};

/// Finds the nodes of matches, all at once or some at a time: a million of them take longer than a
/// window may stay unresponsive. Belongs to the main thread.
class MatchResolver {
public:
    /// The most nodes that are made on the way to the matches. A container makes all its children
    /// at once, so by sharing, a small file could ask for a thousand times as many nodes as there
    /// are matches. This is several times the largest documents.
    static constexpr std::int64_t madeNodeLimit = 10'000'000;

    /// For the tree below `root`, whose value was searched and has not changed since, nor does
    /// before all is done. Makes children on the way, and leaves out the matches from the first one
    /// on that would make more than `limit` of them. Costs in proportion to the places and to the
    /// nodes made.
    MatchResolver(PlistNode& root, PlistMatches found, std::int64_t limit = madeNodeLimit);

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
