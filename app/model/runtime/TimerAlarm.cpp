#include "app/model/runtime/TimerAlarm.h"

#include <utility>

TimerAlarm::TimerAlarm() {
    timer_.setSingleShot(true);
    // Coarse timers may come early.
    timer_.setTimerType(Qt::PreciseTimer);
    // Taken first: ringing may set the alarm again.
    QObject::connect(&timer_, &QTimer::timeout, &timer_,
                     [this] { std::exchange(ring_, nullptr)(); });
}

void TimerAlarm::set(std::chrono::milliseconds delay, std::function<void()> ring) {
    ring_ = std::move(ring);
    timer_.start(delay);
}

void TimerAlarm::cancel() {
    timer_.stop();
    ring_ = nullptr;
}
