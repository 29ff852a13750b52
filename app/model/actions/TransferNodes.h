#pragma once

#include <span>
#include <vector>

#include "app/model/actions/PlistTransfer.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNodePtr.h"

class OutlineState;
class PlistNode;

/// The way from nodes to what travels, and from there to nodes again.
namespace TransferNodes {

/// The values of the nodes with their ids. Keys are kept only if every node is in a dictionary, so
/// that a mixture travels as a plain list.
PlistTransfer copied(std::span<const PlistNodePtr> nodes);

/// The items of several transfers as one, in this order.
PlistTransfer joined(std::span<const PlistTransfer> transfers);

/// New nodes for the items, to be added to `container`: in a dictionary with keys that are free,
/// in an array with the keys as they are.
std::vector<PlistNodePtr> made(std::span<const PlistEntry> entries, PlistNode& container);

/// The very nodes that the items were copied from, if the outline has a row for each of them and
/// every item comes from a node; else none.
std::vector<PlistNodePtr> shown(const PlistTransfer& transfer, const OutlineState& outline);

}  // namespace TransferNodes
