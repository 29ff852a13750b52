#pragma once

#include <vector>

#include "app/model/tree/PlistNodePtr.h"

class OutlineState;

/// The nodes that commands on the selection act on: those of the selected rows, without the root,
/// which can neither be moved nor deleted, and without nodes that stand below selected ones and go
/// along with them. With the root selected there are therefore none.
namespace TopLevelSelection {

/// In row order.
std::vector<PlistNodePtr> nodes(const OutlineState& outline);

/// Whether there are any; looks no further than the first.
bool hasNodes(const OutlineState& outline);

}  // namespace TopLevelSelection
