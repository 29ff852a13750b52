#include "app/ui/document/EmptyState.h"

#include <QHBoxLayout>
#include <QPainter>

#include "app/ui/look/Glyph.h"
#include "app/ui/look/GlyphLabel.h"
#include "app/ui/look/SecondaryLabel.h"

EmptyState::EmptyState(QWidget* parent) : QWidget(parent) {
    setBackgroundRole(QPalette::Base);
    setForegroundRole(QPalette::Text);
    setAutoFillBackground(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);

    auto* icon = new GlyphLabel(Glyph::paintPlusInCircle, 18, this);
    //: The plus sign stands for the button in the toolbar.
    auto* label = new SecondaryLabel(tr("Click \uFF0B to add the first item."), this);
    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(8);
    layout->addStretch();
    layout->addWidget(icon);
    layout->addWidget(label);
    layout->addStretch();
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
