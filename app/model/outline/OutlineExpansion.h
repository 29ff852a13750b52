#pragma once

#include "app/model/tree/NodeId.h"
#include "app/model/tree/NodeIdSet.h"

class PlistNode;

/// What the user has expanded and selected, carried from one tree to another.
namespace OutlineExpansion {

/// The containers of the tree under `newRoot` that stand where expanded ones stood under `oldRoot`:
/// under equal keys in dictionaries (the first of repeated ones), at the same position in arrays;
/// where a dictionary has become an array or the reverse, a key counts as a position and a position
/// as a key, in decimal. Follows only what is expanded through and through. Always holds the new
/// root's id.
NodeIdSet carried(PlistNode& oldRoot, PlistNode& newRoot, const NodeIdSet& expanded);

/// In the same way the selected nodes. Those that stand below something that is not expanded are
/// left out.
NodeIdSet carriedSelection(PlistNode& oldRoot, PlistNode& newRoot, const NodeIdSet& expanded,
                           const NodeIdSet& selection);

/// What stands under `newRoot` where `node` stands under its own root; null if nothing does. Costs
/// in proportion to the siblings of the node and of those above it.
PlistNode* counterpart(const PlistNode& node, PlistNode& newRoot);

}  // namespace OutlineExpansion
