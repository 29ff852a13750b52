#include "app/ui/table/drag/EdgeScrolling.h"

#include <QAbstractScrollArea>
#include <QScrollBar>
#include <algorithm>

#include "app/model/runtime/TimerAlarm.h"
#include "app/ui/look/CellMetrics.h"

EdgeScrolling::EdgeScrolling(QAbstractScrollArea& area, std::function<void()> scrolled)
    : area_(area), scrolled_(std::move(scrolled)), alarm_(std::make_unique<TimerAlarm>()) {}

EdgeScrolling::~EdgeScrolling() = default;

int EdgeScrolling::margin() const {
    return CellMetrics(area_.font()).rowHeight();
}

EdgeScrolling::Direction EdgeScrolling::directionAt(const QPoint& position) const {
    if (position.y() < margin()) {
        return Direction::up;
    }
    return position.y() >= area_.viewport()->height() - margin() ? Direction::down
                                                                 : Direction::none;
}

void EdgeScrolling::follow(const QPoint& position) {
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

void EdgeScrolling::stop() {
    alarm_->cancel();
    direction_ = Direction::none;
    length_ = 0;
}

void EdgeScrolling::waitForStep() {
    alarm_->set(interval, [this] { step(); });
}

void EdgeScrolling::step() {
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
