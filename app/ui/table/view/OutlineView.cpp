#include "app/ui/table/view/OutlineView.h"

#include <QEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>
#include <optional>
#include <utility>

#include "app/model/tree/PlistNode.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/table/view/KeyCell.h"
#include "app/ui/table/view/OutlineHeader.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/table/view/TypeCell.h"
#include "app/ui/table/view/ValueCell.h"

OutlineView::OutlineView(OutlineState& outline, QWidget* parent)
    : QTableView(parent), header_(new OutlineHeader(this)) {
    // Before the model connects to the outline: the visible rows are remembered while the view has
    // not yet heard of a change.
    followOutline(outline);
    model_ = new OutlineTableModel(outline, this);
    setHorizontalHeader(header_);
    setUpCells();
    setUpAppearance();
}

OutlineView::~OutlineView() = default;

OutlineState& OutlineView::outline() const noexcept {
    return model_->outline();
}

void OutlineView::followOutline(const OutlineState& outline) {
    connect(&outline, &OutlineState::rowsAboutToBeRemoved, this, &OutlineView::rememberVisibleRows);
    connect(&outline, &OutlineState::rowsAboutToBeInserted, this,
            &OutlineView::rememberVisibleRows);
    connect(&outline, &OutlineState::rowsAboutToBeRearranged, this,
            &OutlineView::rememberVisibleRows);
    connect(&outline, &OutlineState::rowsAboutToBeReset, this, [this] { isChangingRows_ = true; });
    connect(&outline, &OutlineState::rowsChanged, this, &OutlineView::rowsChanged);
}

void OutlineView::setUpCells() {
    keyCell_ = new KeyCell(*model_, this);
    setItemDelegateForColumn(OutlineTableModel::keyColumn, keyCell_);
    setItemDelegateForColumn(OutlineTableModel::typeColumn, new TypeCell(*model_, this));
    valueCell_ = new ValueCell(*model_, this);
    setItemDelegateForColumn(OutlineTableModel::valueColumn, valueCell_);
}

void OutlineView::setUpAppearance() {
    setShowGrid(false);
    setFrameShape(QFrame::NoFrame);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setCornerButtonEnabled(false);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    applyFont();
}

void OutlineView::showRows() {
    setAccessibleName(tr("Property list"));
    setModel(model_);
    header_->applyIdealWidths();
}

void OutlineView::applyFont() {
    const int height = CellMetrics(font()).rowHeight();
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    verticalScrollBar()->setSingleStep(height);
}

void OutlineView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        applyFont();
    }
}

void OutlineView::updateGeometries() {
    QTableView::updateGeometries();
    header_->fill(viewport()->width());
}

QModelIndex OutlineView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    // In a table of single cells these lead along the row; an outline is a list of rows.
    const int column = std::max(currentIndex().column(), 0);
    if (action == MoveHome) {
        return model()->index(0, column);
    }
    if (action == MoveEnd) {
        return model()->index(model()->rowCount() - 1, column);
    }
    return QTableView::moveCursor(action, modifiers);
}

void OutlineView::toggle(int row, OutlineState::Reach reach) {
    const OutlineRow shown = model_->row(row);
    const auto expansion =
        shown.isExpanded() ? OutlineState::Expansion::collapse : OutlineState::Expansion::expand;
    if (outline().setExpanded(shown.node(), expansion, reach) ==
        OutlineState::ExpandResult::tooManyRows) {
        Q_EMIT expansionRefused();
    }
}

// --- Parts of cells ---

QStyleOptionViewItem OutlineView::cellOption(const QModelIndex& index) const {
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    return option;
}

QRect OutlineView::disclosureRect(const QModelIndex& index) const {
    const bool isKey = index.isValid() && index.column() == OutlineTableModel::keyColumn;
    return isKey ? keyCell_->parts(cellOption(index), index).disclosure : QRect();
}

bool OutlineView::isOnDisclosure(const QPoint& position) const {
    // A little larger than what is drawn, so that it is easy to hit.
    const QRect control = disclosureRect(indexAt(position));
    return !control.isEmpty() && control.adjusted(-2, -4, 2, 4).contains(position);
}

QRect OutlineView::checkBoxRect(const QModelIndex& index) const {
    return valueCell_->checkBoxRect(cellOption(index), index);
}

QRect OutlineView::linkRect(const QModelIndex& index) const {
    return valueCell_->linkRect(cellOption(index), index);
}

void OutlineView::placeEditor(QWidget& editor, const QModelIndex& index) const {
    itemDelegateForIndex(index)->updateEditorGeometry(&editor, cellOption(index), index);
}

// --- What is visible ---

void OutlineView::rowsChanged() {
    isChangingRows_ = false;
    scrollBack(std::exchange(visibleBefore_, {}),
               [this](const PlistNode& node) { return outline().hintedRowOf(node); });
}

void OutlineView::rememberVisibleRows() {
    isChangingRows_ = true;
    if (visibleBefore_.empty()) {
        visibleBefore_ = visibleRows();
    }
}

std::vector<OutlineView::VisibleRow> OutlineView::visibleRows() const {
    std::vector<VisibleRow> rows;
    const int height = viewport()->height();
    const auto addVisible = [this, height, &rows](int row) {
        const int top = rowViewportPosition(row);
        const bool isVisible = top < height;
        if (isVisible) {
            rows.push_back({PlistNodePtr(&model_->row(row).node()), top});
        }
        return isVisible;
    };
    const int current = currentIndex().row();
    if (current >= 0 && rowViewportPosition(current) >= 0) {
        addVisible(current);
    }
    for (int row = rowAt(0); row >= 0 && row < model_->rowCount(); ++row) {
        if (!addVisible(row)) {
            break;
        }
    }
    return rows;
}

bool OutlineView::scrollBack(const std::vector<VisibleRow>& rows,
                             const std::function<std::optional<int>(const PlistNode&)>& rowOf) {
    for (const VisibleRow& before : rows) {
        if (const std::optional<int> row = rowOf(*before.node)) {
            // The scroll bar must know of the rows before it can be set.
            doItemsLayout();
            const int moved = rowViewportPosition(*row) - before.top;
            verticalScrollBar()->setValue(verticalScrollBar()->value() + moved);
            return true;
        }
    }
    return false;
}
