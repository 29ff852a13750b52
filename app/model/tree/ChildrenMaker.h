#pragma once

#include <cstddef>

#include "app/model/tree/NodeId.h"
#include "app/model/tree/PlistNodeList.h"

class PlistNode;

/// Makes the children of a container, all at once or some at a time: a million of them take longer
/// than a window may leave its user without an answer.
///
/// The node has none of the children before all are made. Belongs to the main thread.
class ChildrenMaker {
public:
    /// For a container whose children have not been made. It must outlive the maker, and nobody
    /// else may use it before all are made.
    explicit ChildrenMaker(PlistNode& parent);

    /// Makes up to `count` more; true when all are there, which then belong to the node. Not to be
    /// called again after that. Throws `std::bad_alloc`.
    bool make(std::size_t count);

private:
    void makeBlock(std::size_t count);

    PlistNode& parent_;
    PlistNodeList list_;
    std::size_t made_ = 0;
    NodeId nextId_ = 0;
};
