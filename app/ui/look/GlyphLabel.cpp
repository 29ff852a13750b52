#include "app/ui/look/GlyphLabel.h"

#include <QPainter>

#include "app/ui/look/CellMetrics.h"
#include "app/ui/look/Colors.h"

GlyphLabel::GlyphLabel(Painter painter, int edge, QWidget* parent)
    : QWidget(parent), painter_(painter), edge_(edge) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize GlyphLabel::sizeHint() const {
    const int edge = CellMetrics(font()).scaled(edge_);
    return {edge, edge};
}

void GlyphLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QPalette::ColorGroup group = isActiveWindow() ? QPalette::Active : QPalette::Inactive;
    painter_(painter, rect(),
             Colors::secondary(palette(), group, foregroundRole(), backgroundRole()));
}
