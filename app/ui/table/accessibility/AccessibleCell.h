#pragma once

#include <QCoreApplication>
#include <QModelIndex>

#include "app/model/tree/PlistNodePtr.h"
#include "app/ui/table/accessibility/AccessiblePart.h"

/// A cell of the outline as a screen reader sees it: its text, where it stands in the tree, and
/// what can be done with it. It follows its node wherever the row of that goes.
class AccessibleCell : public AccessiblePart,
                       public QAccessibleTableCellInterface,
                       public QAccessibleActionInterface {
    Q_DECLARE_TR_FUNCTIONS(AccessibleCell)

public:
    /// `view` must outlive the cell; `column` is one of the model's.
    AccessibleCell(OutlineView& view, PlistNodePtr node, int column);
    ~AccessibleCell() override;

    /// Where the cell is now; invalid if its node has no row.
    QModelIndex index() const;

    /// Says the name and the description anew; for a row that shows something else than before.
    void announceChange();

    bool isValid() const override;
    int childCount() const override;
    QAccessibleInterface* child(int number) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override;
    int columnIndex() const override;
    int rowIndex() const override;
    int columnExtent() const override;
    int rowExtent() const override;
    QAccessibleInterface* table() const override;

    QStringList actionNames() const override;
    QString localizedActionName(const QString& name) const override;
    QString localizedActionDescription(const QString& name) const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& name) const override;

private:
    bool canExpand() const;
    QString valueAction() const;

    PlistNodePtr node_;
};
