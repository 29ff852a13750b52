#pragma once

#include <QList>
#include <QWidget>

/// Finds widgets by their accessible names, as screen readers do.
namespace ByName {

/// Whether a widget is visible and has this name.
bool isNamed(QWidget& widget, const char* name);

/// The visible widget of this class inside `window` that has the name; null if there is none.
template <typename Widget>
Widget* find(const QWidget& window, const char* name) {
    for (Widget* widget : window.findChildren<Widget*>()) {
        if (isNamed(*widget, name)) {
            return widget;
        }
    }
    return nullptr;
}

/// Presses the button inside `window` that has the name. The test program ends if there is none.
void press(const QWidget& window, const char* name);

}  // namespace ByName
