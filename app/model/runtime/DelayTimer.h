#pragma once

#include <QTimer>
#include <chrono>
#include <functional>

/// Calls back once, some time after it was started, by a monotonic clock: setting the time of day
/// does not move it. Needs an event loop. Tests replace it by one that they advance themselves.
class DelayTimer {
public:
    DelayTimer();
    DelayTimer(const DelayTimer&) = delete;
    DelayTimer& operator=(const DelayTimer&) = delete;
    virtual ~DelayTimer() = default;

    /// Calls `callback` on the caller's thread, never before `delay` has passed and never from
    /// within this call. Replaces a pending callback.
    virtual void start(std::chrono::milliseconds delay, std::function<void()> callback);

    /// Cancels the pending callback, if any.
    virtual void stop();

    /// Whether a callback is pending.
    virtual bool isRunning() const { return timer_.isActive(); }

private:
    QTimer timer_;
    std::function<void()> callback_;
};
