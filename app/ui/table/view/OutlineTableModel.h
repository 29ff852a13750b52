#pragma once

#include <QAbstractTableModel>
#include <utility>
#include <vector>

#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNodePtr.h"

/// The rows of an outline as a table of keys, types and values. It stores nothing for a row: every
/// answer comes from the outline and costs the same however many rows there are.
class OutlineTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { keyColumn, typeColumn, valueColumn, columnTotal };

    /// A text of this many characters, as people count them, or more has a tooltip.
    static constexpr int tooltipLength = 61;

    /// `outline` must outlive the model.
    explicit OutlineTableModel(OutlineState& outline, QObject* parent = nullptr);
    ~OutlineTableModel() override;

    OutlineState& outline() const noexcept { return *outline_; }

    /// The row with this number, which must exist. Valid until the next change.
    const OutlineRow& row(int number) const {
        return outline_->rows()[static_cast<std::size_t>(number)];
    }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    /// A persistent index, with the node that it has to follow.
    struct Kept {
        QModelIndex index;
        PlistNodePtr node;
    };

    void followOutline();
    void keepIndexes();
    void restoreIndexes();
    QString text(const QModelIndex& index) const;
    QVariant tooltip(const QModelIndex& index) const;
    QVariant checkState(const QModelIndex& index) const;

    OutlineState* outline_;
    std::vector<Kept> kept_;
};
