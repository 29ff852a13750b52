#include "app/model/outline/OutlineState.h"

#include <QSet>
#include <algorithm>
#include <utility>

#include "app/model/editing/PlistDocument.h"
#include "app/model/outline/OutlineDifference.h"
#include "app/model/outline/OutlineExpansion.h"
#include "app/model/outline/OutlineWalk.h"
#include "app/model/runtime/MainThread.h"
#include "app/model/runtime/Plist.h"
#include "app/model/runtime/Signposter.h"
#include "app/model/tree/PlistNode.h"

namespace {

bool isOpenArray(const OutlineRow& row) {
    return row.isExpanded() && row.node().type() == PlistType::array;
}

/// The given nodes without those below others of them.
std::vector<PlistNode*> topmost(std::span<const PlistNodePtr> nodes) {
    QSet<const PlistNode*> given;
    for (const PlistNodePtr& node : nodes) {
        given.insert(node.get());
    }
    std::vector<PlistNode*> result;
    for (const PlistNodePtr& node : nodes) {
        const PlistNode* above = node->parent();
        while (above != nullptr && !given.contains(above)) {
            above = above->parent();
        }
        if (above == nullptr) {
            result.push_back(node.get());
        }
    }
    return result;
}

/// Whether there are more than `limit` values in all at and below the nodes.
bool exceeds(std::span<PlistNode* const> nodes, std::uint64_t limit) {
    std::vector<PlistValue> values;
    values.reserve(nodes.size());
    for (PlistNode* node : nodes) {
        values.push_back(node->value());
    }
    return PlistExpansion::exceeds(values, limit);
}

/// Adds the ids of all containers at and below `top`, making all children.
void expandSubtree(PlistNode& top, NodeIdSet& expanded) {
    std::vector<PlistNode*> waiting{&top};
    while (!waiting.empty()) {
        PlistNode* node = waiting.back();
        waiting.pop_back();
        if (!node->isContainer()) {
            continue;
        }
        expanded.insert(node->id());
        const std::span<const PlistNodePtr> children = node->children();
        for (std::size_t i = children.size(); i > 0; --i) {
            if (children[i - 1]->isContainer()) {
                waiting.push_back(children[i - 1].get());
            }
        }
    }
}

/// Takes out the ids of all containers at and below `top`. Children that were never made have none.
void collapseSubtree(PlistNode& top, NodeIdSet& expanded) {
    std::vector<PlistNode*> waiting{&top};
    while (!waiting.empty()) {
        PlistNode* node = waiting.back();
        waiting.pop_back();
        if (!node->isContainer()) {
            continue;
        }
        expanded.remove(node->id());
        if (!node->isMaterialized()) {
            continue;
        }
        for (const PlistNodePtr& child : node->children()) {
            if (child->isContainer()) {
                waiting.push_back(child.get());
            }
        }
    }
}

}  // namespace

OutlineState::OutlineState(QObject* parent) : QObject(parent) {
    MainThread::check();
}

OutlineState::~OutlineState() = default;

// --- Rows ---

void OutlineState::rebuild(PlistNode& root) {
    MainThread::check();
    if (root_.get() == &root) {
        rebuildRows();
        return;
    }
    installRoot(root);
    {
        const Signposter::Interval interval("Rows");
        resetRows();
    }
    pruneSelection();
}

void OutlineState::follow(PlistDocument& document) {
    const auto rebuildFromDocument = [this, &document] { rebuild(document.root()); };
    connect(&document, &PlistDocument::rootChanged, this, rebuildFromDocument);
    connect(&document, &PlistDocument::nodeChanged, this,
            [this](PlistNode* node, PlistNodeChanges changes, std::optional<PlistNodeRun> run) {
                changes_.add(*node, changes, run);
            });
    connect(&document, &PlistDocument::treeChanged, this, &OutlineState::update);
    rebuildFromDocument();
}

void OutlineState::installRoot(PlistNode& root) {
    NodeIdSet expanded{root.id()};
    if (root_) {
        expanded = OutlineExpansion::carried(*root_, root, expanded_);
    }
    root_ = PlistNodePtr(&root);
    expanded_ = std::move(expanded);
    select({});
    setEditing(std::nullopt);
}

std::vector<OutlineState::Row> OutlineState::freshRows() {
    changes_.clear();
    hintCorrections_.clear();
    return OutlineWalk(expanded_, filter_).rows(*root_, rows().size());
}

void OutlineState::resetRows() {
    beginChange();
    Q_EMIT rowsAboutToBeReset();
    rows_.reset(freshRows());
    Q_EMIT rowsReset();
    endChange();
    Q_EMIT rowsChanged();
}

void OutlineState::rebuildRows() {
    const Signposter::Interval interval("Rows");
    beginChange();
    applyDifference(freshRows(), 0, rows().size());
    pruneSelection();
}

/// Rebuilds only the rows that the noted changes may have affected.
void OutlineState::update() {
    PlistNode* top = root_ ? changes_.top(*root_, expanded_) : nullptr;
    if (filter_ || hintCorrections_.isFull()) {
        rebuildIfShown();
    } else if (top != nullptr) {
        updateBelow(*top);
    }
    changes_.clear();
    pruneSelection();
}

void OutlineState::updateBelow(PlistNode& top) {
    const std::optional<int> found = rowOf(top);
    if (!found) {
        rebuildRows();
        return;
    }
    const auto row = static_cast<std::size_t>(*found);
    const std::optional<PlistNodeRun> run = changes_.onlyRun();
    if (run && isOpenArray(rows()[row])) {
        updateRun(row, *run);
    } else if (row == 0) {
        rebuildRows();
    } else {
        updateSegment(row);
    }
}

/// Rebuilds the row with the number `first` and those below it.
void OutlineState::updateSegment(std::size_t first) {
    const Signposter::Interval interval("Rows");
    const std::size_t oldEnd = endOfSegment(first);
    beginChange();
    std::vector<Row> fresh = OutlineWalk(expanded_, filter_).segment(rows()[first], first);
    const std::size_t newEnd = first + fresh.size();
    if (newEnd != oldEnd) {
        hintCorrections_.add(
            oldEnd, static_cast<std::ptrdiff_t>(newEnd) - static_cast<std::ptrdiff_t>(oldEnd));
    }
    applyDifference(std::move(fresh), first, oldEnd - first);
}

/// Removes or makes the rows of those children of an array that were removed or added, and
/// renumbers the items after them.
void OutlineState::updateRun(std::size_t parentRow, const PlistNodeRun& run) {
    const Signposter::Interval interval("Rows");
    const Row& parent = rows()[parentRow];
    const std::size_t place = placeOf(parent, parentRow, run.first);
    std::size_t oldEnd = place;
    for (std::size_t i = 0; i < run.removed; ++i) {
        oldEnd = endOfSegment(oldEnd);
    }
    beginChange();
    const std::vector<Row> fresh = OutlineWalk(expanded_, filter_).run(parent, run, place);
    const std::size_t newEnd = place + fresh.size();
    const bool removes = oldEnd > place;
    isSelectionShown_ = isSelectionShown_ && !removes;
    if (removes) {
        Q_EMIT rowsAboutToBeRemoved(static_cast<int>(place), static_cast<int>(oldEnd) - 1);
        rows_.remove(place, oldEnd);
    } else {
        Q_EMIT rowsAboutToBeInserted(static_cast<int>(place), static_cast<int>(newEnd) - 1);
        rows_.insert(place, fresh);
    }
    hintCorrections_.add(oldEnd,
                         static_cast<std::ptrdiff_t>(newEnd) - static_cast<std::ptrdiff_t>(oldEnd));
    const std::size_t last = rows_.renumber(parentRow, newEnd, run);
    removes ? Q_EMIT rowsRemoved() : Q_EMIT rowsInserted();
    Q_EMIT rowsDataChanged(static_cast<int>(parentRow), static_cast<int>(last));
    endChange();
    Q_EMIT rowsChanged();
}

/// The row at which the child with the number `index` begins, or would.
std::size_t OutlineState::placeOf(const Row& parent, std::size_t parentRow,
                                  std::size_t index) const {
    if (index == 0) {
        return parentRow + 1;
    }
    const std::optional<int> before = rowOf(*parent.node().children()[index - 1]);
    plistCheck(before.has_value(), "the children of an open container have rows");
    return endOfSegment(static_cast<std::size_t>(*before));
}

std::size_t OutlineState::endOfSegment(std::size_t first) const {
    const qint64 depth = rows()[first].depth();
    std::size_t end = first + 1;
    while (end < rows().size() && rows()[end].depth() > depth) {
        ++end;
    }
    return end;
}

/// Puts `rows` in place of `oldCount` rows from `offset` on.
void OutlineState::applyDifference(std::vector<Row> rows, std::size_t offset,
                                   std::size_t oldCount) {
    const OutlineDifference difference =
        OutlineDifference::between(std::span(this->rows()).subspan(offset, oldCount), rows, offset);
    const bool removes = difference.oldEnd > difference.start;
    const bool inserts = difference.newEnd > difference.start;
    isSelectionShown_ = isSelectionShown_ && !removes;
    if (difference.isRearrangement) {
        Q_EMIT rowsAboutToBeRearranged();
        rows_.replace(offset, offset + oldCount, std::move(rows));
        Q_EMIT rowsRearranged();
        endChange();
        Q_EMIT rowsChanged();
        return;
    }
    const int before = static_cast<int>(offset);
    const int first = before + static_cast<int>(difference.start);
    if (removes) {
        Q_EMIT rowsAboutToBeRemoved(first, before + static_cast<int>(difference.oldEnd) - 1);
        rows_.remove(offset + difference.start, offset + difference.oldEnd);
        Q_EMIT rowsRemoved();
    }
    if (inserts) {
        Q_EMIT rowsAboutToBeInserted(first, before + static_cast<int>(difference.newEnd) - 1);
    }
    rows_.update(offset, std::move(rows), difference.start, difference.newEnd);
    if (inserts) {
        Q_EMIT rowsInserted();
    }
    if (difference.changed) {
        Q_EMIT rowsDataChanged(before + difference.changed->first,
                               before + difference.changed->last);
    }
    endChange();
    if (removes || inserts || difference.changed) {
        Q_EMIT rowsChanged();
    }
}

void OutlineState::beginChange() {
    plistCheck(!isChangingRows_, "nobody changes the rows while they change");
    isChangingRows_ = true;
}

std::optional<int> OutlineState::rowOf(const PlistNode& node) const {
    const std::optional<int> hinted = hintedRowOf(node);
    return hinted ? hinted : rowForId(node.id());
}

std::optional<int> OutlineState::hintedRowOf(const PlistNode& node) const {
    MainThread::check();
    return hintCorrections_.find(node.rowHint(), [this, &node](int row) {
        return row >= 0 && static_cast<std::size_t>(row) < rows().size() &&
               rows()[static_cast<std::size_t>(row)].nodeId() == node.id();
    });
}

std::optional<int> OutlineState::rowForId(NodeId id) const {
    MainThread::check();
    const auto found = std::find_if(rows().begin(), rows().end(),
                                    [id](const Row& row) { return row.nodeId() == id; });
    if (found == rows().end()) {
        return std::nullopt;
    }
    return static_cast<int>(found - rows().begin());
}

// --- Selection and editing ---

void OutlineState::select(const NodeIdSet& ids) {
    MainThread::check();
    if (selection_ != ids) {
        selection_ = ids;
        isSelectionShown_ = false;
        Q_EMIT selectionChanged();
    }
}

std::vector<OutlineState::Row> OutlineState::selectedRows() const {
    MainThread::check();
    std::vector<Row> selected;
    if (selection_.isEmpty()) {
        return selected;
    }
    for (const Row& row : rows()) {
        if (selection_.contains(row.nodeId())) {
            selected.push_back(row);
            if (selected.size() == static_cast<std::size_t>(selection_.size())) {
                break;
            }
        }
    }
    return selected;
}

void OutlineState::pruneSelection() {
    if (isSelectionShown_) {
        return;
    }
    const std::vector<Row> selected = selectedRows();
    if (selected.size() != static_cast<std::size_t>(selection_.size())) {
        NodeIdSet visible;
        for (const Row& row : selected) {
            visible.insert(row.nodeId());
        }
        select(visible);
    }
    isSelectionShown_ = true;
}

void OutlineState::setEditing(std::optional<EditingField> field) {
    MainThread::check();
    if (editing_ != field) {
        editing_ = field;
        Q_EMIT editingChanged();
    }
}

// --- Expansion and filter ---

OutlineState::ExpandResult OutlineState::setExpanded(PlistNode& node, Expansion expansion,
                                                     Reach reach) {
    const PlistNodePtr nodes[] = {PlistNodePtr(&node)};
    return setExpanded(nodes, expansion, reach);
}

OutlineState::ExpandResult OutlineState::setExpanded(std::span<const PlistNodePtr> nodes,
                                                     Expansion expansion, Reach reach) {
    MainThread::check();
    if (reach == Reach::wholeSubtree) {
        const std::vector<PlistNode*> tops = topmost(nodes);
        if (expansion == Expansion::expand && exceeds(tops, expandedValueLimit)) {
            return ExpandResult::tooManyRows;
        }
        for (PlistNode* top : tops) {
            expansion == Expansion::expand ? expandSubtree(*top, expanded_)
                                           : collapseSubtree(*top, expanded_);
            changes_.add(*top);
        }
    } else {
        for (const PlistNodePtr& node : nodes) {
            setExpandedAlone(*node, expansion);
        }
    }
    update();
    return ExpandResult::done;
}

void OutlineState::setExpandedAlone(PlistNode& node, Expansion expansion) {
    const bool shallExpand = expansion == Expansion::expand;
    if (!node.isContainer() || shallExpand == expanded_.contains(node.id())) {
        return;
    }
    if (shallExpand) {
        expanded_.insert(node.id());
    } else {
        expanded_.remove(node.id());
    }
    changes_.add(node);
}

void OutlineState::expandWithNextRebuild(PlistNode& node) {
    MainThread::check();
    if (!expanded_.contains(node.id())) {
        expanded_.insert(node.id());
        changes_.add(node);
    }
}

void OutlineState::collapseAll() {
    MainThread::check();
    if (root_) {
        collapseSubtree(*root_, expanded_);
        setExpandedAlone(*root_, Expansion::expand);
        rebuildRows();
    }
}

void OutlineState::reveal(const PlistNode& node) {
    MainThread::check();
    for (PlistNode* above = node.parent(); above != nullptr; above = above->parent()) {
        setExpandedAlone(*above, Expansion::expand);
    }
    update();
}

void OutlineState::setFilter(std::optional<NodeIdSet> filter) {
    MainThread::check();
    filter_ = std::move(filter);
    rebuildIfShown();
}

void OutlineState::rebuildIfShown() {
    if (root_) {
        rebuildRows();
    }
}
