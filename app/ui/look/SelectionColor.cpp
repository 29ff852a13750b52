#include "app/ui/look/SelectionColor.h"

#include "app/ui/look/Contrast.h"

QColor SelectionColor::of(const QPalette& palette, QPalette::ColorGroup group) {
    constexpr double readable = 4.5;
    constexpr int step = 104;  // per cent
    constexpr int mostSteps = 50;
    const QColor text = palette.color(group, QPalette::HighlightedText);
    QColor ground = palette.color(group, QPalette::Highlight);
    const bool isTextLight = text.lightness() > ground.lightness();
    for (int i = 0; i < mostSteps && contrast(text, ground) < readable; ++i) {
        ground = isTextLight ? ground.darker(step) : ground.lighter(step);
    }
    return ground;
}
