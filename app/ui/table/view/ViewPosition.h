#pragma once

#include <vector>

#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNodePtr.h"
#include "app/ui/table/view/OutlineView.h"

/// Where the user is in an outline: which rows are selected, which cell is current and which rows
/// are visible. Finds the same position in another tree, by keys and indexes.
class ViewPosition {
public:
    /// Remembers where the user is now.
    explicit ViewPosition(const OutlineView& view);

    /// Goes to that position in the tree that the view shows now.
    void restore(OutlineView& view) const;

private:
    void restoreCurrent(OutlineView& view) const;
    void restoreVisible(OutlineView& view) const;

    PlistNodePtr root_;
    NodeIdSet expanded_;
    NodeIdSet selection_;
    PlistNodePtr current_;
    int currentColumn_ = 0;
    std::vector<OutlineView::VisibleRow> visible_;
    int scrolled_ = 0;
};
