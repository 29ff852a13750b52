#pragma once

#include <cstddef>
#include <cstdint>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/NodeId.h"

class PlistNode;

/// The memory of nodes that were made together. Siblings next to each other make walks over them
/// fast, and save the allocator's own bytes for each.
///
/// A block is given back when the last of its nodes is freed. It is kept small, so that one node
/// that outlives its siblings (in an undo step) holds little more than itself.
class PlistNodeBlock {
public:
    /// The most nodes in one block.
    static constexpr std::size_t capacity = 1024;

    /// Room for `count` nodes, 1 to `capacity`; all of them must be made with `place`. Throws
    /// `std::bad_alloc`.
    static PlistNodeBlock* make(std::size_t count);

    /// Makes the node at `index`, which nobody owns yet.
    PlistNode* place(std::size_t index, NodeId id, PlistString key, PlistValue value) noexcept;

    /// Ends a node that nobody owns any more.
    static void free(PlistNode* node) noexcept;

private:
    explicit PlistNodeBlock(std::size_t count) noexcept : living_(count) {}

    PlistNode* nodes() noexcept;

    std::size_t living_;
};
