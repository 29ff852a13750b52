#pragma once

#include "app/ui/table/view/OutlineDelegate.h"

/// The type column: the name of the type, with a sign that there is a choice in the row that the
/// pointer or the selection is on.
class TypeCell : public OutlineDelegate {
    Q_OBJECT

public:
    using OutlineDelegate::OutlineDelegate;

protected:
    void paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                      const QModelIndex& index) const override;
};
