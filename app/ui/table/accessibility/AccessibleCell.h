#pragma once

#include <QAccessible>
#include <QCoreApplication>
#include <QModelIndex>

#include "app/model/tree/PlistNodePtr.h"

class OutlineView;

/// What headers and cells of the outline have in common for screen readers: they are not widgets,
/// belong to one column, and have no children unless they say so.
class AccessiblePart : public QAccessibleInterface {
public:
    /// `view` must outlive the part; `column` is one of the model's.
    AccessiblePart(OutlineView& view, int column) : view_(view), column_(column) {}

    int column() const noexcept { return column_; }

    bool isValid() const override;
    QObject* object() const override;
    QAccessibleInterface* parent() const override;
    int childCount() const override;
    QAccessibleInterface* child(int number) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    void setText(QAccessible::Text kind, const QString& text) override;

protected:
    OutlineView& view() const noexcept { return view_; }

private:
    OutlineView& view_;
    int column_;
};

/// The header of a column of the outline, for screen readers.
class AccessibleHeader : public AccessiblePart {
public:
    using AccessiblePart::AccessiblePart;

    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
};

/// A cell of the outline, for screen readers: its text, its level in the tree, and what can be done
/// with it. It follows its node wherever the row of that moves.
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

    /// Announces the name and the description again, because the row shows something else now.
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
