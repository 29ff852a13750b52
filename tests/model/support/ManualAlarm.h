#pragma once

#include <chrono>
#include <functional>

#include "app/model/runtime/Alarm.h"

/// An alarm whose clock the test moves.
class ManualAlarm : public Alarm {
public:
    void set(std::chrono::milliseconds delay, std::function<void()> ring) override;
    void cancel() override { ring_ = nullptr; }

    /// Lets time pass, and rings at the end of it if it is time.
    void advance(std::chrono::milliseconds time);

    bool isSet() const noexcept { return ring_ != nullptr; }

    /// How often it has rung.
    int rings() const noexcept { return rings_; }

private:
    std::chrono::milliseconds now_{0};
    std::chrono::milliseconds due_{0};
    std::function<void()> ring_;
    int rings_ = 0;
};
