#pragma once

#include <QColor>
#include <QPalette>

/// Colours that no palette has, made from those of the user's palette, and how readable they are.
namespace Colors {

/// The contrast between two colours by the Web Content Accessibility Guidelines, from 1 to 21.
double contrast(const QColor& one, const QColor& other);

/// The red that marks errors: one for light and one for dark backgrounds, each at 4.5:1 or better.
QColor error(const QPalette& palette);

/// The colour of secondary text: `text` on `background`, both roles of `palette` in `group`.
///
/// Near enough to the colour of the text that the contrast stays above 4.5:1 wherever that of the
/// text itself is good. (The palette's own colour for placeholders lies half-way, which is less.)
QColor secondary(const QPalette& palette, QPalette::ColorGroup group, QPalette::ColorRole text,
                 QPalette::ColorRole background);

/// The background of selected rows: the palette's own colour where the text on it is readable, else
/// as much darker (or lighter) as makes it so: a contrast of 4.5:1. (That of the plain style's
/// light palette is 3.7:1.)
QColor selection(const QPalette& palette, QPalette::ColorGroup group);

}  // namespace Colors
