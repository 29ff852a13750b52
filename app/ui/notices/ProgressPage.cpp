#include "app/ui/notices/ProgressPage.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "app/ui/notices/ProgressBar.h"

namespace {

constexpr int barWidth = 280;

}  // namespace

ProgressPage::ProgressPage(QWidget* parent)
    : QWidget(parent),
      content_(new QWidget(this)),
      label_(new QLabel(content_)),
      bar_(new ProgressBar(barWidth, content_)) {
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    label_->setTextFormat(Qt::PlainText);
    label_->setBuddy(bar_);
    auto* cancel = new QPushButton(tr("Cancel"), content_);
    connect(cancel, &QPushButton::clicked, this, &ProgressPage::cancelled);

    auto* column = new QVBoxLayout(content_);
    column->setSpacing(10);
    column->addWidget(label_, 0, Qt::AlignHCenter);
    column->addWidget(bar_, 0, Qt::AlignHCenter);
    column->addWidget(cancel, 0, Qt::AlignHCenter);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(content_, 0, Qt::AlignCenter);
    content_->hide();

    timer_.setSingleShot(true);
    timer_.setInterval(delay);
    connect(&timer_, &QTimer::timeout, content_, &QWidget::show);
}

void ProgressPage::start(const QString& text, std::shared_ptr<const ProgressReporter> progress) {
    label_->setText(text);
    bar_->follow(std::move(progress));
    content_->hide();
    timer_.start();
}

void ProgressPage::stop() {
    timer_.stop();
    content_->hide();
}
