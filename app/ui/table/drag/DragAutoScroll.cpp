#include "app/ui/table/drag/DragAutoScroll.h"

#include <QAbstractScrollArea>
#include <QScrollBar>
#include <algorithm>

#include "app/ui/look/CellMetrics.h"

DragAutoScroll::DragAutoScroll(QAbstractScrollArea& area, std::function<void()> scrolled)
    : area_(area), scrolled_(std::move(scrolled)), timer_(std::make_unique<DelayTimer>()) {}

DragAutoScroll::~DragAutoScroll() = default;

int DragAutoScroll::margin() const {
    return CellMetrics(area_.font()).rowHeight();
}

DragAutoScroll::Direction DragAutoScroll::directionAt(const QPoint& position) const {
    if (position.y() < margin()) {
        return Direction::up;
    }
    return position.y() >= area_.viewport()->height() - margin() ? Direction::down
                                                                 : Direction::none;
}

void DragAutoScroll::follow(const QPoint& position) {
    const Direction direction = directionAt(position);
    if (direction == direction_) {
        return;
    }
    stop();
    direction_ = direction;
    if (direction != Direction::none) {
        waitForStep();
    }
}

void DragAutoScroll::stop() {
    timer_->stop();
    direction_ = Direction::none;
    length_ = 0;
}

void DragAutoScroll::waitForStep() {
    timer_->start(interval, [this] { step(); });
}

void DragAutoScroll::step() {
    QScrollBar& bar = *area_.verticalScrollBar();
    length_ = std::min(length_ + acceleration, bar.pageStep());
    const int before = bar.value();
    bar.setValue(before + (direction_ == Direction::up ? -length_ : length_));
    if (bar.value() == before) {
        stop();
        return;
    }
    waitForStep();
    scrolled_();
}
