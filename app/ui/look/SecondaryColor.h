#pragma once

#include <QColor>
#include <QPalette>

/// The colour of text that stands back behind other text.
///
/// Between the colours of text and ground of the user's palette, near enough to the text that the
/// contrast stays above 4.5:1 wherever that of the text itself is good. (The palette's own colour
/// for placeholders lies half-way, which is less.)
namespace SecondaryColor {

/// `text` on `ground`, both roles of `palette` in `group`.
QColor of(const QPalette& palette, QPalette::ColorGroup group, QPalette::ColorRole text,
          QPalette::ColorRole ground);

}  // namespace SecondaryColor
