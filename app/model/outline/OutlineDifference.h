#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "app/model/outline/OutlineRow.h"

/// How one list of rows becomes another: what is equal at both ends, by node, and what happens in
/// between.
struct OutlineDifference {
    /// Rows of the new list, both ends included.
    struct Range {
        int first = 0;
        int last = 0;
    };

    /// How many rows at the beginning show the same nodes.
    std::size_t start = 0;
    /// Where the rows at the end that show the same nodes begin.
    std::size_t oldEnd = 0;
    std::size_t newEnd = 0;
    /// Whether nodes that have rows between those ends before have them afterwards too: then no
    /// single removal and insertion describes the change.
    bool isRearrangement = false;
    /// The rows of equal nodes that show something else than before, as one range.
    std::optional<Range> changed;

    /// Compares in one pass. The row hints of the nodes must refer to `newRows`, the first of which
    /// has the number `firstRow`, and the nodes of `oldRows` must be alive. All numbers of the
    /// result count from the first of the rows compared.
    static OutlineDifference between(std::span<const OutlineRow> oldRows,
                                     std::span<const OutlineRow> newRows, std::size_t firstRow = 0);
};
