#pragma once

#include <QAccessible>

class PlistTable;

/// The header of a column of the outline as a screen reader sees it.
class AccessibleHeader : public QAccessibleInterface {
public:
    /// `table` must outlive the header.
    AccessibleHeader(PlistTable& table, int column);

    bool isValid() const override;
    QObject* object() const override;
    QAccessibleInterface* parent() const override;
    int childCount() const override;
    QAccessibleInterface* child(int number) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString& text) override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;

    int column() const noexcept { return column_; }

private:
    PlistTable& table_;
    int column_;
};
