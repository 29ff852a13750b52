#include "app/ui/look/CellMetrics.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <algorithm>
#include <cmath>

namespace {

constexpr double baseFontSize = 13;

}  // namespace

CellMetrics::CellMetrics(const QFont& font)
    : scale_(std::max(1.0, QFontInfo(font).pixelSize() / baseFontSize)),
      rowHeight_(std::max(QFontMetrics(font).height() + scaled(8), scaled(24))) {}

int CellMetrics::scaled(int length) const noexcept {
    return static_cast<int>(std::lround(length * scale_));
}
