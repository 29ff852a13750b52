#include "app/model/runtime/DelayTimer.h"

#include <utility>

DelayTimer::DelayTimer() {
    timer_.setSingleShot(true);
    // Coarse timers may come early.
    timer_.setTimerType(Qt::PreciseTimer);
    // Taken first: the callback may start the timer again.
    QObject::connect(&timer_, &QTimer::timeout, &timer_,
                     [this] { std::exchange(callback_, nullptr)(); });
}

void DelayTimer::start(std::chrono::milliseconds delay, std::function<void()> callback) {
    callback_ = std::move(callback);
    timer_.start(delay);
}

void DelayTimer::stop() {
    timer_.stop();
    callback_ = nullptr;
}
