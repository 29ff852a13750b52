#pragma once

#include "app/model/NodeId.h"
#include "app/model/NodeIdSet.h"

class PlistNode;

/// What the user has expanded, carried from one tree to another.
namespace OutlineExpansion {

/// The containers of the tree under `newRoot` that stand where expanded ones stood under `oldRoot`:
/// under equal keys in dictionaries (the first of repeated ones), at the same position in arrays;
/// where a dictionary has become an array or the reverse, a key counts as a position and a position
/// as a key, in decimal. Follows only what is expanded through and through. Always holds the new
/// root's id.
NodeIdSet carried(PlistNode& oldRoot, PlistNode& newRoot, const NodeIdSet& expanded);

}  // namespace OutlineExpansion
