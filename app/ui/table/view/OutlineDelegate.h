#pragma once

#include <QStyledItemDelegate>

#include "app/model/outline/OutlineRow.h"

class OutlineTableModel;

/// What the cells of all columns have in common: the ground with selection and focus, colours, one
/// line of plain text, and tooltips that stay plain.
class OutlineDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    enum class Tone { primary, secondary, link };

    /// `model` must outlive the cell and be the one whose indexes it is asked to paint.
    explicit OutlineDelegate(const OutlineTableModel& model, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const final;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const final;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    /// Paints what stands on the ground of the cell `option.rect`, which nothing leaves.
    virtual void paintContent(QPainter& painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const = 0;

    /// What to say about the point `position` of the cell: the model's tooltip by default.
    virtual QString tooltipAt(const QPoint& position, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const;

    /// Where the text stands that can be edited: the whole content by default.
    virtual QRect textRect(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    const OutlineRow& row(const QModelIndex& index) const;

    static QColor textColor(const QStyleOptionViewItem& option, Tone tone);
    static QColor groundColor(const QStyleOptionViewItem& option);

    /// Paints one line of `text` at the leading side of `rect`, cut with an ellipsis.
    static void paintText(QPainter& painter, const QStyleOptionViewItem& option, const QRect& rect,
                          const QString& text, Tone tone);

    /// The cell without the space at its sides.
    static QRect contentRect(const QStyleOptionViewItem& option);

private:
    const OutlineTableModel& model_;
};
