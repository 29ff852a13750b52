#pragma once

#include "app/ui/table/view/OutlineCell.h"

/// The type column: the name of the type, with a sign that there is a choice in the row that the
/// pointer or the selection is on.
class TypeCell : public OutlineCell {
    Q_OBJECT

public:
    using OutlineCell::OutlineCell;

protected:
    void paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                      const QModelIndex& index) const override;
};
