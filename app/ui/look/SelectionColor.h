#pragma once

#include <QPalette>

/// The ground of selected rows.
namespace SelectionColor {

/// The palette's own colour where the text on it is readable, else as much darker (or lighter) as
/// makes it so: a contrast of 4.5:1, which the Web Content Accessibility Guidelines ask for. (That
/// of the plain style's light palette is 3.7:1.)
QColor of(const QPalette& palette, QPalette::ColorGroup group);

}  // namespace SelectionColor
