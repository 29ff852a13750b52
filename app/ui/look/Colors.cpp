#include "app/ui/look/Colors.h"

#include <algorithm>
#include <cmath>

namespace {

/// What the Web Content Accessibility Guidelines ask for text.
constexpr double readableContrast = 4.5;

/// The relative luminance of the guidelines.
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// How much of the background is mixed into secondary text. With black on white this gives 7:1.
constexpr float backgroundShare = 0.35F;

float mixed(float text, float background) {
    return text + (background - text) * backgroundShare;
}

}  // namespace

double Colors::contrast(const QColor& one, const QColor& other) {
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor Colors::error(const QPalette& palette) {
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    return QColor::fromRgb(isDark ? 0xFFFF7B72 : 0xFFC01C28);
}

QColor Colors::secondary(const QPalette& palette, QPalette::ColorGroup group,
                         QPalette::ColorRole text, QPalette::ColorRole background) {
    const QColor front = palette.color(group, text);
    const QColor back = palette.color(group, background);
    return QColor::fromRgbF(mixed(front.redF(), back.redF()), mixed(front.greenF(), back.greenF()),
                            mixed(front.blueF(), back.blueF()));
}

QColor Colors::selection(const QPalette& palette, QPalette::ColorGroup group) {
    constexpr int step = 104;  // per cent
    constexpr int mostSteps = 50;
    const QColor text = palette.color(group, QPalette::HighlightedText);
    QColor background = palette.color(group, QPalette::Highlight);
    const bool isTextLight = text.lightness() > background.lightness();
    for (int i = 0; i < mostSteps && contrast(text, background) < readableContrast; ++i) {
        background = isTextLight ? background.darker(step) : background.lighter(step);
    }
    return background;
}
