#pragma once

#include "app/ui/table/view/OutlineDelegate.h"

/// Paints the type column: the name of the type and, in selected rows and under the pointer, an
/// arrow which says that there is a menu.
class TypeCell : public OutlineDelegate {
    Q_OBJECT

public:
    using OutlineDelegate::OutlineDelegate;

protected:
    void paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                      const QModelIndex& index) const override;
};
