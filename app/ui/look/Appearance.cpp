#include "app/ui/look/Appearance.h"

#include <QApplication>
#include <QPalette>

#include "app/ui/look/DarkPalette.h"

namespace {

constexpr const char* menuClass = "QMenu";

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

}  // namespace

void Appearance::follow(ColorScheme::Preference preference) {
    const bool wantsDark = preference == ColorScheme::Preference::dark;
    if (wantsDark && !isOurs_ && !isDark(QApplication::palette())) {
        QApplication::setPalette(DarkPalette::make());
        QApplication::setPalette(DarkPalette::forMenus(), menuClass);
        isOurs_ = true;
    } else if (!wantsDark && isOurs_) {
        // An empty palette stands for that of the theme.
        QApplication::setPalette(QPalette());
        QApplication::setPalette(QPalette(), menuClass);
        isOurs_ = false;
    }
}
