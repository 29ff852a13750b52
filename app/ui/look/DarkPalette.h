#pragma once

#include <QPalette>

/// The colours of dark windows where the theme has none: greys with text at 12:1 and disabled text
/// at 3:1 or better.
namespace DarkPalette {

QPalette make();

/// The palette of menus, which stand out from the rows below them: their borders and check boxes
/// can be seen.
QPalette forMenus();

}  // namespace DarkPalette
