#include "tests/model/support/ManualTimer.h"

#include <utility>

void ManualTimer::start(std::chrono::milliseconds delay, std::function<void()> callback) {
    due_ = now_ + delay;
    callback_ = std::move(callback);
}

void ManualTimer::advance(std::chrono::milliseconds time) {
    now_ += time;
    if (callback_ && now_ >= due_) {
        ++callbacks_;
        std::exchange(callback_, nullptr)();
    }
}
