#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QItemSelectionModel>
#include <QObject>
#include <utility>

#include "app/model/tree/NodeId.h"

class AccessibleCell;
class OutlineView;

/// The outline for screen readers. Qt's own accessible table knows neither levels nor expansion,
/// and visits all selected cells whenever the selection changes.
///
/// Its children are the three headers and then the cells, row by row. Cells are created when they
/// are asked for and dropped when their rows are gone.
class AccessibleTable : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    /// From now on every `OutlineView` is represented by this class.
    static void install();

    /// Announces that another cell has the keyboard focus.
    static void announceCurrent(OutlineView& view);

    /// Announces that other rows are selected.
    static void announceSelection(OutlineView& view);

    explicit AccessibleTable(OutlineView& view);
    ~AccessibleTable() override;

    void* interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface* child(int number) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

    QAccessibleInterface* caption() const override;
    QAccessibleInterface* summary() const override;
    QAccessibleInterface* cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int selectedColumnCount() const override;
    int selectedRowCount() const override;
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override;
    QList<int> selectedRows() const override;
    bool isColumnSelected(int column) const override;
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int column) override;
    bool unselectRow(int row) override;
    bool unselectColumn(int column) override;
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

private:
    using Place = std::pair<NodeId, int>;  ///< a node and a column

    static AccessibleCell* knownCell(QAccessible::Id id);

    OutlineView& view() const;
    QAccessibleInterface* headerAt(int column) const;
    void dropCellsWithoutRow();
    void announceRows(int first, int last);
    bool setRow(int row, QItemSelectionModel::SelectionFlags command);

    mutable QHash<Place, QAccessible::Id> cells_;
    mutable QHash<int, QAccessible::Id> headers_;
    QObject context_;  ///< its connections end with this object
};
