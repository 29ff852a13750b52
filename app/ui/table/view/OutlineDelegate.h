#pragma once

#include <QStyledItemDelegate>

#include "app/model/outline/OutlineRow.h"

class OutlineTableModel;

/// What the delegates of all columns have in common: a background with selection and focus, colors,
/// a single line of plain text, and tooltips in plain text.
class OutlineDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    enum class Tone { primary, secondary, link };

    /// `model` must outlive the delegate and be the one whose indexes it is asked to paint.
    explicit OutlineDelegate(const OutlineTableModel& model, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const final;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const final;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    /// Paints what is on the background of the cell `option.rect`, clipped to it.
    virtual void paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const = 0;

    /// The tooltip for the point `position` of the cell: the model's by default.
    virtual QString tooltipAt(const QPoint& position, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const;

    /// Where the editable text is: the whole content by default.
    virtual QRect textRect(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    const OutlineRow& row(const QModelIndex& index) const;

    static QColor textColor(const QStyleOptionViewItem& option, Tone tone);
    static QColor backgroundColor(const QStyleOptionViewItem& option);

    /// Paints one line of `text` at the leading side of `rect`, elided if it does not fit.
    static void paintText(QPainter& painter, const QStyleOptionViewItem& option, const QRect& rect,
                          const QString& text, Tone tone);

    /// The cell without the padding at its sides.
    static QRect contentRect(const QStyleOptionViewItem& option);

private:
    const OutlineTableModel& model_;
};
