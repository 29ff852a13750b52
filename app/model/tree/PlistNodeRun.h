#pragma once

#include <cstddef>

/// Children of one node that stood next to each other before they went, or that stand next to each
/// other since they came; all others are as they were. One of the two numbers is 0.
struct PlistNodeRun {
    std::size_t first = 0;  ///< the position of the first of them
    std::size_t removed = 0;
    std::size_t added = 0;
};
