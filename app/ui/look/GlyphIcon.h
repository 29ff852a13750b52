#pragma once

#include <QIcon>

/// Icons of toolbar buttons: those of the user's icon theme by their standard names, or drawn ones
/// in the colour of the button's text where the theme has none.
namespace GlyphIcon {

QIcon plus();
QIcon minus();

}  // namespace GlyphIcon
