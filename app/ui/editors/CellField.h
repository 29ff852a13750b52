#pragma once

#include <Qt>

/// What the fields that are opened over cells have in common.
namespace CellField {

/// The margin that a text field adds to its text by itself; the toolkit does not expose it.
inline constexpr int ownTextMargin = 2;

/// Whether a field that loses the focus for this reason ends its edit. It does not when the window
/// is deactivated or a menu or popup opens.
constexpr bool endsEdit(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

}  // namespace CellField
