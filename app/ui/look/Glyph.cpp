#include "app/ui/look/Glyph.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <algorithm>

namespace {

/// Signs are drawn in a square of this edge and then scaled.
constexpr qreal gridSize = 12;

/// Keeps the painter's state and sets up the grid of the sign.
class GridPainter {
public:
    GridPainter(QPainter& painter, const QRectF& square) : painter_(painter) {
        painter_.save();
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.translate(square.center());
        const qreal scale = std::min(square.width(), square.height()) / gridSize;
        painter_.scale(scale, scale);
    }
    ~GridPainter() { painter_.restore(); }
    GridPainter(const GridPainter&) = delete;
    GridPainter& operator=(const GridPainter&) = delete;

    void setStroke(const QColor& color, qreal width) {
        painter_.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter_.setBrush(Qt::NoBrush);
    }

    void setFill(const QColor& color) {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(color);
    }

private:
    QPainter& painter_;
};

constexpr qreal lineWidth = 1.1;
constexpr qreal buttonLineWidth = 1.0;
constexpr qreal circleRadius = 5.2;

void paintPlus(QPainter& painter, const QRectF& square, const QColor& color) {
    GridPainter grid(painter, square);
    grid.setStroke(color, buttonLineWidth);
    painter.drawLine(QPointF(-4, 0), QPointF(4, 0));
    painter.drawLine(QPointF(0, -4), QPointF(0, 4));
}

void paintMinus(QPainter& painter, const QRectF& square, const QColor& color) {
    GridPainter grid(painter, square);
    grid.setStroke(color, buttonLineWidth);
    painter.drawLine(QPointF(-4, 0), QPointF(4, 0));
}

using PaintGlyph = void (*)(QPainter&, const QRectF&, const QColor&);

/// Draws at the very size that is asked for, in the palette of the moment.
class GlyphIconEngine : public QIconEngine {
public:
    explicit GlyphIconEngine(PaintGlyph paintGlyph) : paintGlyph_(paintGlyph) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette::ColorGroup group =
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        paintGlyph_(*painter, rect, QApplication::palette().color(group, QPalette::ButtonText));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new GlyphIconEngine(*this); }

private:
    PaintGlyph paintGlyph_;
};

QIcon themed(const QString& name, PaintGlyph paintGlyph) {
    return QIcon::fromTheme(name, QIcon(new GlyphIconEngine(paintGlyph)));
}

}  // namespace

void Glyph::paintDisclosure(QPainter& painter, const QRectF& square, const QColor& color,
                            Disclosure disclosure, Qt::LayoutDirection direction) {
    GridPainter grid(painter, square);
    grid.setStroke(color, 1.6);
    if (disclosure == Disclosure::expanded) {
        painter.rotate(90);
    } else if (direction == Qt::RightToLeft) {
        painter.rotate(180);
    }
    const QPointF points[] = {{-1.75, -3.5}, {1.75, 0}, {-1.75, 3.5}};
    painter.drawPolyline(points, 3);
}

void Glyph::paintWarning(QPainter& painter, const QRectF& square, const QColor& color,
                         const QColor& background) {
    GridPainter grid(painter, square);
    painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(color);
    const QPointF corners[] = {{0, -4.4}, {5.1, 4.5}, {-5.1, 4.5}};
    painter.drawPolygon(corners, 3);
    grid.setStroke(background, 1.3);
    painter.drawLine(QPointF(0, -1.6), QPointF(0, 1.2));
    grid.setFill(background);
    painter.drawEllipse(QPointF(0, 3.3), 0.8, 0.8);
}

void Glyph::paintInformation(QPainter& painter, const QRectF& square, const QColor& color) {
    GridPainter grid(painter, square);
    grid.setStroke(color, lineWidth);
    painter.drawEllipse(QPointF(0, 0), circleRadius, circleRadius);
    grid.setStroke(color, 1.3);
    painter.drawLine(QPointF(0, -0.2), QPointF(0, 2.6));
    grid.setFill(color);
    painter.drawEllipse(QPointF(0, -2.6), 0.8, 0.8);
}

void Glyph::paintPlusInCircle(QPainter& painter, const QRectF& square, const QColor& color) {
    GridPainter grid(painter, square);
    grid.setStroke(color, lineWidth);
    painter.drawEllipse(QPointF(0, 0), circleRadius, circleRadius);
    painter.drawLine(QPointF(-2.6, 0), QPointF(2.6, 0));
    painter.drawLine(QPointF(0, -2.6), QPointF(0, 2.6));
}

QIcon Glyph::plusIcon() {
    return themed(QStringLiteral("list-add"), paintPlus);
}

QIcon Glyph::minusIcon() {
    return themed(QStringLiteral("list-remove"), paintMinus);
}
