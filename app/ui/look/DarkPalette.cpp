#include "app/ui/look/DarkPalette.h"

#include <QColor>

namespace {

struct RoleColor {
    QPalette::ColorRole role;
    QRgb color;
};

constexpr RoleColor colors[] = {
    {QPalette::Window, 0xFF2D2D2D},
    {QPalette::WindowText, 0xFFEEEEEE},
    {QPalette::Base, 0xFF1E1E1E},
    {QPalette::AlternateBase, 0xFF262626},
    {QPalette::Text, 0xFFEEEEEE},
    {QPalette::PlaceholderText, 0xFF9E9E9E},
    {QPalette::Button, 0xFF383838},
    {QPalette::ButtonText, 0xFFEEEEEE},
    {QPalette::BrightText, 0xFFFF8080},
    {QPalette::ToolTipBase, 0xFF3A3A3A},
    {QPalette::ToolTipText, 0xFFEEEEEE},
    {QPalette::Highlight, 0xFF3672C4},
    {QPalette::HighlightedText, 0xFFFFFFFF},
    {QPalette::Link, 0xFF7CB1F5},
    {QPalette::LinkVisited, 0xFFC4A3EC},
    {QPalette::Light, 0xFF4F4F4F},
    {QPalette::Midlight, 0xFF434343},
    {QPalette::Mid, 0xFF242424},
    {QPalette::Dark, 0xFF191919},
    {QPalette::Shadow, 0xFF000000},
};

constexpr QRgb disabledText = 0xFF8C8C8C;
constexpr QRgb menuBackground = 0xFF303030;

/// The plain style draws the frames in a menu in the colour of windows, darker by 1.4.
constexpr QRgb menuLines = 0xFFB4B4B4;
constexpr QRgb disabledHighlight = 0xFF4A4A4A;

}  // namespace

QPalette DarkPalette::make() {
    QPalette palette;
    for (const auto& [role, color] : colors) {
        palette.setColor(role, QColor::fromRgb(color));
    }
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText}) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(disabledText));
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor::fromRgb(disabledHighlight));
    return palette;
}

QPalette DarkPalette::forMenus() {
    QPalette palette = make();
    palette.setColor(QPalette::Base, QColor::fromRgb(menuBackground));
    palette.setColor(QPalette::Window, QColor::fromRgb(menuLines));
    return palette;
}
