#include "app/ui/window/KeptPlace.h"

#include <QItemSelectionModel>
#include <QScrollBar>
#include <optional>

#include "app/model/outline/OutlineExpansion.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/view/OutlineTableModel.h"

namespace {

/// The row, if there is one, of what stands in the place that `node` had in the tree before.
std::optional<int> rowFor(const PlistNode& node, const OutlineState& outline) {
    const PlistNode* there = OutlineExpansion::counterpart(node, *outline.root());
    return there == nullptr ? std::nullopt : outline.rowOf(*there);
}

}  // namespace

KeptPlace::KeptPlace(DocumentView& view)
    : root_(view.outline().root()),
      expanded_(view.outline().expanded()),
      selection_(view.outline().selection()) {
    rememberRows(view.table());
}

void KeptPlace::rememberRows(const PlistTable& table) {
    const OutlineTableModel& model = table.outlineModel();
    if (const QModelIndex current = table.currentIndex(); current.isValid()) {
        current_ = PlistNodePtr(&model.row(current.row()).node());
        currentColumn_ = current.column();
    }
    scrolled_ = table.verticalScrollBar()->value();
    const int height = table.viewport()->height();
    for (int row = table.rowAt(0); row >= 0 && row < model.rowCount(); ++row) {
        const int top = table.rowViewportPosition(row);
        if (top >= height) {
            break;
        }
        seen_.push_back({PlistNodePtr(&model.row(row).node()), top});
    }
}

void KeptPlace::restore(DocumentView& view) const {
    PlistNode* root = view.outline().root();
    if (root_ && root != nullptr && root != root_.get()) {
        view.outline().select(
            OutlineExpansion::carriedSelection(*root_, *root, expanded_, selection_));
        restoreCurrent(view);
        restoreSight(view);
    }
}

void KeptPlace::restoreCurrent(DocumentView& view) const {
    if (!current_) {
        return;
    }
    if (const std::optional<int> row = rowFor(*current_, view.outline())) {
        PlistTable& table = view.table();
        table.selectionModel()->setCurrentIndex(table.model()->index(*row, currentColumn_),
                                                QItemSelectionModel::NoUpdate);
    }
}

void KeptPlace::restoreSight(DocumentView& view) const {
    PlistTable& table = view.table();
    QScrollBar* bar = table.verticalScrollBar();
    // So that the scroll bar knows of the new rows.
    table.doItemsLayout();
    for (const SeenRow& seen : seen_) {
        if (const std::optional<int> row = rowFor(*seen.node, view.outline())) {
            bar->setValue(bar->value() + table.rowViewportPosition(*row) - seen.top);
            return;
        }
    }
    bar->setValue(scrolled_);
}
