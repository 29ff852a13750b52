#include "app/ui/notices/NoticeStrip.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>

#include "app/ui/look/Glyph.h"
#include "app/ui/look/GlyphLabel.h"
#include "app/ui/look/SecondaryLabel.h"

namespace {

/// The size of notices beside that of other text.
constexpr qreal calloutSize = 12.0 / 13.0;

QFont calloutFont(QFont font) {
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * calloutSize);
    }
    return font;
}

}  // namespace

NoticeStrip::NoticeStrip(const QString& text, QWidget* parent)
    : QWidget(parent),
      label_(new SecondaryLabel({}, this)),
      icon_(new GlyphLabel(Glyph::paintInformation, 16, this)),
      layout_(new QHBoxLayout(this)) {
    label_->setFont(calloutFont(font()));
    label_->setWordWrap(true);
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout_->setContentsMargins(10, 7, 10, 8);
    layout_->setSpacing(8);
    layout_->addWidget(icon_, 0, Qt::AlignTop);
    layout_->addWidget(label_, 1, Qt::AlignVCenter);
    setText(text);
}

void NoticeStrip::setText(const QString& text) {
    label_->setText(text);
    setAccessibleName(text);
}

QPushButton* NoticeStrip::addButton(const QString& text) {
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    layout_->addWidget(button, 0, Qt::AlignVCenter);
    // Buttons are higher than a line of text.
    layout_->setAlignment(icon_, Qt::AlignVCenter);
    return button;
}

void NoticeStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    // A line where the strip ends, in the colour that the style gives to edges.
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(rect().bottomLeft(), rect().bottomRight());
}
