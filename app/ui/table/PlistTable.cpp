#include "app/ui/table/PlistTable.h"

#include <QContextMenuEvent>
#include <QItemSelection>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <algorithm>
#include <optional>
#include <utility>

#include "app/model/tree/PlistNode.h"
#include "app/ui/table/RowMenu.h"
#include "app/ui/table/accessibility/AccessibleTable.h"
#include "app/ui/table/drag/RowDragging.h"
#include "app/ui/table/drag/RowDropping.h"
#include "app/ui/table/editing/CellEditors.h"
#include "app/ui/table/editing/InlineEditing.h"
#include "app/ui/table/view/KeyCell.h"
#include "app/ui/table/view/OutlineTableModel.h"

namespace {

OutlineState::Reach reachFor(Qt::KeyboardModifiers modifiers) {
    return modifiers.testFlag(Qt::AltModifier) ? OutlineState::Reach::wholeSubtree
                                               : OutlineState::Reach::nodeAlone;
}

/// The given numbers of rows as ranges over all columns. Sorts them.
QItemSelection selectionOf(std::vector<int> rows, const QAbstractItemModel& model) {
    std::sort(rows.begin(), rows.end());
    QItemSelection selection;
    const int lastColumn = model.columnCount() - 1;
    for (std::size_t begin = 0; begin < rows.size();) {
        std::size_t end = begin + 1;
        while (end < rows.size() && rows[end] == rows[end - 1] + 1) {
            ++end;
        }
        selection.append(QItemSelectionRange(model.index(rows[begin], 0),
                                             model.index(rows[end - 1], lastColumn)));
        begin = end;
    }
    return selection;
}

/// Whether the key belongs to the text field while one is open.
bool isKeyForFields(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_F2:
        case Qt::Key_Right:
        case Qt::Key_Left:
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
        case Qt::Key_F4:
            return true;
        default:
            return false;
    }
}

std::optional<OutlineState::Column> editableColumn(const QModelIndex& index) {
    switch (index.column()) {
        case OutlineTableModel::keyColumn:
            return OutlineState::Column::key;
        case OutlineTableModel::valueColumn:
            return OutlineState::Column::value;
        default:
            return std::nullopt;
    }
}

}  // namespace

PlistTable::PlistTable(const DocumentActions& actions, QWidget* parent)
    : OutlineView(actions.outline(), parent),
      actions_(actions),
      editors_(new CellEditors(*this, actions)),
      editing_(new InlineEditing(*this, actions)),
      dropping_(new RowDropping(*this, actions, *new RowDragging(*this, actions))) {
    // First, because screen readers ask as soon as something appears on the screen.
    AccessibleTable::install();
    showRows();
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &PlistTable::giveSelectionToOutline);
    connect(&outline(), &OutlineState::selectionChanged, this,
            &PlistTable::takeSelectionFromOutline);
}

PlistTable::~PlistTable() = default;

void PlistTable::setMatchIDs(std::span<const NodeId> ids) {
    keyCell().setMatchIDs(ids);
    viewport()->update();
}

void PlistTable::focusInEvent(QFocusEvent* event) {
    const bool hadCurrent = currentIndex().isValid();
    OutlineView::focusInEvent(event);
    if (!hadCurrent) {
        // The first arrow key is to go to the first row, not past it.
        selectionModel()->clearCurrentIndex();
    }
    AccessibleTable::announceCurrent(*this);
}

void PlistTable::paintEvent(QPaintEvent* event) {
    OutlineView::paintEvent(event);
    QPainter painter(viewport());
    dropping_->paint(painter);
}

void PlistTable::updateGeometries() {
    OutlineView::updateGeometries();
    editing_->place();
}

void PlistTable::rowsChanged() {
    // First the table knows of the new rows, then what is placed over them.
    OutlineView::rowsChanged();
    editing_->rowsChanged();
    editors_->rowsChanged();
    dropping_->rowsChanged();
}

// --- Keys and pointer ---

void PlistTable::keyPressEvent(QKeyEvent* event) {
    if (isKeyForFields(*event) && editing_->isOpen()) {
        // It comes from the open field, which has handled it.
        event->ignore();
    } else if (!handleKey(*event)) {
        OutlineView::keyPressEvent(event);
    }
}

bool PlistTable::handleKey(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_F2:
            actions_.beginEditing(OutlineState::Column::key);
            return true;
        case Qt::Key_Right:
            expandSelected(reachFor(event.modifiers()));
            return true;
        case Qt::Key_Left:
            actions_.collapseSelected(reachFor(event.modifiers()));
            return true;
        case Qt::Key_Space:
            return event.modifiers() == Qt::NoModifier && editors_->activateCurrent();
        case Qt::Key_F4:
            // What is being typed may be refused, and then stays open.
            if (commitEditing()) {
                editors_->showTypeMenuOfCurrent();
            }
            return true;
        case Qt::Key_F10:
            // The toolkit knows only the menu key, which many keyboards lack.
            if (event.modifiers() != Qt::ShiftModifier) {
                return false;
            }
            if (commitEditing()) {
                showRowMenuOfCurrent();
            }
            return true;
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            if ((event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
                actions_.deleteSelected();
                return true;
            }
            return false;
        default:
            return false;
    }
}

void PlistTable::expandSelected(OutlineState::Reach reach) {
    if (actions_.expandSelected(reach) == OutlineState::ExpandResult::tooManyRows) {
        Q_EMIT expansionRefused();
    }
}

void PlistTable::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Mouse) {
        showRowMenu(indexAt(event->pos()), event->pos());
    } else {
        showRowMenuOfCurrent();
    }
}

void PlistTable::showRowMenuOfCurrent() {
    const QModelIndex index = currentIndex();
    showRowMenu(index, visualRect(index).bottomLeft());
}

void PlistTable::showRowMenu(const QModelIndex& index, const QPoint& place) {
    if (index.isValid() && !selectionModel()->isRowSelected(index.row())) {
        outline().select({outlineModel().row(index.row()).nodeId()});
    }
    auto* menu = new RowMenu(actions_, this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu, &RowMenu::expansionRefused, this, &PlistTable::expansionRefused);
    menu->popup(viewport()->mapToGlobal(place));
}

void PlistTable::mousePressEvent(QMouseEvent* event) {
    const bool isHandled = event->button() == Qt::LeftButton &&
                           toggleAt(event->position().toPoint(), event->modifiers());
    pressed_ = QPersistentModelIndex();
    if (!isHandled) {
        OutlineView::mousePressEvent(event);
        pressed_ = indexAt(event->position().toPoint());
    }
}

void PlistTable::mouseReleaseEvent(QMouseEvent* event) {
    OutlineView::mouseReleaseEvent(event);
    const QPoint position = event->position().toPoint();
    const bool isClick = event->button() == Qt::LeftButton &&
                         event->modifiers() == Qt::NoModifier && pressed_.isValid() &&
                         indexAt(position) == pressed_;
    if (isClick) {
        editors_->click(pressed_, position);
    }
}

void PlistTable::mouseDoubleClickEvent(QMouseEvent* event) {
    // A double click on the control is two clicks.
    const bool isHandled = event->button() == Qt::LeftButton &&
                           toggleAt(event->position().toPoint(), event->modifiers());
    if (isHandled) {
        return;
    }
    OutlineView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton) {
        editAt(event->position().toPoint());
        editors_->doubleClick(indexAt(event->position().toPoint()));
    }
}

void PlistTable::editAt(const QPoint& position) {
    const QModelIndex index = indexAt(position);
    if (index.isValid()) {
        outline().setPointerColumn(editableColumn(index));
        actions_.beginEditing(outline().pointerColumn());
    }
}

bool PlistTable::toggleAt(const QPoint& position, Qt::KeyboardModifiers modifiers) {
    if (!isOnDisclosure(position)) {
        return false;
    }
    toggle(rowAt(position.y()), reachFor(modifiers));
    return true;
}

// --- Editing ---

bool PlistTable::commitEditing() {
    editors_->endEditing();
    return editing_->commit();
}

void PlistTable::endEditing() {
    editors_->endEditing();
    editing_->end();
}

bool PlistTable::isEditing() const {
    return editors_->isOpen() || editing_->isOpen();
}

QWidget* PlistTable::editorAt(const QModelIndex& index) const {
    QWidget* field = editing_->fieldAt(index);
    return field != nullptr ? field : editors_->fieldAt(index);
}

void PlistTable::activateCell(const QModelIndex& cell) {
    switch (cell.column()) {
        case OutlineTableModel::keyColumn:
            actions_.beginEditing(OutlineState::Column::key);
            break;
        case OutlineTableModel::typeColumn:
            editors_->showTypeMenuOfCurrent();
            break;
        default:
            if (!editors_->activateCurrent()) {
                actions_.beginEditing(OutlineState::Column::value);
            }
    }
}

// --- Selection ---

void PlistTable::takeSelectionFromOutline() {
    if (isSharingSelection_) {
        return;
    }
    const QScopedValueRollback sharing(isSharingSelection_, true);
    std::vector<int> rows;
    for (const OutlineRow& row : outline().selectedRows()) {
        rows.push_back(*outline().rowOf(row.node()));
    }
    const int first = rows.empty() ? -1 : *std::min_element(rows.begin(), rows.end());
    const QItemSelection selection = selectionOf(std::move(rows), outlineModel());
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (first >= 0 && !selection.contains(currentIndex())) {
        selectionModel()->setCurrentIndex(outlineModel().index(first, OutlineTableModel::keyColumn),
                                          QItemSelectionModel::NoUpdate);
        scrollTo(currentIndex());
    }
}

void PlistTable::giveSelectionToOutline() {
    // While rows come and go the outline maintains its selection itself.
    if (isSharingSelection_ || isChangingRows()) {
        return;
    }
    const QScopedValueRollback sharing(isSharingSelection_, true);
    NodeIdSet ids;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            ids.insert(outlineModel().row(row).nodeId());
        }
    }
    outline().select(ids);
}

// In these two the base class would tell screen readers child numbers that are not those of the
// table's accessible children, after listing all selected cells.

void PlistTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::currentChanged(current, previous);
    if (hasFocus()) {
        AccessibleTable::announceCurrent(*this);
    }
}

void PlistTable::selectionChanged(const QItemSelection& selected,
                                  const QItemSelection& deselected) {
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::selectionChanged(selected, deselected);
    AccessibleTable::announceSelection(*this);
}
