#include "app/ui/table/drag/DropLine.h"

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

/// Around line and ring, so that they stand out from selected rows, which have their color.
constexpr int halo = 1;

QRect rowRect(int row, const OutlineView& table) {
    return {0, table.rowViewportPosition(row), table.viewport()->width(), table.rowHeight(row)};
}

/// Where the line stands from above, all of it in sight.
int lineTop(qint64 position, const OutlineView& table, int height) {
    const int last = static_cast<int>(std::min<qint64>(position, table.model()->rowCount())) - 1;
    const int between = last < 0 ? table.rowViewportPosition(0)
                                 : table.rowViewportPosition(last) + table.rowHeight(last);
    const int lowest = table.viewport()->height() - height - halo;
    return std::clamp(between - height / 2, std::min(halo, lowest), lowest);
}

/// Around the place of the disclosure control of a row of this depth.
QRect ringRect(qint64 depth, const QRect& line, const OutlineView& table,
               const CellMetrics& metrics) {
    const int column = OutlineTableModel::keyColumn;
    const QRect cell(table.columnViewportPosition(column), line.top(), table.columnWidth(column),
                     line.height());
    const int edge = metrics.scaled(8);
    const int indentation = static_cast<int>(
        std::min<qint64>(depth * metrics.indentation(), std::max(0, cell.width() - 2 * edge)));
    const QRect ring(cell.left() + metrics.padding() + indentation, line.center().y() - edge / 2,
                     edge, edge);
    return QStyle::visualRect(table.layoutDirection(), cell, ring);
}

}  // namespace

DropLine DropLine::below(qint64 position, const PlistNode& container, const OutlineView& table) {
    const CellMetrics metrics(table.font());
    const int height = metrics.scaled(thickness);
    const OutlineTableModel& model = table.outlineModel();
    const std::optional<int> row = model.outline().rowOf(container);
    const qint64 depth = row ? model.row(*row).depth() + 1 : 0;

    DropLine result;
    result.line = QRect(0, lineTop(position, table, height), table.viewport()->width(), height);
    result.ring = ringRect(depth, result.line, table, metrics);
    if (row) {
        result.container = rowRect(*row, table);
    }
    return result;
}

void DropLine::paint(QPainter& painter, const QPalette& palette) const {
    // Whatever the window: it need not be the active one to be dropped on.
    const QColor color = palette.color(QPalette::Active, QPalette::Highlight);
    const QColor ground = palette.color(QPalette::Active, QPalette::Base);
    painter.save();
    painter.setPen(color);
    painter.drawRect(container.adjusted(0, 0, -1, -1));
    painter.fillRect(line.adjusted(0, -halo, 0, halo), ground);
    painter.fillRect(line, color);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, line.height()));
    painter.setBrush(ground);
    painter.drawEllipse(QRectF(ring));
    painter.restore();
}
