#pragma once

#include <QObject>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "app/model/outline/OutlineChanges.h"
#include "app/model/outline/OutlineRow.h"
#include "app/model/outline/OutlineRowList.h"
#include "app/model/outline/RowHintCorrections.h"
#include "app/model/tree/NodeId.h"
#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNodePtr.h"

class PlistDocument;

/// The flat list of rows that one window shows of a tree, and what the user has done to it: which
/// containers are expanded, which rows are selected, which cell is being edited, and which nodes a
/// search leaves visible. Belongs to the main thread.
///
/// `rebuild` makes the rows from the tree. With `follow` that happens once after each change of the
/// tree, and only for the part of the rows in which something has changed. They are compared by
/// node with those before, and the signals report the smallest difference, each with an "about to"
/// before `rows()` changes and a partner after it, as an item model needs them:
/// - a new root: one reset;
/// - else at most one removal and then one insertion;
/// - or, when rows in between stay or change places, one rearrangement;
/// - and at most one range of rows that show something else than before (none with a reset or a
///   rearrangement, after which every row is to be drawn again).
class OutlineState : public QObject {
    Q_OBJECT

public:
    using Row = OutlineRow;

    enum class Column : std::uint8_t { key, value };
    Q_ENUM(Column)

    struct EditingField {
        NodeId nodeId = 0;
        Column column = Column::key;
        friend bool operator==(const EditingField&, const EditingField&) = default;
    };

    enum class Expansion : std::uint8_t { collapse, expand };
    enum class Reach : std::uint8_t {
        nodeAlone,
        wholeSubtree,
    };
    enum class ExpandResult : std::uint8_t {
        done,
        tooManyRows,  ///< nothing was expanded
    };

    /// The most values that may be expanded at once with all that is below them. By sharing, a
    /// small file can describe more than any memory holds; this is several times the largest
    /// documents.
    static constexpr std::uint64_t expandedValueLimit = 10'000'000;

    /// Without a root and without rows.
    explicit OutlineState(QObject* parent = nullptr);
    ~OutlineState() override;

    /// The visible rows from top to bottom. Valid until the next change.
    const std::vector<Row>& rows() const noexcept { return rows_.rows(); }

    /// Makes the rows from the tree. A root other than before starts expanded, takes over the
    /// expansion of the old one wherever the same keys and positions lead, and clears selection
    /// and editing. Costs in proportion to the rows; collapsed parts are never touched.
    void rebuild(PlistNode& root);

    /// Shows a document: rebuilds now, and brings the rows up to date whenever an edit, an undo
    /// step or a new root has changed its tree. To be called once; lasts until either of the two is
    /// destroyed.
    void follow(PlistDocument& document);

    /// The tree that the rows were made from; null before the first `rebuild`.
    PlistNode* root() const noexcept { return root_.get(); }

    /// The selected nodes. Nodes that a rebuild leaves without a row are deselected by it.
    const NodeIdSet& selection() const noexcept { return selection_; }
    void select(const NodeIdSet& ids);

    /// The rows of the selected nodes, in row order.
    std::vector<Row> selectedRows() const;

    /// The number of the row that shows a node, or nothing. By node it is usually found at once,
    /// else by looking through the rows; by id always so.
    std::optional<int> rowOf(const PlistNode& node) const;
    std::optional<int> rowForId(NodeId id) const;

    /// As `rowOf`, but by the node's hint alone: fast also for a node without a row. Reliable while
    /// no other outline shows the same nodes.
    std::optional<int> hintedRowOf(const PlistNode& node) const;

    const std::optional<EditingField>& editing() const noexcept { return editing_; }
    void setEditing(std::optional<EditingField> field);

    /// The column under the pointer; kept by the table for the actions.
    std::optional<Column> pointerColumn() const noexcept { return pointerColumn_; }
    void setPointerColumn(std::optional<Column> column) noexcept { pointerColumn_ = column; }

    /// Whether the user has expanded the container; a filter shows containers open regardless.
    bool isExpanded(NodeId id) const { return expanded_.contains(id); }
    const NodeIdSet& expanded() const noexcept { return expanded_; }

    /// Expands or collapses containers; scalars are ignored. Rebuilds the rows once. Expanding with
    /// all that is below is refused as a whole beyond `expandedValueLimit`.
    ExpandResult setExpanded(std::span<const PlistNodePtr> nodes, Expansion expansion, Reach reach);
    ExpandResult setExpanded(PlistNode& node, Expansion expansion, Reach reach);

    /// Has a node expanded from the next rebuild on, and makes no rows itself: for a change of the
    /// tree that is about to make them anyway. Until then the node may be a scalar.
    void expandWithNextRebuild(PlistNode& node);

    /// Collapses every container of the tree but the root, which is expanded. Rebuilds once.
    void collapseAll();

    /// Expands every ancestor of `node`, not the node itself, and rebuilds.
    void reveal(const PlistNode& node);

    /// The nodes that stay visible; nothing when all do.
    const std::optional<NodeIdSet>& filter() const noexcept { return filter_; }

    /// Replaces the filter and rebuilds. A node is shown when it and all its ancestors are in the
    /// filter, and every container among them is open.
    void setFilter(std::optional<NodeIdSet> filter);

Q_SIGNALS:
    void rowsAboutToBeReset();
    void rowsReset();

    /// Rows `first` to `last`, both included.
    void rowsAboutToBeRemoved(int first, int last);
    void rowsRemoved();
    void rowsAboutToBeInserted(int first, int last);
    void rowsInserted();

    /// Rows are added, removed and moved in one step. The receiver remembers by node what it wants
    /// to follow, and asks `rowOf` afterwards.
    void rowsAboutToBeRearranged();
    void rowsRearranged();

    /// Rows `first` to `last`, both included, show the same nodes as before in another way.
    void rowsDataChanged(int first, int last);

    /// Once at the end of a change of `rows()`, after all the others.
    void rowsChanged();

    void selectionChanged();
    void editingChanged();

private:
    void installRoot(PlistNode& root);
    void resetRows();
    void rebuildRows();
    void rebuildIfShown();
    void update();
    void updateBelow(PlistNode& top);
    void updateSegment(std::size_t first);
    void updateRun(std::size_t parentRow, const PlistNodeRun& run);
    std::size_t placeOf(const Row& parent, std::size_t parentRow, std::size_t index) const;
    std::size_t endOfSegment(std::size_t first) const;
    std::vector<Row> freshRows();
    void applyDifference(std::vector<Row> rows, std::size_t offset, std::size_t oldCount);
    void setExpandedAlone(PlistNode& node, Expansion expansion);
    void beginChange();
    void endChange() { isChangingRows_ = false; }
    void pruneSelection();

    PlistNodePtr root_;
    OutlineRowList rows_;
    OutlineChanges changes_;              ///< since the rows were made
    RowHintCorrections hintCorrections_;  ///< since the nodes were given their hints
    NodeIdSet selection_;
    NodeIdSet expanded_;
    std::optional<NodeIdSet> filter_;
    std::optional<EditingField> editing_;
    std::optional<Column> pointerColumn_;
    bool isChangingRows_ = false;
    bool isSelectionShown_ = true;  ///< each selected node is known to have a row
};
