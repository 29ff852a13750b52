#pragma once

#include <QPoint>

class QMimeData;
class QWidget;

/// Something that is dragged over a widget, as the display system tells of it: the widget, and
/// those around it if it declines, get the events. Without a drag of this process it comes from
/// another.
class DragOver {
public:
    struct Answer {
        bool isAccepted = false;
        Qt::DropAction action = Qt::IgnoreAction;
    };

    /// Both must outlive this.
    DragOver(QWidget& widget, const QMimeData& data) : widget_(widget), data_(data) {}

    /// The pointer comes in, moves, leaves or lets go, in the coordinates of the widget.
    Answer enter(const QPoint& position);
    Answer move(const QPoint& position);
    Answer drop(const QPoint& position);
    void leave();

    /// All of it: comes in, moves and lets go in one place, if that is accepted.
    Answer enterAndDrop(const QPoint& position);

private:
    template <typename Event>
    Answer send(const QPoint& position, const Answer& before);

    QWidget& widget_;
    const QMimeData& data_;
    /// Who says nothing to a move has the same to say as before.
    Answer last_;
};
