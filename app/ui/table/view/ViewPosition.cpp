#include "app/ui/table/view/ViewPosition.h"

#include <QItemSelectionModel>
#include <QScrollBar>
#include <optional>

#include "app/model/outline/OutlineExpansion.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/table/view/OutlineTableModel.h"

namespace {

/// The row, if there is one, of the node that stands where `node` stood in the old tree.
std::optional<int> rowFor(const PlistNode& node, const OutlineState& outline) {
    const PlistNode* there = OutlineExpansion::counterpart(node, *outline.root());
    return there == nullptr ? std::nullopt : outline.rowOf(*there);
}

}  // namespace

ViewPosition::ViewPosition(const OutlineView& view)
    : root_(view.outline().root()),
      expanded_(view.outline().expanded()),
      selection_(view.outline().selection()),
      visible_(view.visibleRows()),
      scrolled_(view.verticalScrollBar()->value()) {
    if (const QModelIndex current = view.currentIndex(); current.isValid()) {
        current_ = PlistNodePtr(&view.outlineModel().row(current.row()).node());
        currentColumn_ = current.column();
    }
}

void ViewPosition::restore(OutlineView& view) const {
    OutlineState& outline = view.outline();
    if (root_ && outline.root() != nullptr && outline.root() != root_.get()) {
        outline.select(
            OutlineExpansion::carriedSelection(*root_, *outline.root(), expanded_, selection_));
        restoreCurrent(view);
        restoreVisible(view);
    }
}

void ViewPosition::restoreCurrent(OutlineView& view) const {
    const std::optional<int> row = current_ ? rowFor(*current_, view.outline()) : std::nullopt;
    if (row) {
        view.selectionModel()->setCurrentIndex(view.model()->index(*row, currentColumn_),
                                               QItemSelectionModel::NoUpdate);
    }
}

void ViewPosition::restoreVisible(OutlineView& view) const {
    const OutlineState& outline = view.outline();
    const bool isFound = view.scrollBack(
        visible_, [&outline](const PlistNode& node) { return rowFor(node, outline); });
    if (!isFound) {
        view.verticalScrollBar()->setValue(scrolled_);
    }
}
