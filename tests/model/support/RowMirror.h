#pragma once

#include <QAbstractTableModel>
#include <QModelIndexList>
#include <QStringList>
#include <vector>

#include "app/model/tree/NodeId.h"
#include "app/model/tree/PlistNodePtr.h"

class OutlineState;

/// Follows an outline by its signals alone, as a table model does. What it shows is what it was
/// told: rows that changed without a signal, or a signal with wrong numbers, make it differ from
/// the outline.
class RowMirror : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit RowMirror(OutlineState& outline);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    /// The rows as they were last told of, one line each.
    QString text() const { return rows_.join(QLatin1Char('\n')); }

    /// The signals since the last call: "remove 1-2", "insert 0-0", "change 3-4", "rearrange",
    /// "reset".
    QStringList takeSignals() { return std::exchange(signals_, {}); }

private:
    QStringList read(int first, int last) const;
    QStringList readAll() const;
    void beginRemove(int first, int last);
    void endRemove();
    void beginInsert(int first, int last);
    void endInsert();
    void beginRearrange();
    void endRearrange();
    void change(int first, int last);

    OutlineState& outline_;
    QStringList rows_;
    QStringList signals_;
    int first_ = 0;
    int last_ = 0;
    QModelIndexList followed_;
    std::vector<PlistNodePtr> followedNodes_;
};
