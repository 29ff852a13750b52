#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>

/// Turns with the event loop and takes the time from one turn to the next.
class Pulse {
public:
    Pulse() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { beat(); });
        clock_.start();
        timer_.start(0);
    }

    void beat() { longest_ = std::max(longest_, clock_.restart()); }

    /// In milliseconds, up to the last beat.
    qint64 longest() const { return longest_; }

private:
    QTimer timer_;
    QElapsedTimer clock_;
    qint64 longest_ = 0;
};
