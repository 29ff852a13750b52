#include "app/ui/NoticeBanner.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include "app/ui/Glyph.h"
#include "app/ui/GlyphLabel.h"
#include "app/ui/SecondaryLabel.h"

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

NoticeBanner::NoticeBanner(const QString& text, QWidget* parent)
    : QWidget(parent), label_(new SecondaryLabel(text, this)) {
    setAccessibleName(text);
    label_->setFont(calloutFont(font()));
    label_->setWordWrap(true);
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 7, 10, 8);
    layout->setSpacing(8);
    layout->addWidget(new GlyphLabel(Glyph::paintInformation, 16, this), 0, Qt::AlignTop);
    layout->addWidget(label_, 1, Qt::AlignVCenter);
}

QString NoticeBanner::text() const {
    return label_->text();
}

void NoticeBanner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    // A line where the strip ends, in the colour that the style gives to edges.
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(rect().bottomLeft(), rect().bottomRight());
}
