#include "app/ui/document/EmptyState.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "app/ui/look/Glyph.h"
#include "app/ui/look/GlyphLabel.h"
#include "app/ui/look/SecondaryLabel.h"

EmptyState::EmptyState(QWidget* parent) : QWidget(parent) {
    setBackgroundRole(QPalette::Base);
    setForegroundRole(QPalette::Text);
    setAutoFillBackground(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);

    auto* sign = new GlyphLabel(Glyph::paintPlusInCircle, 18, this);
    //: The plus sign stands for the button in the toolbar.
    label_ = new SecondaryLabel(tr("Click \uFF0B to add the first item."), this);
    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(8);
    layout->addStretch();
    layout->addWidget(sign);
    layout->addWidget(label_);
    layout->addStretch();
}

QString EmptyState::text() const {
    return label_->text();
}

void EmptyState::setDropTarget(bool isDropTarget) {
    isDropTarget_ = isDropTarget;
    update();
}

void EmptyState::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (isDropTarget_) {
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}
