#pragma once

#include <span>

#include "app/model/tree/NodeId.h"
#include "app/model/tree/NodeIdSet.h"
#include "app/ui/table/view/OutlineDelegate.h"

/// Paints the key column: indentation, the disclosure control of a container, the key, and a
/// warning sign where the key is a duplicate.
class KeyCell : public OutlineDelegate {
    Q_OBJECT

public:
    using OutlineDelegate::OutlineDelegate;

    /// Where the parts of a cell are; a part that the cell does not have is an empty rectangle.
    struct Parts {
        QRect disclosure;
        QRect text;
        QRect duplicateSign;
    };

    /// Sets the nodes whose cells are marked as matches of a search.
    void setMatchIDs(std::span<const NodeId> ids);

    Parts parts(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                      const QModelIndex& index) const override;
    QRect textRect(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QString tooltipAt(const QPoint& position, const QStyleOptionViewItem& option,
                      const QModelIndex& index) const override;

private:
    static void paintMatch(QPainter& painter, const QStyleOptionViewItem& option);

    NodeIdSet matchIDs_;
};
