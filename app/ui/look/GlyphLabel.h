#pragma once

#include <QWidget>

class QPainter;

/// One of the symbols of `Glyph`, in the colour of secondary text. Screen readers skip it: the text
/// beside it says the same.
class GlyphLabel : public QWidget {
    Q_OBJECT

public:
    using Painter = void (*)(QPainter& painter, const QRectF& square, const QColor& color);

    /// `edge` is the size of the square for a font of 13 pixels.
    GlyphLabel(Painter painter, int edge, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Painter painter_;
    int edge_;
};
