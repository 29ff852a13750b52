#pragma once

#include <QObject>
#include <QPoint>
#include <memory>
#include <optional>

#include "app/model/actions/DocumentActions.h"
#include "app/model/actions/InsertionPoint.h"
#include "app/model/runtime/DelayTimer.h"
#include "app/ui/table/drag/DragAutoScroll.h"
#include "app/ui/table/drag/DropIndicator.h"
#include "app/ui/table/drag/SpringLoading.h"

class OutlineView;
class QDropEvent;
class QPainter;
class RowDragging;

/// Accepts what is dropped between the rows of a view: items of this and of other windows and
/// programs. Watches drags over the view and shows where they would go.
///
/// Rows of the same view are moved. Everything else is copied, whatever its source proposes, so
/// that no source has a reason to delete it. Files are left to the window.
class RowDropping : public QObject {
    Q_OBJECT

public:
    /// Belongs to `view`; `dragging` and whatever `actions` refers to must outlive it.
    RowDropping(OutlineView& view, const DocumentActions& actions, const RowDragging& dragging);
    ~RowDropping() override;

    /// Takes other timers, for tests: that of spring loading and that of scrolling.
    void setTimers(std::unique_ptr<DelayTimer> hover, std::unique_ptr<DelayTimer> scroll);

    /// Where the drag over the view would go; nothing without a drag, or if it cannot be dropped
    /// there.
    const std::optional<DropIndicator>& indicator() const noexcept { return indicator_; }

    /// The view has other rows: the drag over it goes elsewhere now.
    void rowsChanged() { update(); }

    /// Paints the indicator over the rows.
    void paint(QPainter& painter) const;

Q_SIGNALS:
    /// A drag that can be dropped has entered the view, or has left it.
    void hoveredChanged(bool isHovered);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool canAccept(const QDropEvent& event) const;
    Qt::DropAction actionFor(const QDropEvent& event) const;
    void follow(QDropEvent& event);
    void leave();
    void drop(QDropEvent& event);

    void update();
    void setIndicator(std::optional<DropIndicator> indicator);
    qint64 positionAt(const QPoint& point) const;
    std::optional<InsertionPoint> placeFor(qint64 position) const;
    PlistNode* collapsedContainerAt(const QPoint& point) const;

    OutlineView& view_;
    DocumentActions actions_;
    const RowDragging& dragging_;
    SpringLoading springLoading_;
    DragAutoScroll autoScroll_;
    std::optional<QPoint> pointer_;
    std::optional<DropIndicator> indicator_;
};
