#include "app/ui/table/accessibility/AccessibleTable.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <utility>

#include "app/model/tree/PlistNode.h"
#include "app/ui/table/accessibility/AccessibleCell.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/table/view/OutlineView.h"

namespace {

constexpr int columns = OutlineTableModel::columnTotal;

QAccessibleInterface* make(const QString& className, QObject* object) {
    auto* table =
        className == QLatin1String("OutlineView") ? qobject_cast<OutlineView*>(object) : nullptr;
    return table != nullptr ? new AccessibleTable(*table) : nullptr;
}

int childNumber(const QModelIndex& index) {
    return (index.row() + 1) * columns + index.column();
}

void announce(OutlineView& view, const QModelIndex& index, QAccessible::Event kind) {
    QAccessibleEvent event(&view, kind);
    event.setChild(childNumber(index));
    QAccessible::updateAccessibility(&event);
}

}  // namespace

void AccessibleTable::install() {
    QAccessible::installFactory(make);
}

void AccessibleTable::announceCurrent(OutlineView& view) {
    if (QAccessible::isActive() && view.currentIndex().isValid()) {
        announce(view, view.currentIndex(), QAccessible::Focus);
    }
}

void AccessibleTable::announceSelection(OutlineView& view) {
    QAccessibleEvent event(&view, QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&event);
}

AccessibleTable::AccessibleTable(OutlineView& view) : QAccessibleWidget(&view, QAccessible::Table) {
    const OutlineState* outline = &view.outline();
    QObject::connect(outline, &OutlineState::rowsChanged, &context_,
                     [this] { dropCellsWithoutRow(); });
    QObject::connect(&view.outlineModel(), &QAbstractItemModel::dataChanged, &context_,
                     [this](const QModelIndex& first, const QModelIndex& last) {
                         announceRows(first.row(), last.row());
                     });
}

AccessibleTable::~AccessibleTable() {
    for (const QAccessible::Id id : std::as_const(cells_)) {
        QAccessible::deleteAccessibleInterface(id);
    }
    for (const QAccessible::Id id : std::as_const(headers_)) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

OutlineView& AccessibleTable::view() const {
    return *static_cast<OutlineView*>(widget());
}

// --- Cells that have been asked for ---

AccessibleCell* AccessibleTable::knownCell(QAccessible::Id id) {
    return static_cast<AccessibleCell*>(QAccessible::accessibleInterface(id));
}

QAccessibleInterface* AccessibleTable::cellAt(int row, int column) const {
    if (row < 0 || row >= rowCount() || column < 0 || column >= columns) {
        return nullptr;
    }
    PlistNode& node = view().outlineModel().row(row).node();
    QAccessible::Id& id = cells_[{node.id(), column}];
    if (id == 0) {
        id = QAccessible::registerAccessibleInterface(
            new AccessibleCell(view(), PlistNodePtr(&node), column));
    }
    return QAccessible::accessibleInterface(id);
}

QAccessibleInterface* AccessibleTable::headerAt(int column) const {
    QAccessible::Id& id = headers_[column];
    if (id == 0) {
        id = QAccessible::registerAccessibleInterface(new AccessibleHeader(view(), column));
    }
    return QAccessible::accessibleInterface(id);
}

void AccessibleTable::dropCellsWithoutRow() {
    cells_.removeIf([](const auto& entry) {
        const bool isGone = !knownCell(entry.value())->isValid();
        if (isGone) {
            QAccessible::deleteAccessibleInterface(entry.value());
        }
        return isGone;
    });
}

void AccessibleTable::announceRows(int first, int last) {
    for (const QAccessible::Id id : std::as_const(cells_)) {
        AccessibleCell* cell = knownCell(id);
        const int row = cell->index().row();
        if (row >= first && row <= last) {
            cell->announceChange();
        }
    }
}

// --- Children ---

void* AccessibleTable::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

int AccessibleTable::childCount() const {
    return (rowCount() + 1) * columns;
}

QAccessibleInterface* AccessibleTable::child(int number) const {
    if (number < 0 || number >= childCount()) {
        return nullptr;
    }
    return number < columns ? headerAt(number) : cellAt(number / columns - 1, number % columns);
}

int AccessibleTable::indexOfChild(const QAccessibleInterface* child) const {
    if (const auto* cell = dynamic_cast<const AccessibleCell*>(child)) {
        const QModelIndex index = cell->index();
        return index.isValid() ? childNumber(index) : -1;
    }
    const auto* header = dynamic_cast<const AccessibleHeader*>(child);
    return header != nullptr ? header->column() : -1;
}

QAccessibleInterface* AccessibleTable::childAt(int x, int y) const {
    const QPoint global(x, y);
    const QHeaderView& header = *view().horizontalHeader();
    const QPoint inHeader = header.viewport()->mapFromGlobal(global);
    if (header.viewport()->rect().contains(inHeader)) {
        const int column = header.logicalIndexAt(inHeader);
        return column >= 0 ? headerAt(column) : nullptr;
    }
    const QModelIndex index = view().indexAt(view().viewport()->mapFromGlobal(global));
    return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
}

QAccessibleInterface* AccessibleTable::focusChild() const {
    const QModelIndex current = view().currentIndex();
    return current.isValid() ? cellAt(current.row(), current.column()) : nullptr;
}

// --- The table ---

QAccessibleInterface* AccessibleTable::caption() const {
    return nullptr;
}

QAccessibleInterface* AccessibleTable::summary() const {
    return nullptr;
}

int AccessibleTable::rowCount() const {
    return view().outlineModel().rowCount();
}

int AccessibleTable::columnCount() const {
    return columns;
}

QString AccessibleTable::columnDescription(int column) const {
    return view().outlineModel().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

QString AccessibleTable::rowDescription(int) const {
    return {};
}

int AccessibleTable::selectedCellCount() const {
    return selectedRowCount() * columns;
}

QList<QAccessibleInterface*> AccessibleTable::selectedCells() const {
    QList<QAccessibleInterface*> cells;
    for (const int row : selectedRows()) {
        for (int column = 0; column < columns; ++column) {
            cells += cellAt(row, column);
        }
    }
    return cells;
}

int AccessibleTable::selectedColumnCount() const {
    return 0;
}

QList<int> AccessibleTable::selectedColumns() const {
    return {};
}

bool AccessibleTable::isColumnSelected(int) const {
    return false;
}

bool AccessibleTable::selectColumn(int) {
    return false;
}

bool AccessibleTable::unselectColumn(int) {
    return false;
}

int AccessibleTable::selectedRowCount() const {
    int count = 0;
    for (const QItemSelectionRange& range : view().selectionModel()->selection()) {
        count += range.height();
    }
    return count;
}

QList<int> AccessibleTable::selectedRows() const {
    QList<int> rows;
    for (const QItemSelectionRange& range : view().selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows += row;
        }
    }
    return rows;
}

bool AccessibleTable::isRowSelected(int row) const {
    return view().selectionModel()->isRowSelected(row);
}

bool AccessibleTable::selectRow(int row) {
    return setRow(row, QItemSelectionModel::Select);
}

bool AccessibleTable::unselectRow(int row) {
    return setRow(row, QItemSelectionModel::Deselect);
}

bool AccessibleTable::setRow(int row, QItemSelectionModel::SelectionFlags command) {
    if (row < 0 || row >= rowCount()) {
        return false;
    }
    view().selectionModel()->select(view().outlineModel().index(row, 0),
                                    command | QItemSelectionModel::Rows);
    return true;
}

void AccessibleTable::modelChange(QAccessibleTableModelChangeEvent*) {
    // Cells follow their nodes, and the outline says when rows are gone.
}
