#include "app/ui/notices/SaveProgress.h"

#include <QHBoxLayout>
#include <QLabel>
#include <utility>

#include "app/ui/look/SecondaryLabel.h"
#include "app/ui/notices/ProgressBar.h"

namespace {

constexpr int barWidth = 120;

}  // namespace

SaveProgress::SaveProgress(QWidget* parent)
    : QWidget(parent), label_(new SecondaryLabel({}, this)), bar_(new ProgressBar(barWidth, this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 4, 10, 4);
    layout->setSpacing(10);
    layout->addWidget(label_, 1);
    layout->addWidget(bar_);
    hide();

    timer_.setSingleShot(true);
    timer_.setInterval(delay);
    connect(&timer_, &QTimer::timeout, this, &QWidget::show);
}

void SaveProgress::start(const QString& text, std::shared_ptr<const ProgressReporter> progress) {
    setText(text);
    bar_->follow(std::move(progress));
    timer_.start();
}

void SaveProgress::showNow(const QString& text) {
    setText(text);
    timer_.stop();
    show();
}

void SaveProgress::stop() {
    timer_.stop();
    hide();
}

void SaveProgress::setText(const QString& text) {
    label_->setText(text);
    setAccessibleName(text);
}
