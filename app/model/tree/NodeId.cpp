#include "app/model/tree/NodeId.h"

#include <limits>

#include "app/model/runtime/Plist.h"

NodeId NodeIdCounter::take(qint64 count) {
    plistCheck(count > 0 && last_ <= std::numeric_limits<NodeId>::max() - count,
               "the node ids of a process are used up");
    const NodeId first = last_ + 1;
    last_ += count;
    return first;
}
