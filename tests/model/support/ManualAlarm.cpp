#include "tests/model/support/ManualAlarm.h"

#include <utility>

void ManualAlarm::set(std::chrono::milliseconds delay, std::function<void()> ring) {
    due_ = now_ + delay;
    ring_ = std::move(ring);
}

void ManualAlarm::advance(std::chrono::milliseconds time) {
    now_ += time;
    if (ring_ && now_ >= due_) {
        ++rings_;
        std::exchange(ring_, nullptr)();
    }
}
