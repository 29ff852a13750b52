#pragma once

#include "app/ui/table/view/OutlineDelegate.h"

/// Paints the value column: the text of a scalar, with a check box before that of a boolean, or the
/// number of items of a container.
class ValueCell : public OutlineDelegate {
    Q_OBJECT

public:
    using OutlineDelegate::OutlineDelegate;

    /// Where the check box of a boolean is; empty for other rows.
    QRect checkBoxRect(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    /// Where the summary of data is, which works like a link; empty for other rows.
    QRect linkRect(const QStyleOptionViewItem& option, const QModelIndex& index) const;

protected:
    void paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                      const QModelIndex& index) const override;
};
