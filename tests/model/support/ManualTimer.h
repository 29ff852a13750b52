#pragma once

#include <chrono>
#include <functional>

#include "app/model/runtime/DelayTimer.h"

/// A timer whose clock the test moves.
class ManualTimer : public DelayTimer {
public:
    void start(std::chrono::milliseconds delay, std::function<void()> callback) override;
    void stop() override { callback_ = nullptr; }

    /// Lets time pass, and calls back at the end of it if it is time.
    void advance(std::chrono::milliseconds time);

    bool isRunning() const override { return callback_ != nullptr; }

    /// How often it has called back.
    int callbacks() const noexcept { return callbacks_; }

private:
    std::chrono::milliseconds now_{0};
    std::chrono::milliseconds due_{0};
    std::function<void()> callback_;
    int callbacks_ = 0;
};
