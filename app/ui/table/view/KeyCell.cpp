#include "app/ui/table/view/KeyCell.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "app/model/tree/PlistNode.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/look/Glyph.h"
#include "app/ui/text/RowText.h"

namespace {

constexpr qreal matchRadius = 3;
constexpr float matchTint = 0.25F;

QRect squareAt(int left, const QRect& cell, int edge) {
    return {left, cell.top() + (cell.height() - edge) / 2, edge, edge};
}

/// A column is never made wider than this for the sake of depth.
constexpr int widestIndentation = 1'000;

/// How far from the left the content begins, for any depth.
int indentation(const OutlineRow& row, const CellMetrics& metrics, int width) {
    return static_cast<int>(std::min<qint64>(row.depth() * metrics.indentation(), width));
}

}  // namespace

void KeyCell::setMatchIDs(std::span<const NodeId> ids) {
    matchIDs_.clear();
    for (const NodeId id : ids) {
        matchIDs_.insert(id);
    }
}

KeyCell::Parts KeyCell::parts(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const OutlineRow& shown = row(index);
    const CellMetrics metrics(option.font);
    const QRect content = contentRect(option);
    int left = content.left() + indentation(shown, metrics, content.width());
    Parts parts;
    if (shown.node().isContainer()) {
        parts.disclosure = squareAt(left, content, metrics.sign());
    }
    // Scalars leave the place of the control empty, so that the keys of siblings are aligned.
    left += metrics.sign() + metrics.spacing();

    int right = content.right() + 1;
    if (shown.isDuplicateKey()) {
        const int width = option.fontMetrics.horizontalAdvance(RowText::key(shown));
        const int room = right - left - metrics.sign() - metrics.spacing();
        right = left + std::clamp(width + 1, 0, std::max(0, room));
        parts.duplicateSign = squareAt(right + metrics.spacing(), content, metrics.sign());
    }
    parts.text = QRect(left, content.top(), std::max(0, right - left), content.height());

    for (QRect* part : {&parts.disclosure, &parts.text, &parts.duplicateSign}) {
        if (!part->isEmpty()) {
            *part = QStyle::visualRect(option.direction, option.rect, *part);
        }
    }
    return parts;
}

QSize KeyCell::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const OutlineRow& shown = row(index);
    const CellMetrics metrics(option.font);
    const int sign = metrics.sign() + metrics.spacing();
    const int beside =
        indentation(shown, metrics, widestIndentation) + (shown.isDuplicateKey() ? 2 * sign : sign);
    // One more for the edge of the last letter, which the advance does not count.
    return OutlineDelegate::sizeHint(option, index) + QSize(beside + 1, 0);
}

void KeyCell::paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    const OutlineRow& shown = row(index);
    if (matchIDs_.contains(shown.nodeId())) {
        paintMatch(painter, option);
    }
    const Parts where = parts(option, index);
    const QColor signColor = textColor(option, Tone::secondary);
    if (!where.disclosure.isEmpty()) {
        Glyph::paintDisclosure(
            painter, where.disclosure, signColor,
            shown.isExpanded() ? Glyph::Disclosure::expanded : Glyph::Disclosure::collapsed,
            option.direction);
    }
    paintText(painter, option, where.text, RowText::key(shown),
              RowText::isKeySecondary(shown) ? Tone::secondary : Tone::primary);
    if (!where.duplicateSign.isEmpty()) {
        Glyph::paintWarning(painter, where.duplicateSign, signColor, backgroundColor(option));
    }
}

/// A mark behind the content: a tint that keeps the text readable, and a frame that stands out from
/// the backgrounds of odd and even rows.
void KeyCell::paintMatch(QPainter& painter, const QStyleOptionViewItem& option) {
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QPalette& palette = option.palette;
    QColor tint = palette.color(QPalette::Highlight);
    const QColor frame = isSelected ? palette.color(QPalette::HighlightedText) : tint;
    tint.setAlphaF(matchTint);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(frame);
    painter.setBrush(isSelected ? QBrush(Qt::NoBrush) : QBrush(tint));
    painter.drawRoundedRect(QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5), matchRadius,
                            matchRadius);
    painter.restore();
}

QRect KeyCell::textRect(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    // To the end of the cell, over the sign of a duplicate key: the text may get longer.
    const QRect content = contentRect(option);
    const QRect text = parts(option, index).text;
    return option.direction == Qt::RightToLeft
               ? QRect(QPoint(content.left(), text.top()), text.bottomRight())
               : QRect(text.topLeft(), QPoint(content.right(), text.bottom()));
}

QString KeyCell::tooltipAt(const QPoint& position, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    if (parts(option, index).duplicateSign.contains(position)) {
        return RowText::duplicateKeyNotice();
    }
    return OutlineDelegate::tooltipAt(position, option, index);
}
