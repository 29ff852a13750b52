#include "app/ui/notices/ProgressBar.h"

#include <cmath>
#include <utility>

#include "app/desktop/files/ProgressReporter.h"

namespace {

/// How often the bar looks at the task, in milliseconds.
constexpr int interval = 100;

constexpr int steps = 1000;

}  // namespace

ProgressBar::ProgressBar(int width, QWidget* parent) : QProgressBar(parent) {
    setTextVisible(false);
    setFixedWidth(width);
    setAccessibleName(tr("Progress"));
    setRange(0, 0);
    timer_.setInterval(interval);
    connect(&timer_, &QTimer::timeout, this, &ProgressBar::showFraction);
}

void ProgressBar::follow(std::shared_ptr<const ProgressReporter> reporter) {
    reporter_ = std::move(reporter);
    showFraction();
}

void ProgressBar::showEvent(QShowEvent* event) {
    showFraction();
    timer_.start();
    QProgressBar::showEvent(event);
}

void ProgressBar::hideEvent(QHideEvent* event) {
    timer_.stop();
    QProgressBar::hideEvent(event);
}

void ProgressBar::showFraction() {
    const double fraction = reporter_ ? reporter_->fraction() : 0;
    if (fraction > 0 && fraction < 1) {
        setRange(0, steps);
        setValue(static_cast<int>(std::lround(fraction * steps)));
    } else {
        // Without a range the bar only moves.
        setRange(0, 0);
    }
}
