#include "app/ui/text/OwnDirection.h"

#include <QGuiApplication>

namespace {

constexpr char16_t leftToRightIsolate = 0x2066;
constexpr char16_t rightToLeftIsolate = 0x2067;
constexpr char16_t popIsolate = 0x2069;

}  // namespace

Qt::LayoutDirection OwnDirection::of(const QString& text) {
    return text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

QString OwnDirection::isolated(const QString& text) {
    if (!QGuiApplication::isRightToLeft()) {
        return text;
    }
    const bool isMirrored = of(text) == Qt::RightToLeft;
    return QChar(isMirrored ? rightToLeftIsolate : leftToRightIsolate) + text + QChar(popIsolate);
}
