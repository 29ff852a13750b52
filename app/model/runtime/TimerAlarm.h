#pragma once

#include <QTimer>
#include <chrono>
#include <functional>

#include "app/model/runtime/Alarm.h"

/// An alarm by a monotonic clock: setting the time of day does not move it. Needs an event loop.
class TimerAlarm : public Alarm {
public:
    TimerAlarm();

    void set(std::chrono::milliseconds delay, std::function<void()> ring) override;
    void cancel() override;

private:
    QTimer timer_;
    std::function<void()> ring_;
};
