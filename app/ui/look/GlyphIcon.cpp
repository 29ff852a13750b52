#include "app/ui/look/GlyphIcon.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include "app/ui/look/Glyph.h"

namespace {

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

QIcon GlyphIcon::plus() {
    return themed(QStringLiteral("list-add"), Glyph::paintPlus);
}

QIcon GlyphIcon::minus() {
    return themed(QStringLiteral("list-remove"), Glyph::paintMinus);
}
