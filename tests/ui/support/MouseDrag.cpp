#include "tests/ui/support/MouseDrag.h"

#include <QApplication>
#include <QDrag>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>

namespace {

void send(QWidget& widget, QEvent::Type type, const QPoint& position,
          Qt::KeyboardModifiers modifiers) {
    const bool isMove = type == QEvent::MouseMove;
    const bool isRelease = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, position, widget.mapToGlobal(QPointF(position)),
                      isMove ? Qt::NoButton : Qt::LeftButton,
                      isRelease ? Qt::NoButton : Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(&widget, &event);
}

/// While something is dragged the mouse belongs to the drag, which asks only where on the screen it
/// is.
void sendToDrag(QEvent::Type type, const QWidget& over, const QPoint& position) {
    const QPoint place = over.mapToGlobal(position);
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, place, place, isMove ? Qt::NoButton : Qt::LeftButton,
                      isMove ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
}

}  // namespace

void MouseDrag::choosePlatform() {
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
}

bool MouseDrag::run(QWidget& widget, const QPoint& from,
                    const std::function<void(const MouseDrag&)>& during,
                    Qt::KeyboardModifiers modifiers) {
    bool hasBegun = false;
    QTimer next;
    next.setSingleShot(true);
    QObject::connect(&next, &QTimer::timeout, [&hasBegun, &during] {
        hasBegun = true;
        during(MouseDrag());
        QDrag::cancel();
    });
    send(widget, QEvent::MouseButtonPress, from, modifiers);
    const QPoint pulled = from + QPoint(QApplication::startDragDistance(), 0);
    // A drag runs an event loop of its own, which is where the timer ends.
    next.start(0);
    send(widget, QEvent::MouseMove, pulled, modifiers);
    next.stop();
    if (!hasBegun) {
        send(widget, QEvent::MouseButtonRelease, pulled, modifiers);
    }
    // Qt still delivers the release that has ended a drag, which would end the next one too.
    QCoreApplication::processEvents();
    return hasBegun;
}

void MouseDrag::moveTo(const QWidget& widget, const QPoint& position) const {
    sendToDrag(QEvent::MouseMove, widget, position);
}

void MouseDrag::dropOn(const QWidget& widget, const QPoint& position) const {
    moveTo(widget, position);
    sendToDrag(QEvent::MouseButtonRelease, widget, position);
}
