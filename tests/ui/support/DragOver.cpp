#include "tests/ui/support/DragOver.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QWidget>

template <typename Event>
DragOver::Answer DragOver::send(const QPoint& position, const Answer& before) {
    Event event(position, Qt::CopyAction | Qt::MoveAction, &data_, Qt::LeftButton, Qt::NoModifier);
    event.setAccepted(before.isAccepted);
    if (before.isAccepted) {
        event.setDropAction(before.action);
    }
    QCoreApplication::sendEvent(&widget_, &event);
    return last_ = {event.isAccepted(), event.dropAction()};
}

DragOver::Answer DragOver::enter(const QPoint& position) {
    return send<QDragEnterEvent>(position, {});
}

DragOver::Answer DragOver::move(const QPoint& position) {
    return send<QDragMoveEvent>(position, last_);
}

DragOver::Answer DragOver::drop(const QPoint& position) {
    return send<QDropEvent>(position, {});
}

void DragOver::leave() {
    QDragLeaveEvent event;
    QCoreApplication::sendEvent(&widget_, &event);
}

DragOver::Answer DragOver::enterAndDrop(const QPoint& position) {
    if (const Answer answer = enter(position); !answer.isAccepted) {
        return answer;
    }
    if (const Answer answer = move(position); !answer.isAccepted) {
        leave();
        return answer;
    }
    return drop(position);
}
