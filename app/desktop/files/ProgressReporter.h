#pragma once

#include <QtGlobal>
#include <atomic>

/// How far a task in another thread has come. Written by the task, read by whoever shows it.
class ProgressReporter {
public:
    /// The task begins and will complete `total` units.
    void start(qint64 total) noexcept {
        completed_ = 0;
        total_ = total;
    }

    /// `count` units are done in all.
    void complete(qint64 count) noexcept { completed_ = count; }

    /// 0 until the task has begun.
    qint64 total() const noexcept { return total_; }
    qint64 completed() const noexcept { return completed_; }

private:
    std::atomic<qint64> total_ = 0;
    std::atomic<qint64> completed_ = 0;
};
