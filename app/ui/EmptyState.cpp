#include "app/ui/EmptyState.h"

#include <QHBoxLayout>
#include <QLabel>

#include "app/ui/Glyph.h"
#include "app/ui/GlyphLabel.h"
#include "app/ui/SecondaryLabel.h"

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
