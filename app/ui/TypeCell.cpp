#include "app/ui/TypeCell.h"

#include "app/ui/RowText.h"

void TypeCell::paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    paintText(painter, option, contentRect(option), RowText::type(row(index)), Tone::primary);
}
