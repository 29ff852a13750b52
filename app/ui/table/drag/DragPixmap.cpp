#include "app/ui/table/drag/DragPixmap.h"

#include <QLocale>
#include <QPainter>
#include <QWidget>
#include <algorithm>

#include "app/ui/look/CellMetrics.h"

namespace {

constexpr int widestName = 240;

struct Layout {
    Layout(const QStringList& names, const QString& count, const QWidget& widget)
        : metrics(widget.font()), text(widget.fontMetrics()) {
        int width = 0;
        for (const QString& name : names) {
            width = std::max(width, text.horizontalAdvance(name));
        }
        // The advance is rounded, and a name that is a fraction too wide would be elided.
        nameWidth = std::min(width + 1, metrics.scaled(widestName));
        if (!count.isEmpty()) {
            // At least a circle.
            badgeWidth = std::max(text.height(), text.horizontalAdvance(count) + text.height() / 2);
        }
    }

    int lineHeight() const { return text.height() + metrics.scaled(4); }

    QSize size(qsizetype lines) const {
        const int badge = badgeWidth == 0 ? 0 : badgeWidth + 2 * metrics.spacing();
        return {nameWidth + badge + 2 * metrics.scaled(8),
                static_cast<int>(lines) * lineHeight() + metrics.scaled(8)};
    }

    CellMetrics metrics;
    QFontMetrics text;
    int nameWidth = 0;
    int badgeWidth = 0;
};

void paintNames(QPainter& painter, const QStringList& names, const QRect& sheet,
                const Layout& layout) {
    QRect line(sheet.left() + layout.metrics.scaled(8), sheet.top() + layout.metrics.scaled(4),
               layout.nameWidth, layout.lineHeight());
    for (const QString& name : names) {
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         layout.text.elidedText(name, Qt::ElideRight, line.width()));
        line.translate(0, line.height());
    }
}

void paintBadge(QPainter& painter, const QString& count, const QRect& sheet, const Layout& layout,
                const QPalette& palette) {
    const int height = layout.text.height();
    const QRect badge(sheet.right() + 1 - layout.metrics.scaled(8) - layout.badgeWidth,
                      sheet.top() + layout.metrics.scaled(4) + (layout.lineHeight() - height) / 2,
                      layout.badgeWidth, height);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::Highlight));
    painter.drawRoundedRect(badge, height / 2.0, height / 2.0);
    painter.setPen(palette.color(QPalette::HighlightedText));
    painter.drawText(badge, Qt::AlignCenter, count);
}

}  // namespace

QPixmap DragPixmap::of(const QStringList& names, qsizetype count, const QWidget& widget) {
    const QStringList shown = names.mid(0, longest);
    const QString number = count > 1 ? QLocale().toString(count) : QString();
    const Layout layout(shown, number, widget);
    const QSize size = layout.size(shown.size());
    const qreal scale = widget.devicePixelRatioF();
    QPixmap picture(size * scale);
    picture.setDevicePixelRatio(scale);
    // Nothing is transparent: without a compositor it would be black.
    picture.fill(widget.palette().color(QPalette::Base));

    QPainter painter(&picture);
    const QRect sheet(QPoint(0, 0), size);
    painter.setFont(widget.font());
    painter.setPen(widget.palette().color(QPalette::Highlight));
    painter.drawRect(sheet.adjusted(0, 0, -1, -1));
    painter.setPen(widget.palette().color(QPalette::Text));
    paintNames(painter, shown, sheet, layout);
    if (!number.isEmpty()) {
        paintBadge(painter, number, sheet, layout, widget.palette());
    }
    return picture;
}
