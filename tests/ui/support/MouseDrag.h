#pragma once

#include <QPoint>
#include <functional>

class QWidget;

/// A drag by the mouse, from the press of the button to its end.
class MouseDrag {
public:
    /// Chooses a platform for tests that has drags, which "offscreen" has not. Before the
    /// application is made.
    static void choosePlatform();

    /// Presses the left button at a point of `widget` and pulls to the side. If a drag begins,
    /// `during` goes on with it, and what it leaves open is cancelled. Otherwise the button is let
    /// go there. Whether a drag began.
    static bool run(QWidget& widget, const QPoint& from,
                    const std::function<void(const MouseDrag&)>& during,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Moves the pointer to a point of a widget on the screen, or lets go there.
    void moveTo(const QWidget& widget, const QPoint& position) const;
    void dropOn(const QWidget& widget, const QPoint& position) const;

private:
    MouseDrag() = default;
};
