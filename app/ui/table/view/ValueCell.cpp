#include "app/ui/table/view/ValueCell.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "app/model/tree/PlistNode.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/text/RowText.h"

namespace {

void paintCheckBox(QPainter& painter, const QStyleOptionViewItem& option, const QRect& rect,
                   bool isChecked, const QColor& frame) {
    QStyleOptionViewItem box = option;
    box.features |= QStyleOptionViewItem::HasCheckIndicator;
    box.state &= ~(QStyle::State_HasFocus | QStyle::State_On | QStyle::State_Off);
    box.state |= isChecked ? QStyle::State_On : QStyle::State_Off;
    // The plain style derives the frame of a box from this color and darkens it by this factor. The
    // window color itself would make the frame invisible in dark palettes.
    box.palette.setColor(QPalette::Window, frame.lighter(140));
    box.rect = rect;
    option.widget->style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, &painter,
                                          option.widget);
}

/// What is left of `content` after the box.
QRect afterBox(const QRect& box, const QRect& content, const QStyleOptionViewItem& option) {
    const QRect rest =
        content.adjusted(box.width() + CellMetrics(option.font).spacing() + 2, 0, 0, 0);
    return QStyle::visualRect(option.direction, content, rest);
}

OutlineDelegate::Tone toneOf(const OutlineRow& row) {
    if (row.node().type() == PlistType::data) {
        return OutlineDelegate::Tone::link;
    }
    return RowText::isValueSecondary(row) ? OutlineDelegate::Tone::secondary
                                          : OutlineDelegate::Tone::primary;
}

}  // namespace

QRect ValueCell::checkBoxRect(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    if (row(index).node().type() != PlistType::boolean) {
        return {};
    }
    const QStyle& style = *option.widget->style();
    const QSize size(style.pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget),
                     style.pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget));
    return QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter, size,
                               contentRect(option));
}

QRect ValueCell::linkRect(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    if (row(index).node().type() != PlistType::data) {
        return {};
    }
    const QRect content = contentRect(option);
    const int width = option.fontMetrics.horizontalAdvance(RowText::value(row(index)));
    const QRect link(content.left(), content.top(), std::min(width, content.width()),
                     content.height());
    return QStyle::visualRect(option.direction, content, link);
}

void ValueCell::paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    const OutlineRow& shown = row(index);
    const QRect box = checkBoxRect(option, index);
    QRect rect = contentRect(option);
    if (!box.isEmpty()) {
        paintCheckBox(painter, option, box, shown.node().scalar().booleanValue(),
                      textColor(option, Tone::secondary));
        rect = afterBox(box, rect, option);
    }
    paintText(painter, option, rect, RowText::value(shown), toneOf(shown));
}
