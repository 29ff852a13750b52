#include "app/model/outline/OutlineDifference.h"

#include <algorithm>

#include "app/model/tree/PlistNode.h"

namespace {

/// Collects the rows of equal nodes that differ in what they show.
class ChangedRows {
public:
    void compare(const OutlineRow& oldRow, const OutlineRow& newRow, std::size_t position) {
        if (oldRow == newRow && !newRow.hasNewContent()) {
            return;
        }
        const int row = static_cast<int>(position);
        if (!range_) {
            range_ = {row, row};
        }
        range_->first = std::min(range_->first, row);
        range_->last = std::max(range_->last, row);
    }

    const std::optional<OutlineDifference::Range>& range() const { return range_; }

private:
    std::optional<OutlineDifference::Range> range_;
};

bool showSameNode(const OutlineRow& left, const OutlineRow& right) {
    // Not by address: that of a freed node may have been given to another.
    return left.nodeId() == right.nodeId();
}

bool isAmong(std::span<const OutlineRow> rows, std::size_t firstRow, const OutlineRow& row) {
    // Wraps around for a hint before the rows, to a number far past their end.
    const std::size_t place = static_cast<std::size_t>(row.node().rowHint()) - firstRow;
    return place < rows.size() && showSameNode(rows[place], row);
}

}  // namespace

OutlineDifference OutlineDifference::between(std::span<const OutlineRow> oldRows,
                                             std::span<const OutlineRow> newRows,
                                             std::size_t firstRow) {
    OutlineDifference difference;
    ChangedRows changed;
    std::size_t start = 0;
    const std::size_t shorter = std::min(oldRows.size(), newRows.size());
    while (start < shorter && showSameNode(oldRows[start], newRows[start])) {
        changed.compare(oldRows[start], newRows[start], start);
        ++start;
    }
    std::size_t oldEnd = oldRows.size();
    std::size_t newEnd = newRows.size();
    while (oldEnd > start && newEnd > start &&
           showSameNode(oldRows[oldEnd - 1], newRows[newEnd - 1])) {
        --oldEnd;
        --newEnd;
        changed.compare(oldRows[oldEnd], newRows[newEnd], newEnd);
    }
    difference.start = start;
    difference.oldEnd = oldEnd;
    difference.newEnd = newEnd;
    difference.changed = changed.range();
    difference.isRearrangement =
        newEnd > start && std::any_of(oldRows.begin() + static_cast<std::ptrdiff_t>(start),
                                      oldRows.begin() + static_cast<std::ptrdiff_t>(oldEnd),
                                      [newRows, firstRow](const OutlineRow& row) {
                                          return isAmong(newRows, firstRow, row);
                                      });
    return difference;
}
