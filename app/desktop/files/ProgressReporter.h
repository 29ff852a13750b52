#pragma once

#include <QtGlobal>
#include <atomic>

/// How far a task in another thread has come. Written by the task, read by whoever shows it.
class ProgressReporter {
public:
    /// The task begins and will complete `total` units.
    void start(qint64 total) noexcept {
        completed_ = 0;
        share_ = 0;
        total_ = total;
    }

    /// Of the unit under way this share is done, from 0 to 1.
    void advance(double share) noexcept { share_ = share; }

    /// `count` units are done in all.
    void complete(qint64 count) noexcept {
        share_ = 0;
        completed_ = count;
    }

    /// 0 until the task has begun.
    qint64 total() const noexcept { return total_; }
    qint64 completed() const noexcept { return completed_; }

    /// The share of the whole task that is done, from 0 to 1.
    double fraction() const noexcept {
        return total_ == 0
                   ? 0
                   : (static_cast<double>(completed_) + share_) / static_cast<double>(total_);
    }

private:
    std::atomic<qint64> total_ = 0;
    std::atomic<qint64> completed_ = 0;
    std::atomic<double> share_ = 0;
};
