#pragma once

#include <cstddef>
#include <optional>

#include "app/model/tree/KeyTable.h"
#include "app/model/tree/NodeId.h"
#include "app/model/tree/PlistNodeList.h"

class PlistNode;

/// Makes the children of a node and finds out which of their keys are repeated, some at a time:
/// with a million of them each of the two takes longer than a window may stay unresponsive.
///
/// The node has none of the children before all are made. Belongs to the main thread.
class ChildrenMaker {
public:
    /// For a node whose children have not been made; a scalar has none to make. The node must
    /// outlive the maker, and nobody else may use it before all is done.
    explicit ChildrenMaker(PlistNode& parent);

    /// Makes up to `count` more children, or compares as many keys; true when all is done. Not to
    /// be called again after that. Throws `std::bad_alloc`.
    bool make(std::size_t count);

private:
    friend class PlistNode;

    bool makeNodes(std::size_t count);
    void makeBlock(std::size_t count);
    bool hasKeysToCompare() const;

    /// Takes up to `count` more keys of `dictionary` into the table of its children; true when that
    /// were all, which the dictionary knows then. At first no child may count as repeated.
    static bool markDuplicates(PlistNode& dictionary, KeyTable& keys, std::size_t count);

    PlistNode& parent_;
    PlistNodeList list_;
    std::size_t made_ = 0;
    NodeId nextId_ = 0;
    std::optional<KeyTable> keys_;  ///< once the children are made
};
