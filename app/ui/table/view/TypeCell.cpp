#include "app/ui/table/view/TypeCell.h"

#include <QStyle>

#include "app/ui/editors/TypeMenu.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/look/Glyph.h"
#include "app/ui/text/RowText.h"

namespace {

/// An arrow in every row would be more noise than help.
bool isPointedAt(const QStyleOptionViewItem& option) {
    return (option.state & (QStyle::State_Selected | QStyle::State_MouseOver)) != 0;
}

}  // namespace

void TypeCell::paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    const QRect content = contentRect(option);
    paintText(painter, option, content, RowText::type(row(index)), Tone::primary);
    if (isPointedAt(option) && TypeMenu::isFor(row(index).node())) {
        const int edge = CellMetrics(option.font).sign();
        const QRect sign = QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter,
                                               QSize(edge, edge), content);
        Glyph::paintDisclosure(painter, sign, textColor(option, Tone::secondary),
                               Glyph::Disclosure::expanded, option.direction);
    }
}
