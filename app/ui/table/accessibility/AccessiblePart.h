#pragma once

#include <QAccessible>

class OutlineView;

/// What the headers and the cells of the outline have in common as a screen reader sees them: they
/// are no widgets, belong to one column, and contain nothing unless they say so.
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
