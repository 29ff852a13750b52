#include "app/ui/table/drag/DropIndicator.h"

#include <QHeaderView>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <algorithm>
#include <optional>

#include "app/ui/look/CellMetrics.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/table/view/OutlineView.h"

namespace {

constexpr int thickness = 2;

/// Around line and ring, which have the color of selected rows, so that they stand out from them.
constexpr int halo = 1;

QRect rowRect(int row, const OutlineView& view) {
    return {0, view.rowViewportPosition(row), view.viewport()->width(), view.rowHeight(row)};
}

/// The top of the line, placed so that all of it is visible.
int lineTop(qint64 position, const OutlineView& view, int height) {
    const int last = static_cast<int>(std::min<qint64>(position, view.model()->rowCount())) - 1;
    const int between = last < 0 ? view.rowViewportPosition(0)
                                 : view.rowViewportPosition(last) + view.rowHeight(last);
    const int lowest = view.viewport()->height() - height - halo;
    return std::clamp(between - height / 2, std::min(halo, lowest), lowest);
}

/// Where a row of this depth has its disclosure control.
QRect ringRect(qint64 depth, const QRect& line, const OutlineView& view,
               const CellMetrics& metrics) {
    const int column = OutlineTableModel::keyColumn;
    const QRect cell(view.columnViewportPosition(column), line.top(), view.columnWidth(column),
                     line.height());
    const int edge = metrics.scaled(8);
    const int indentation = static_cast<int>(
        std::min<qint64>(depth * metrics.indentation(), std::max(0, cell.width() - 2 * edge)));
    const QRect ring(cell.left() + metrics.padding() + indentation, line.center().y() - edge / 2,
                     edge, edge);
    return QStyle::visualRect(view.layoutDirection(), cell, ring);
}

}  // namespace

DropIndicator DropIndicator::below(qint64 position, const PlistNode& container,
                                   const OutlineView& view) {
    const CellMetrics metrics(view.font());
    const int height = metrics.scaled(thickness);
    const OutlineTableModel& model = view.outlineModel();
    const std::optional<int> row = model.outline().rowOf(container);
    const qint64 depth = row ? model.row(*row).depth() + 1 : 0;

    DropIndicator result;
    result.line = QRect(0, lineTop(position, view, height), view.viewport()->width(), height);
    result.ring = ringRect(depth, result.line, view, metrics);
    if (row) {
        result.container = rowRect(*row, view);
    }
    return result;
}

void DropIndicator::paint(QPainter& painter, const QPalette& palette) const {
    // The colors of an active window: a drop can go to a window that is not.
    const QColor color = palette.color(QPalette::Active, QPalette::Highlight);
    const QColor background = palette.color(QPalette::Active, QPalette::Base);
    painter.save();
    painter.setPen(color);
    painter.drawRect(container.adjusted(0, 0, -1, -1));
    painter.fillRect(line.adjusted(0, -halo, 0, halo), background);
    painter.fillRect(line, color);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, line.height()));
    painter.setBrush(background);
    painter.drawEllipse(QRectF(ring));
    painter.restore();
}
