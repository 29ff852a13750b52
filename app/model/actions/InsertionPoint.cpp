#include "app/model/actions/InsertionPoint.h"

#include <algorithm>
#include <vector>

#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNode.h"

namespace {

std::optional<InsertionPoint> firstIn(PlistNode& container) {
    return InsertionPoint{PlistNodePtr(&container), 0};
}

std::optional<InsertionPoint> lastIn(PlistNode& container) {
    return InsertionPoint{PlistNodePtr(&container), container.childCount()};
}

std::optional<InsertionPoint> after(const OutlineRow& row) {
    return InsertionPoint{PlistNodePtr(row.node().parent()), row.index() + 1};
}

}  // namespace

std::optional<InsertionPoint> InsertionPoint::forNewItems(const OutlineState& outline,
                                                          PlistNode& root) {
    if (!root.isContainer()) {
        return std::nullopt;
    }
    const std::vector<OutlineRow> rows = outline.selectedRows();
    if (rows.empty()) {
        return lastIn(root);
    }
    const OutlineRow& row = rows.back();
    // A filter shows all containers open; and there is no place beside the root.
    if (row.isExpanded() || row.node().parent() == nullptr) {
        return firstIn(row.node());
    }
    return after(row);
}

std::optional<InsertionPoint> InsertionPoint::forDrop(const OutlineState& outline, PlistNode& root,
                                                      qint64 position) {
    if (!root.isContainer()) {
        return std::nullopt;
    }
    const std::vector<OutlineRow>& rows = outline.rows();
    const auto count = static_cast<qint64>(rows.size());
    if (position < 1 || count == 0) {
        return firstIn(root);
    }
    const OutlineRow& row = rows[static_cast<std::size_t>(std::min(position, count) - 1)];
    if (row.isExpanded()) {
        return firstIn(row.node());
    }
    return row.node().parent() == nullptr ? lastIn(root) : after(row);
}
