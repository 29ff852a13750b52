#pragma once

#include <QObject>
#include <QPoint>

#include "app/model/actions/DocumentActions.h"
#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNodePtr.h"

class OutlineView;
class QMouseEvent;
class QPixmap;
struct PlistTransfer;

/// Lets the user drag the rows of a view by their keys. Watches the mouse in the view.
///
/// Dragging itself changes nothing: rows are moved only by being dropped on the same view, and
/// nothing is deleted because another window or program took a copy.
class RowDragging : public QObject {
    Q_OBJECT

public:
    /// Belongs to `view`; whatever `actions` refers to must outlive it.
    RowDragging(OutlineView& view, const DocumentActions& actions);

    /// Whether the node is being dragged, by itself or with an ancestor.
    bool isDragged(const PlistNode& node) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void notePress(const QMouseEvent& event);
    bool followMove(const QMouseEvent& event);
    void drag(PlistNode& node);
    QPixmap pixmap(const PlistTransfer& transfer) const;

    OutlineView& view_;
    DocumentActions actions_;
    PlistNodePtr pressed_;
    QPoint pressedAt_;
    NodeIdSet dragged_;
};
