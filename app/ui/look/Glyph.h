#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <cstdint>

class QPainter;

/// The few symbols that appear among text. They are drawn, not loaded, so that they have a colour
/// of the palette and are sharp at every scale.
namespace Glyph {

enum class Disclosure : std::uint8_t { collapsed, expanded };

/// A chevron: collapsed it points in the direction of reading, expanded it points down.
void paintDisclosure(QPainter& painter, const QRectF& square, const QColor& color,
                     Disclosure disclosure, Qt::LayoutDirection direction);

/// A filled triangle with an exclamation mark in the colour `background`.
void paintWarning(QPainter& painter, const QRectF& square, const QColor& color,
                  const QColor& background);

/// The letter i in a circle.
void paintInformation(QPainter& painter, const QRectF& square, const QColor& color);

/// A plus sign in a circle.
void paintPlusInCircle(QPainter& painter, const QRectF& square, const QColor& color);

/// Icons of toolbar buttons: those of the user's icon theme by their standard names, or drawn ones
/// in the colour of the button's text where the theme has none.
QIcon plusIcon();
QIcon minusIcon();

}  // namespace Glyph
