#include "app/ui/table/view/OutlineTableModel.h"

#include <QTextBoundaryFinder>
#include <optional>

#include "app/model/tree/PlistNode.h"
#include "app/ui/text/RowText.h"

namespace {

/// Whether a text has at least this many characters, as people count them.
bool hasCharacters(const QString& text, int count) {
    if (text.size() < count) {
        return false;
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (int i = 0; i < count; ++i) {
        if (finder.toNextBoundary() < 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

OutlineTableModel::OutlineTableModel(OutlineState& outline, QObject* parent)
    : QAbstractTableModel(parent), outline_(&outline) {
    followOutline();
}

OutlineTableModel::~OutlineTableModel() = default;

void OutlineTableModel::followOutline() {
    connect(outline_, &OutlineState::rowsAboutToBeReset, this, [this] { beginResetModel(); });
    connect(outline_, &OutlineState::rowsReset, this, [this] { endResetModel(); });
    connect(outline_, &OutlineState::rowsAboutToBeRemoved, this,
            [this](int first, int last) { beginRemoveRows({}, first, last); });
    connect(outline_, &OutlineState::rowsRemoved, this, [this] { endRemoveRows(); });
    connect(outline_, &OutlineState::rowsAboutToBeInserted, this,
            [this](int first, int last) { beginInsertRows({}, first, last); });
    connect(outline_, &OutlineState::rowsInserted, this, [this] { endInsertRows(); });
    connect(outline_, &OutlineState::rowsDataChanged, this, [this](int first, int last) {
        Q_EMIT dataChanged(index(first, 0), index(last, columnTotal - 1));
    });
    connect(outline_, &OutlineState::rowsAboutToBeRearranged, this,
            &OutlineTableModel::keepIndexes);
    connect(outline_, &OutlineState::rowsRearranged, this, &OutlineTableModel::restoreIndexes);
}

void OutlineTableModel::keepIndexes() {
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList indexes = persistentIndexList();
    kept_.reserve(static_cast<std::size_t>(indexes.size()));
    for (const QModelIndex& index : indexes) {
        kept_.push_back({index, PlistNodePtr(&row(index.row()).node())});
    }
}

void OutlineTableModel::restoreIndexes() {
    const std::vector<Kept> kept = std::exchange(kept_, {});
    for (const Kept& one : kept) {
        const std::optional<int> number = outline_->hintedRowOf(*one.node);
        changePersistentIndex(one.index,
                              number ? index(*number, one.index.column()) : QModelIndex());
    }
    Q_EMIT layoutChanged();
}

int OutlineTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(outline_->rows().size());
}

int OutlineTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columnTotal;
}

QVariant OutlineTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return text(index);
        case Qt::AccessibleDescriptionRole:
            return index.column() == keyColumn ? RowText::keyDescription(row(index.row()))
                                               : QString();
        case Qt::ToolTipRole:
            return tooltip(index);
        case Qt::CheckStateRole:
            return checkState(index);
        default:
            return {};
    }
}

QString OutlineTableModel::text(const QModelIndex& index) const {
    const OutlineRow& shown = row(index.row());
    switch (index.column()) {
        case keyColumn:
            return RowText::key(shown);
        case typeColumn:
            return RowText::type(shown);
        default:
            return RowText::value(shown);
    }
}

QVariant OutlineTableModel::tooltip(const QModelIndex& index) const {
    const QString whole = text(index);
    const bool isDate =
        index.column() == valueColumn && row(index.row()).node().type() == PlistType::date;
    return isDate || hasCharacters(whole, tooltipLength) ? QVariant(whole) : QVariant();
}

QVariant OutlineTableModel::checkState(const QModelIndex& index) const {
    const PlistNode& node = row(index.row()).node();
    if (index.column() != valueColumn || node.type() != PlistType::boolean) {
        return {};
    }
    return node.scalar().booleanValue() ? Qt::Checked : Qt::Unchecked;
}

QVariant OutlineTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return static_cast<int>(Qt::AlignLeading | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
        case keyColumn:
            return tr("Key");
        case typeColumn:
            return tr("Type");
        case valueColumn:
            return tr("Value");
        default:
            return {};
    }
}

Qt::ItemFlags OutlineTableModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
}
