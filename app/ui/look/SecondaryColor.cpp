#include "app/ui/look/SecondaryColor.h"

namespace {

/// How much of the ground is mixed in. With black on white this gives 7:1.
constexpr float groundShare = 0.35F;

float mixed(float text, float ground) {
    return text + (ground - text) * groundShare;
}

}  // namespace

QColor SecondaryColor::of(const QPalette& palette, QPalette::ColorGroup group,
                          QPalette::ColorRole text, QPalette::ColorRole ground) {
    const QColor front = palette.color(group, text);
    const QColor back = palette.color(group, ground);
    return QColor::fromRgbF(mixed(front.redF(), back.redF()), mixed(front.greenF(), back.greenF()),
                            mixed(front.blueF(), back.blueF()));
}
