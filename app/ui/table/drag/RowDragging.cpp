#include "app/ui/table/drag/RowDragging.h"

#include <QApplication>
#include <QDrag>
#include <QMouseEvent>
#include <QPixmap>
#include <QPointer>
#include <utility>

#include "app/desktop/pasteboard/PasteboardData.h"
#include "app/model/actions/PlistTransfer.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/table/drag/DragPixmap.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/table/view/OutlineView.h"
#include "app/ui/text/RowText.h"

namespace {

/// The hot spot of the picture, which is beside the pointer so that it does not cover the drop
/// indicator.
constexpr QPoint grip{-12, -8};

}  // namespace

RowDragging::RowDragging(OutlineView& view, const DocumentActions& actions)
    : QObject(&view), view_(view), actions_(actions) {
    view.viewport()->installEventFilter(this);
}

bool RowDragging::isDragged(const PlistNode& node) const {
    const PlistNode* above = &node;
    while (above != nullptr && !dragged_.contains(above->id())) {
        above = above->parent();
    }
    return above != nullptr;
}

bool RowDragging::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            notePress(static_cast<const QMouseEvent&>(*event));
            return false;
        case QEvent::MouseMove:
            return followMove(static_cast<const QMouseEvent&>(*event));
        case QEvent::MouseButtonRelease:
            pressed_ = PlistNodePtr();
            return false;
        default:
            return QObject::eventFilter(watched, event);
    }
}

void RowDragging::notePress(const QMouseEvent& event) {
    const QPoint position = event.position().toPoint();
    const QModelIndex index = view_.indexAt(position);
    // With a modifier the mouse extends the selection.
    const bool canDrag = event.button() == Qt::LeftButton && event.modifiers() == Qt::NoModifier &&
                         index.isValid() && index.column() == OutlineTableModel::keyColumn &&
                         !view_.isOnDisclosure(position);
    pressed_ =
        canDrag ? PlistNodePtr(&view_.outlineModel().row(index.row()).node()) : PlistNodePtr();
    pressedAt_ = position;
}

/// Whether the move belongs to a drag. The view would select the rows that it passes.
bool RowDragging::followMove(const QMouseEvent& event) {
    if (!pressed_ || !event.buttons().testFlag(Qt::LeftButton)) {
        return false;
    }
    const int distance = (event.position().toPoint() - pressedAt_).manhattanLength();
    if (distance >= QApplication::startDragDistance()) {
        const PlistNodePtr node = std::exchange(pressed_, PlistNodePtr());
        if (actions_.outline().rowOf(*node)) {
            drag(*node);
        }
    }
    return true;
}

void RowDragging::drag(PlistNode& node) {
    PlistTransfer transfer = actions_.dragItems(node);
    if (transfer.entries.empty()) {
        return;
    }
    for (const NodeId id : transfer.sourceIDs) {
        dragged_.insert(id);
    }
    auto* drag = new QDrag(&view_);
    // The window may be closed before the drag ends; Qt deletes the drag by itself.
    drag->setParent(nullptr);
    drag->setPixmap(pixmap(transfer));
    drag->setHotSpot(grip);
    drag->setMimeData(new PasteboardData(std::move(transfer)));
    const QPointer<RowDragging> self(this);
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
    if (self) {
        dragged_.clear();
    }
}

QPixmap RowDragging::pixmap(const PlistTransfer& transfer) const {
    const OutlineState& outline = actions_.outline();
    QStringList names;
    for (const NodeId id : transfer.sourceIDs) {
        if (names.size() == DragPixmap::longest) {
            break;
        }
        if (const std::optional<int> row = outline.rowForId(id)) {
            names += RowText::key(outline.rows()[static_cast<std::size_t>(*row)]);
        }
    }
    return DragPixmap::of(names, static_cast<qsizetype>(transfer.entries.size()), view_);
}
