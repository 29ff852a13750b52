#pragma once

#include <QPalette>

/// The colours of dark windows where the theme has none: greys with text at 12:1 and disabled text
/// at 3:1 or better.
namespace DarkPalette {

QPalette make();

/// That of menus, which stand out from the rows that they lie over. Their edge and their check
/// boxes are seen.
QPalette forMenus();

}  // namespace DarkPalette
