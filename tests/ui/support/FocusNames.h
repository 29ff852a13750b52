#pragma once

#include <QStringList>

class QWidget;

/// What a screen reader has to say of what can have the keyboard.
namespace FocusNames {

/// The names, as screen readers hear them, of all visible widgets in `window` that take the focus,
/// in no particular order. A widget without a name is there with its class in brackets.
QStringList in(const QWidget& window);

/// Those of them that have no name.
QStringList missingIn(const QWidget& window);

}  // namespace FocusNames
