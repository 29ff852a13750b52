#include "app/ui/ValueCell.h"

#include <QPainter>
#include <QStyle>

#include "app/model/PlistNode.h"
#include "app/ui/CellMetrics.h"
#include "app/ui/RowText.h"

namespace {

/// Paints the box at the leading side of `rect` and gives what is left for the text.
QRect paintCheckBox(QPainter& painter, const QStyleOptionViewItem& option, const QRect& rect,
                    bool isChecked, const QColor& frame) {
    const QStyle& style = *option.widget->style();
    QStyleOptionViewItem box = option;
    box.features |= QStyleOptionViewItem::HasCheckIndicator;
    box.state &= ~(QStyle::State_HasFocus | QStyle::State_On | QStyle::State_Off);
    box.state |= isChecked ? QStyle::State_On : QStyle::State_Off;
    // The plain style makes the frame of a box from this colour, darker by this factor. That of
    // windows would leave nothing to be seen in dark palettes.
    box.palette.setColor(QPalette::Window, frame.lighter(140));
    const QSize size(style.pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget),
                     style.pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget));
    box.rect = QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter, size, rect);
    style.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, &painter, option.widget);

    const QRect rest =
        rect.adjusted(size.width() + CellMetrics(option.font).spacing() + 2, 0, 0, 0);
    return QStyle::visualRect(option.direction, rect, rest);
}

}  // namespace

void ValueCell::paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    const OutlineRow& shown = row(index);
    QRect rect = contentRect(option);
    if (shown.node().type() == PlistType::boolean) {
        rect = paintCheckBox(painter, option, rect, shown.node().scalar().booleanValue(),
                             textColor(option, Tone::secondary));
    }
    paintText(painter, option, rect, RowText::value(shown),
              RowText::isValueSecondary(shown) ? Tone::secondary : Tone::primary);
}
