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
    // Before the model connects to the outline: what is in sight is remembered while the view has
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
    connect(&outline, &OutlineState::rowsAboutToBeRemoved, this, &OutlineView::rememberSight);
    connect(&outline, &OutlineState::rowsAboutToBeInserted, this, &OutlineView::rememberSight);
    connect(&outline, &OutlineState::rowsAboutToBeRearranged, this, &OutlineView::rememberSight);
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

bool OutlineView::isOnDisclosure(const QPoint& position) const {
    const QModelIndex index = indexAt(position);
    if (!index.isValid() || index.column() != OutlineTableModel::keyColumn) {
        return false;
    }
    // A little larger than what is drawn, so that it is easy to hit.
    const QRect control = keyCell_->parts(cellOption(index), index).disclosure;
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

// --- What is in sight ---

void OutlineView::rowsChanged() {
    isChangingRows_ = false;
    restoreSight();
}

void OutlineView::rememberSight() {
    isChangingRows_ = true;
    if (sight_.empty()) {
        sight_ = seenRows();
    }
}

std::vector<OutlineView::SeenRow> OutlineView::seenRows() const {
    std::vector<SeenRow> rows;
    const auto add = [this, &rows](int row) {
        rows.push_back({PlistNodePtr(&model_->row(row).node()), rowViewportPosition(row)});
    };
    const int height = viewport()->height();
    const int current = currentIndex().row();
    if (current >= 0 && rowViewportPosition(current) >= 0 &&
        rowViewportPosition(current) < height) {
        add(current);
    }
    const int first = rowAt(0);
    for (int row = first; row >= 0 && row < model_->rowCount(); ++row) {
        if (rowViewportPosition(row) >= height) {
            break;
        }
        add(row);
    }
    return rows;
}

void OutlineView::restoreSight() {
    const std::vector<SeenRow> seen = std::exchange(sight_, {});
    for (const SeenRow& anchor : seen) {
        if (const std::optional<int> row = outline().hintedRowOf(*anchor.node)) {
            scrollRowTo(*row, anchor.top);
            return;
        }
    }
}

void OutlineView::scrollRowTo(int row, int top) {
    // The range of the scroll bar must know of the rows before it can be set.
    executeDelayedItemsLayout();
    updateGeometries();
    const int moved = rowViewportPosition(row) - top;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + moved);
}
