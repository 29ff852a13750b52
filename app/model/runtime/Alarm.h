#pragma once

#include <chrono>
#include <functional>

/// Calls back once, some time after it was set. An interface, so that tests need not wait.
class Alarm {
public:
    Alarm() = default;
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;
    virtual ~Alarm() = default;

    /// `ring` is called on the caller's thread, never before `delay` has passed and never from
    /// within this call. Takes the place of a call that is still to come.
    virtual void set(std::chrono::milliseconds delay, std::function<void()> ring) = 0;

    /// Takes back the call that is still to come, if any.
    virtual void cancel() = 0;
};
