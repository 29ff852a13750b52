#include "app/ui/table/view/OutlineDelegate.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QTableView>
#include <QToolTip>
#include <algorithm>

#include "app/ui/editors/CellField.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/look/Colors.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/text/OwnDirection.h"
#include "app/ui/text/PlainToolTip.h"

namespace {

/// The fewest characters that a field has room for.
constexpr int fieldCharacters = 12;

QPalette::ColorGroup colorGroup(const QStyleOptionViewItem& option) {
    if (!option.state.testFlag(QStyle::State_Enabled)) {
        return QPalette::Disabled;
    }
    return option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
}

bool isSelected(const QStyleOptionViewItem& option) {
    return option.state.testFlag(QStyle::State_Selected);
}

const QStyle& styleOf(const QStyleOptionViewItem& option) {
    return option.widget != nullptr ? *option.widget->style() : *QApplication::style();
}

void paintBackground(QPainter& painter, const QStyleOptionViewItem& option) {
    styleOf(option).drawPrimitive(QStyle::PE_PanelItemViewItem, &option, &painter, option.widget);
}

/// The table if it has the keyboard focus and `index` is in its current row, else null.
const QTableView* tableWithFocusOn(const QModelIndex& index, const QStyleOptionViewItem& option) {
    const auto* table = qobject_cast<const QTableView*>(option.widget);
    const bool hasFocus = table != nullptr && table->hasFocus() &&
                          table->currentIndex().isValid() &&
                          table->currentIndex().row() == index.row();
    return hasFocus ? table : nullptr;
}

/// Paints the part of a frame around the whole row that lies in this cell.
void paintFocus(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                const QTableView& table) {
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    const int last = index.model()->columnCount() - 1;
    focus.rect =
        table.visualRect(index.siblingAtColumn(0)) | table.visualRect(index.siblingAtColumn(last));
    focus.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
    focus.backgroundColor = option.palette.color(colorGroup(option), QPalette::Base);
    styleOf(option).drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, option.widget);
}

/// Where the texts of cells begin, whatever their own direction.
Qt::Alignment cellAlignment(Qt::LayoutDirection layout) {
    return QStyle::visualAlignment(layout, Qt::AlignLeft | Qt::AlignVCenter);
}

/// No more of a text than could fit: measuring all of it would cost time, and few characters are
/// narrower than a quarter of the average.
QString fitting(const QString& text, const QFontMetrics& metrics, int width) {
    const int narrow = std::max(1, metrics.averageCharWidth() / 4);
    return text.left(std::max(0, width) / narrow + 2);
}

}  // namespace

OutlineDelegate::OutlineDelegate(const OutlineTableModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model) {}

void OutlineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    cell.index = index;
    cell.showDecorationSelected = true;
    cell.state &= ~QStyle::State_HasFocus;
    if (isSelected(cell)) {
        const QPalette::ColorGroup group = colorGroup(cell);
        cell.palette.setColor(group, QPalette::Highlight, Colors::selection(cell.palette, group));
    }
    paintBackground(*painter, cell);

    painter->save();
    painter->setClipRect(cell.rect, Qt::IntersectClip);
    paintContent(*painter, cell, index);
    // A selected row is already marked by its background.
    const QTableView* focused = tableWithFocusOn(index, cell);
    if (focused != nullptr && !isSelected(cell)) {
        paintFocus(*painter, cell, index, *focused);
    }
    painter->restore();
}

QSize OutlineDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    const CellMetrics metrics(option.font);
    const QString text = index.data().toString();
    return {option.fontMetrics.horizontalAdvance(text) + 2 * metrics.padding(),
            metrics.rowHeight()};
}

void OutlineDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                           const QModelIndex& index) const {
    // The text keeps its place when editing begins, and the field extends to the end of the cell.
    const int margin = CellMetrics(option.font).padding();
    if (auto* line = qobject_cast<QLineEdit*>(editor)) {
        line->setAlignment(cellAlignment(option.direction));
        line->setTextMargins(margin - CellField::ownTextMargin, 0,
                             margin - CellField::ownTextMargin, 0);
    }
    const QRect text = textRect(option, index).adjusted(-margin, 0, margin, 0);
    // Deep in the tree the rest of the cell may be too narrow for any field.
    const int width =
        std::min(option.rect.width(),
                 std::max(text.width(), fieldCharacters * option.fontMetrics.averageCharWidth()));
    const QRect field(text.right() + 1 - width, text.top(), width, text.height());
    const QRect mirrored(text.left(), text.top(), width, text.height());
    editor->setGeometry(option.direction == Qt::RightToLeft ? mirrored : field);
}

QRect OutlineDelegate::textRect(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return contentRect(option);
}

bool OutlineDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const QString text = tooltipAt(event->pos(), option, index);
    if (text.isEmpty()) {
        QToolTip::hideText();
    } else {
        PlainToolTip::show(event->globalPos(), text, option.widget, option.rect);
    }
    return true;
}

QString OutlineDelegate::tooltipAt(const QPoint&, const QStyleOptionViewItem&,
                                   const QModelIndex& index) const {
    return index.data(Qt::ToolTipRole).toString();
}

const OutlineRow& OutlineDelegate::row(const QModelIndex& index) const {
    return model_.row(index.row());
}

QColor OutlineDelegate::textColor(const QStyleOptionViewItem& option, Tone tone) {
    const QPalette::ColorGroup group = colorGroup(option);
    if (isSelected(option)) {
        // The contrast of selected text is too low already to be reduced.
        return option.palette.color(group, QPalette::HighlightedText);
    }
    if (tone == Tone::secondary) {
        return Colors::secondary(option.palette, group, QPalette::Text, QPalette::Base);
    }
    return option.palette.color(group, tone == Tone::link ? QPalette::Link : QPalette::Text);
}

QColor OutlineDelegate::backgroundColor(const QStyleOptionViewItem& option) {
    return option.palette.color(colorGroup(option),
                                isSelected(option) ? QPalette::Highlight : QPalette::Base);
}

void OutlineDelegate::paintText(QPainter& painter, const QStyleOptionViewItem& option,
                                const QRect& rect, const QString& text, Tone tone) {
    const QString shown = option.fontMetrics.elidedText(
        fitting(text, option.fontMetrics, rect.width()), Qt::ElideRight, rect.width());
    painter.setFont(option.font);
    painter.setPen(textColor(option, tone));
    painter.setLayoutDirection(OwnDirection::of(text));
    painter.drawText(rect, static_cast<int>(cellAlignment(option.direction)) | Qt::TextSingleLine,
                     shown);
}

QRect OutlineDelegate::contentRect(const QStyleOptionViewItem& option) {
    const int padding = CellMetrics(option.font).padding();
    return option.rect.adjusted(padding, 0, -padding, 0);
}
