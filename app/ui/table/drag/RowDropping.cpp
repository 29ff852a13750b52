#include "app/ui/table/drag/RowDropping.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "app/desktop/pasteboard/PasteboardData.h"
#include "app/model/actions/PlistTransfer.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/dialogs/TransferReading.h"
#include "app/ui/table/drag/RowDragging.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/table/view/OutlineView.h"

namespace {

/// Whether exactly these nodes are next to the place already, on one or both sides, so that moving
/// them there would only add an entry to the undo history.
bool areAlreadyAt(const InsertionPoint& place, const std::vector<NodeId>& ids) {
    if (ids.empty()) {
        return false;
    }
    const std::span<const PlistNodePtr> children = place.container->children();
    const auto count = static_cast<qint64>(ids.size());
    const qint64 last = std::min(place.index, static_cast<qint64>(children.size()) - count);
    for (qint64 start = std::max<qint64>(place.index - count, 0); start <= last; ++start) {
        const auto block =
            children.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
        if (block.front()->id() == ids.front()) {
            return std::ranges::equal(block, ids, {}, &PlistNode::id);
        }
    }
    return false;
}

}  // namespace

RowDropping::RowDropping(OutlineView& view, const DocumentActions& actions,
                         const RowDragging& dragging)
    : QObject(&view),
      view_(view),
      actions_(actions),
      dragging_(dragging),
      springLoading_(actions.outline()),
      autoScroll_(view, [this] { update(); }) {
    view.viewport()->setAcceptDrops(true);
    view.viewport()->installEventFilter(this);
}

RowDropping::~RowDropping() = default;

void RowDropping::setTimers(std::unique_ptr<DelayTimer> hover, std::unique_ptr<DelayTimer> scroll) {
    springLoading_.setTimer(std::move(hover));
    autoScroll_.setTimer(std::move(scroll));
}

void RowDropping::paint(QPainter& painter) const {
    if (indicator_) {
        indicator_->paint(painter, view_.palette());
    }
}

bool RowDropping::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove:
            follow(static_cast<QDropEvent&>(*event));
            return true;
        case QEvent::DragLeave:
            leave();
            return true;
        case QEvent::Drop:
            drop(static_cast<QDropEvent&>(*event));
            return true;
        default:
            return QObject::eventFilter(watched, event);
    }
}

// --- Events ---

bool RowDropping::canAccept(const QDropEvent& event) const {
    const QMimeData& data = *event.mimeData();
    return actions_.canAddItem() && PasteboardData::hasTransfer(data) && !data.hasUrls();
}

Qt::DropAction RowDropping::actionFor(const QDropEvent& event) const {
    return event.source() == &view_ ? Qt::MoveAction : Qt::CopyAction;
}

void RowDropping::follow(QDropEvent& event) {
    if (!canAccept(event)) {
        event.ignore();
        return;
    }
    const bool isNew = !pointer_;
    pointer_ = event.position().toPoint();
    update();
    if (isNew) {
        Q_EMIT hoveredChanged(true);
    }
    event.setDropAction(actionFor(event));
    // A target that refuses the entry gets no moves, which may lead to a better place.
    event.setAccepted(event.type() == QEvent::DragEnter || indicator_.has_value());
}

void RowDropping::leave() {
    springLoading_.stop();
    autoScroll_.stop();
    setIndicator(std::nullopt);
    if (std::exchange(pointer_, std::nullopt)) {
        Q_EMIT hoveredChanged(false);
    }
}

void RowDropping::drop(QDropEvent& event) {
    const qint64 position = positionAt(event.position().toPoint());
    leave();
    event.ignore();
    const std::optional<InsertionPoint> place = placeFor(position);
    if (!canAccept(event) || !place) {
        return;
    }
    const std::optional<PlistTransfer> transfer =
        TransferReading::read(*event.mimeData(), *place->container, *view_.window(),
                              tr("The dropped items can't be inserted."));
    if (!transfer) {
        return;
    }
    event.setDropAction(actionFor(event));
    event.accept();
    view_.setFocus();
    view_.endEditing();
    if (event.source() == &view_ && areAlreadyAt(*place, transfer->sourceIDs)) {
        return;
    }
    const auto origin = event.source() == nullptr ? DocumentActions::DragOrigin::elsewhere
                                                  : DocumentActions::DragOrigin::thisProcess;
    actions_.drop({&*transfer, 1}, position, origin);
}

// --- Places ---

void RowDropping::update() {
    if (!pointer_) {
        return;
    }
    const qint64 position = positionAt(*pointer_);
    const std::optional<InsertionPoint> place = placeFor(position);
    setIndicator(place ? std::optional(DropIndicator::below(position, *place->container, view_))
                       : std::nullopt);
    springLoading_.follow(collapsedContainerAt(*pointer_));
    autoScroll_.follow(*pointer_);
}

void RowDropping::setIndicator(std::optional<DropIndicator> indicator) {
    if (indicator != indicator_) {
        indicator_ = indicator;
        view_.viewport()->update();
    }
}

qint64 RowDropping::positionAt(const QPoint& point) const {
    const int row = view_.rowAt(point.y());
    if (row < 0) {
        return point.y() < 0 ? 0 : view_.outlineModel().rowCount();
    }
    const int middle = view_.rowViewportPosition(row) + view_.rowHeight(row) / 2;
    return point.y() < middle ? row : row + 1;
}

/// Nothing if a drop is not possible there: rows cannot be put into themselves.
std::optional<InsertionPoint> RowDropping::placeFor(qint64 position) const {
    const std::optional<InsertionPoint> place =
        InsertionPoint::forDrop(actions_.outline(), actions_.document().root(), position);
    return place && !dragging_.isDragged(*place->container) ? place : std::nullopt;
}

PlistNode* RowDropping::collapsedContainerAt(const QPoint& point) const {
    const int number = view_.rowAt(point.y());
    if (number < 0) {
        return nullptr;
    }
    const OutlineRow& row = view_.outlineModel().row(number);
    const bool isClosed = row.node().isContainer() && !row.isExpanded();
    return isClosed && !dragging_.isDragged(row.node()) ? &row.node() : nullptr;
}
