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

/// Whether exactly these nodes stand on both or one side of the place already, so that moving them
/// there would only be an entry in the undo list.
bool standAt(const InsertionPoint& place, const std::vector<NodeId>& ids) {
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

RowDropping::RowDropping(OutlineView& table, const DocumentActions& actions,
                         const RowDragging& dragging)
    : QObject(&table),
      table_(table),
      actions_(actions),
      dragging_(dragging),
      hover_(actions.outline()),
      scrolling_(table, [this] { update(); }) {
    table.viewport()->setAcceptDrops(true);
    table.viewport()->installEventFilter(this);
}

RowDropping::~RowDropping() = default;

void RowDropping::setAlarms(std::unique_ptr<Alarm> hover, std::unique_ptr<Alarm> scroll) {
    hover_.setAlarm(std::move(hover));
    scrolling_.setAlarm(std::move(scroll));
}

void RowDropping::paint(QPainter& painter) const {
    if (line_) {
        line_->paint(painter, table_.palette());
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

bool RowDropping::isWelcome(const QDropEvent& event) const {
    const QMimeData& data = *event.mimeData();
    return actions_.canAddItem() && PasteboardData::hasTransfer(data) && !data.hasUrls();
}

Qt::DropAction RowDropping::actionFor(const QDropEvent& event) const {
    return event.source() == &table_ ? Qt::MoveAction : Qt::CopyAction;
}

void RowDropping::follow(QDropEvent& event) {
    if (!isWelcome(event)) {
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
    // Who declines to be entered hears of no moves, which may lead to a better place.
    event.setAccepted(event.type() == QEvent::DragEnter || line_.has_value());
}

void RowDropping::leave() {
    hover_.stop();
    scrolling_.stop();
    setLine(std::nullopt);
    if (std::exchange(pointer_, std::nullopt)) {
        Q_EMIT hoveredChanged(false);
    }
}

void RowDropping::drop(QDropEvent& event) {
    const qint64 position = positionAt(event.position().toPoint());
    leave();
    event.ignore();
    const std::optional<InsertionPoint> place = placeFor(position);
    if (!isWelcome(event) || !place) {
        return;
    }
    const std::optional<PlistTransfer> transfer =
        TransferReading::read(*event.mimeData(), *place->container, *table_.window(),
                              tr("What you dropped cannot be inserted."));
    if (!transfer) {
        return;
    }
    event.setDropAction(actionFor(event));
    event.accept();
    table_.setFocus();
    table_.endEditing();
    if (event.source() == &table_ && standAt(*place, transfer->sourceIDs)) {
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
    setLine(place ? std::optional(DropLine::below(position, *place->container, table_))
                  : std::nullopt);
    hover_.follow(collapsedContainerAt(*pointer_));
    scrolling_.follow(*pointer_);
}

void RowDropping::setLine(std::optional<DropLine> line) {
    if (line != line_) {
        line_ = line;
        table_.viewport()->update();
    }
}

qint64 RowDropping::positionAt(const QPoint& point) const {
    const int row = table_.rowAt(point.y());
    if (row < 0) {
        return point.y() < 0 ? 0 : table_.outlineModel().rowCount();
    }
    const int middle = table_.rowViewportPosition(row) + table_.rowHeight(row) / 2;
    return point.y() < middle ? row : row + 1;
}

/// Nothing where no place is: rows cannot be put into themselves.
std::optional<InsertionPoint> RowDropping::placeFor(qint64 position) const {
    const std::optional<InsertionPoint> place =
        InsertionPoint::forDrop(actions_.outline(), actions_.document().root(), position);
    return place && !dragging_.isDragged(*place->container) ? place : std::nullopt;
}

PlistNode* RowDropping::collapsedContainerAt(const QPoint& point) const {
    const int number = table_.rowAt(point.y());
    if (number < 0) {
        return nullptr;
    }
    const OutlineRow& row = table_.outlineModel().row(number);
    const bool isClosed = row.node().isContainer() && !row.isExpanded();
    return isClosed && !dragging_.isDragged(row.node()) ? &row.node() : nullptr;
}
