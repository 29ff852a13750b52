#pragma once

#include <QPoint>
#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "app/model/runtime/DelayTimer.h"

class QAbstractScrollArea;

/// Scrolls an area while a drag rests near its upper or lower edge; the longer it rests, the
/// faster.
class DragAutoScroll {
public:
    /// The time between two steps, as in Qt's item views.
    static constexpr std::chrono::milliseconds interval{50};

    /// By how much each step is longer than the one before, in pixels.
    static constexpr int acceleration = 2;

    /// `area` must outlive this. `scrolled` is called after each step.
    DragAutoScroll(QAbstractScrollArea& area, std::function<void()> scrolled);
    ~DragAutoScroll();

    /// Takes another timer, for tests.
    void setTimer(std::unique_ptr<DelayTimer> timer) { timer_ = std::move(timer); }

    /// The drag is at this point of the viewport.
    void follow(const QPoint& position);

    /// The drag has left.
    void stop();

private:
    enum class Direction { none, up, down };

    /// How close to an edge the area scrolls, in pixels: the height of a row.
    int margin() const;
    Direction directionAt(const QPoint& position) const;
    void waitForStep();
    void step();

    QAbstractScrollArea& area_;
    std::function<void()> scrolled_;
    std::unique_ptr<DelayTimer> timer_;
    Direction direction_ = Direction::none;
    int length_ = 0;
};
