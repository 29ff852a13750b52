#include "app/ui/look/ErrorColor.h"

QColor ErrorColor::of(const QPalette& palette) {
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    return QColor::fromRgb(isDark ? 0xFFFF7B72 : 0xFFC01C28);
}
