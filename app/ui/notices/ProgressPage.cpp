#include "app/ui/notices/ProgressPage.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QProgressBar* makeBar(QWidget* parent, QLabel* label) {
    auto* bar = new QProgressBar(parent);
    // How long it will take is not known: a bar that only moves.
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setFixedWidth(280);
    bar->setAccessibleName(ProgressPage::tr("Progress"));
    label->setBuddy(bar);
    return bar;
}

}  // namespace

ProgressPage::ProgressPage(QWidget* parent)
    : QWidget(parent), content_(new QWidget(this)), label_(new QLabel(content_)) {
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    label_->setTextFormat(Qt::PlainText);
    auto* cancel = new QPushButton(tr("Cancel"), content_);
    connect(cancel, &QPushButton::clicked, this, &ProgressPage::cancelled);

    auto* column = new QVBoxLayout(content_);
    column->setSpacing(10);
    column->addWidget(label_, 0, Qt::AlignHCenter);
    column->addWidget(makeBar(content_, label_), 0, Qt::AlignHCenter);
    column->addWidget(cancel, 0, Qt::AlignHCenter);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(content_, 0, Qt::AlignCenter);
    content_->hide();

    timer_.setSingleShot(true);
    timer_.setInterval(delay);
    connect(&timer_, &QTimer::timeout, content_, &QWidget::show);
}

void ProgressPage::start(const QString& text) {
    label_->setText(text);
    content_->hide();
    timer_.start();
}

void ProgressPage::stop() {
    timer_.stop();
    content_->hide();
}
