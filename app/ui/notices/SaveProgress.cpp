#include "app/ui/notices/SaveProgress.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

#include "app/ui/look/SecondaryLabel.h"

SaveProgress::SaveProgress(QWidget* parent)
    : QWidget(parent), label_(new SecondaryLabel({}, this)) {
    auto* bar = new QProgressBar(this);
    // How long it will take is not known: a bar that only moves.
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setFixedWidth(120);
    bar->setAccessibleName(tr("Progress"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 4, 10, 4);
    layout->setSpacing(10);
    layout->addWidget(label_, 1);
    layout->addWidget(bar);
    hide();

    timer_.setSingleShot(true);
    timer_.setInterval(delay);
    connect(&timer_, &QTimer::timeout, this, &QWidget::show);
}

void SaveProgress::start(const QString& text) {
    setText(text);
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

QString SaveProgress::text() const {
    return label_->text();
}

void SaveProgress::setText(const QString& text) {
    label_->setText(text);
    setAccessibleName(text);
}
