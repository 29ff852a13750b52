#pragma once

#include <QColor>
#include <QPalette>

/// The red that marks what is wrong. Palettes have none, so there is one for light and one for dark
/// grounds, each at 4.5:1 or better.
namespace ErrorColor {

QColor of(const QPalette& palette);

}  // namespace ErrorColor
