#pragma once

#include <cstdint>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNodePtr.h"

class PlistNode;

/// The nodes of a tree at the places where a search has found something.
struct MatchedNodes {
    /// The most nodes that are made on the way to the matches. A container makes all its children
    /// at once, so by sharing, a small file could ask for a thousand times as many nodes as there
    /// are matches. This is several times the largest documents.
    static constexpr std::int64_t madeNodeLimit = 10'000'000;

    /// The matches, in the order of the search.
    std::vector<PlistNodePtr> matches;

    /// The matches and all that is above them; the root in any case.
    NodeIdSet visible;

    /// Whether these are all matches that the value has.
    bool areComplete = true;

    /// The nodes of the tree below `root`, whose value was searched and has not changed since.
    /// Makes children on the way, and leaves out the matches from the first one on that would make
    /// more than `limit` of them. Costs in proportion to the places and to the nodes made.
    static MatchedNodes resolve(PlistNode& root, PlistMatches found,
                                std::int64_t limit = madeNodeLimit);
};
