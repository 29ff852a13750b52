#include "app/ui/table/view/OutlineHeader.h"

#include <QPainter>
#include <QScopedValueRollback>
#include <QStyle>
#include <algorithm>
#include <array>

#include "app/ui/look/CellMetrics.h"
#include "app/ui/table/view/OutlineTableModel.h"

namespace {

constexpr int unlimited = (1 << 20) - 1;  // the widest section that QHeaderView knows

/// For a font of 13 pixels: keys, types, values.
constexpr std::array<OutlineHeader::Limits, OutlineTableModel::columnTotal> baseLimits = {{
    {140, 260, unlimited},
    {90, 110, 140},
    {120, 320, unlimited},
}};

constexpr int lastSection = OutlineTableModel::columnTotal - 1;

}  // namespace

OutlineHeader::OutlineHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(false);
    setSectionsMovable(false);
    setHighlightSections(false);
    setSectionResizeMode(QHeaderView::Interactive);
    setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    setTextElideMode(Qt::ElideRight);
    connect(this, &QHeaderView::sectionResized, this,
            [this](int section, int, int width) { keepWithinLimits(section, width); });
}

OutlineHeader::Limits OutlineHeader::limits(int section) const {
    const CellMetrics metrics(font());
    const Limits& base = baseLimits.at(static_cast<std::size_t>(section));
    return {metrics.scaled(base.minimum), metrics.scaled(base.ideal),
            std::min(unlimited, metrics.scaled(base.maximum))};
}

void OutlineHeader::applyIdealWidths() {
    const QScopedValueRollback adjusting(isAdjusting_, true);
    for (int section = 0; section < count(); ++section) {
        resizeSection(section, limits(section).ideal);
    }
    wantedLastWidth_ = limits(lastSection).minimum;
}

void OutlineHeader::fill(int width) {
    if (count() <= lastSection) {
        return;
    }
    viewportWidth_ = width;
    const QScopedValueRollback adjusting(isAdjusting_, true);
    int rest = width;
    for (int section = 0; section < lastSection; ++section) {
        rest -= sectionSize(section);
    }
    resizeSection(lastSection, std::max({rest, wantedLastWidth_, limits(lastSection).minimum}));
}

void OutlineHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
    QHeaderView::initStyleOptionForIndex(option, section);
    option->text.clear();
}

/// Styles give titles a narrow margin of their own; here they are aligned with what is in the
/// cells.
void OutlineHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    // Styles leave the painter with a clip set.
    painter->save();
    QHeaderView::paintSection(painter, rect, section);
    painter->restore();
    const int padding = CellMetrics(font()).padding();
    const QRect place = rect.adjusted(padding, 0, -padding, 0);
    const QString title = model()->headerData(section, Qt::Horizontal).toString();
    style()->drawItemText(painter, place, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeading),
                          palette(), isEnabled(),
                          fontMetrics().elidedText(title, textElideMode(), place.width()),
                          QPalette::ButtonText);
}

void OutlineHeader::keepWithinLimits(int section, int width) {
    if (isAdjusting_) {
        return;
    }
    const Limits allowed = limits(section);
    const int kept = std::clamp(width, allowed.minimum, allowed.maximum);
    if (kept != width) {
        const QScopedValueRollback adjusting(isAdjusting_, true);
        resizeSection(section, kept);
    }
    if (section == lastSection) {
        wantedLastWidth_ = kept;
    }
    fill(viewportWidth_);
}
