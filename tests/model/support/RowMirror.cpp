#include "tests/model/support/RowMirror.h"

#include <optional>

#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/TreeText.h"

namespace {

QString rangeText(const char* what, int first, int last) {
    return QStringLiteral("%1 %2-%3").arg(QLatin1String(what)).arg(first).arg(last);
}

}  // namespace

RowMirror::RowMirror(OutlineState& outline) : outline_(outline), rows_(readAll()) {
    connect(&outline, &OutlineState::rowsAboutToBeReset, this, [this] { beginResetModel(); });
    connect(&outline, &OutlineState::rowsReset, this, [this] {
        signals_ += QStringLiteral("reset");
        rows_ = readAll();
        endResetModel();
    });
    connect(&outline, &OutlineState::rowsAboutToBeRemoved, this, &RowMirror::beginRemove);
    connect(&outline, &OutlineState::rowsRemoved, this, &RowMirror::endRemove);
    connect(&outline, &OutlineState::rowsAboutToBeInserted, this, &RowMirror::beginInsert);
    connect(&outline, &OutlineState::rowsInserted, this, &RowMirror::endInsert);
    connect(&outline, &OutlineState::rowsAboutToBeRearranged, this, &RowMirror::beginRearrange);
    connect(&outline, &OutlineState::rowsRearranged, this, &RowMirror::endRearrange);
    connect(&outline, &OutlineState::rowsDataChanged, this, &RowMirror::change);
}

int RowMirror::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RowMirror::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 1;
}

QVariant RowMirror::data(const QModelIndex& index, int role) const {
    return role == Qt::DisplayRole ? QVariant(rows_[index.row()]) : QVariant();
}

QStringList RowMirror::read(int first, int last) const {
    QStringList lines;
    for (int row = first; row <= last; ++row) {
        lines += TreeText::ofRow(outline_.rows()[static_cast<std::size_t>(row)]);
    }
    return lines;
}

QStringList RowMirror::readAll() const {
    return read(0, static_cast<int>(outline_.rows().size()) - 1);
}

void RowMirror::beginRemove(int first, int last) {
    signals_ += rangeText("remove", first, last);
    first_ = first;
    last_ = last;
    beginRemoveRows({}, first, last);
}

void RowMirror::endRemove() {
    rows_.remove(first_, last_ - first_ + 1);
    // A view that reads now must find as many rows as it knows of.
    if (outline_.rows().size() != static_cast<std::size_t>(rows_.size())) {
        signals_ += QStringLiteral("too early or too late");
    }
    endRemoveRows();
}

void RowMirror::beginInsert(int first, int last) {
    signals_ += rangeText("insert", first, last);
    first_ = first;
    last_ = last;
    beginInsertRows({}, first, last);
}

void RowMirror::endInsert() {
    const QStringList added = read(first_, last_);
    rows_ = rows_.mid(0, first_) + added + rows_.mid(first_);
    endInsertRows();
}

void RowMirror::beginRearrange() {
    signals_ += QStringLiteral("rearrange");
    Q_EMIT layoutAboutToBeChanged();
    followed_ = persistentIndexList();
    followedNodes_.clear();
    for (const QModelIndex& index : followed_) {
        PlistNode& node = outline_.rows()[static_cast<std::size_t>(index.row())].node();
        followedNodes_.emplace_back(&node);
    }
}

void RowMirror::endRearrange() {
    rows_ = readAll();
    QModelIndexList moved;
    for (const PlistNodePtr& node : followedNodes_) {
        const std::optional<int> row = outline_.rowOf(*node);
        moved += row ? index(*row, 0) : QModelIndex();
    }
    changePersistentIndexList(followed_, moved);
    followedNodes_.clear();
    Q_EMIT layoutChanged();
}

void RowMirror::change(int first, int last) {
    signals_ += rangeText("change", first, last);
    const QStringList now = read(first, last);
    for (int row = first; row <= last; ++row) {
        rows_[row] = now[row - first];
    }
    Q_EMIT dataChanged(index(first, 0), index(last, 0));
}
