#include "app/model/MatchedNodes.h"

#include <cstddef>
#include <span>

#include "PlistCore/PlistMatches.h"
#include "app/model/PlistNode.h"

namespace {

/// The nodes at the places from the first one on, up to the one where the limit is reached.
std::vector<PlistNode*> nodesAt(std::span<const PlistMatches::Place> places, PlistNode& root,
                                std::int64_t limit) {
    std::vector<PlistNode*> nodes;
    nodes.reserve(places.size());
    nodes.push_back(&root);
    // Places often stand in the same container as the one before.
    const PlistNode* last = nullptr;
    std::span<const PlistNodePtr> children;
    for (const PlistMatches::Place& place : places.subspan(1)) {
        PlistNode& container = *nodes[place.container];
        if (&container != last) {
            if (!container.isMaterialized()) {
                limit -= container.childCount();
                if (limit < 0) {
                    break;
                }
            }
            last = &container;
            children = container.children();
        }
        nodes.push_back(children[place.position].get());
    }
    return nodes;
}

}  // namespace

MatchedNodes MatchedNodes::resolve(PlistNode& root, const PlistMatches& found, std::int64_t limit) {
    const std::vector<PlistNode*> nodes = nodesAt(found.places(), root, limit);
    MatchedNodes result;
    result.areComplete =
        found.ending() == PlistMatches::Ending::complete && nodes.size() == found.places().size();
    result.matches.reserve(found.size());
    std::size_t last = 0;
    for (const std::uint32_t place : found.matches()) {
        if (place >= nodes.size()) {
            break;
        }
        result.matches.emplace_back(nodes[place]);
        last = place;
    }
    // Every place leads to the next match, so those up to the last match are what is to be seen.
    for (const PlistNode* node : std::span(nodes).first(last + 1)) {
        result.visible.insert(node->id());
    }
    return result;
}
