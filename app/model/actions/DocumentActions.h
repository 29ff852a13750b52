#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "app/model/editing/PlistEditor.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNodePtr.h"

class PlistDocument;
class UndoManager;
struct InsertionPoint;
struct PlistTransfer;

/// What commands and views do to a document and to the outline that a window shows of it: each
/// gesture of the user is one operation, and at most one undo entry. A small record without state
/// of its own. What cannot be done, for want of a selection or of a place, is not done, silently.
///
/// The document and the outline must outlive it, and the outline must follow the document
/// (`OutlineState::follow`): new rows are selected as soon as they are there. Belongs to the main
/// thread.
class DocumentActions {
public:
    /// Where a drag began, whose source nodes mean something only to the process that has them.
    enum class DragOrigin : std::uint8_t { thisProcess, elsewhere };

    enum class Direction : std::uint8_t { up, down };

    /// Without an undo manager, edits happen but cannot be taken back.
    DocumentActions(PlistDocument& document, OutlineState& outline,
                    UndoManager* undoManager = nullptr)
        : outline_(&outline), editor_(document, undoManager) {}

    PlistDocument& document() const noexcept { return editor_.document(); }
    OutlineState& outline() const noexcept { return *outline_; }
    const PlistEditor& editor() const noexcept { return editor_; }

    // --- What the selection allows ---

    /// The nodes that commands act on: those of the selected rows, in row order, without the root,
    /// which can neither be moved nor deleted, and without nodes that stand below selected ones and
    /// go along with them. With the root selected there are therefore none.
    std::vector<PlistNodePtr> selectedTopLevelNodes() const;

    /// Whether there are any of them; looks no further than the first.
    bool hasSelectedTopLevelNodes() const;

    /// Whether new items have a place anywhere in the document: the root is a container.
    bool canAddItem() const;

    /// The dictionary that `sortKeys` sorts: the first selected node or else its parent; the root
    /// without a selection. Null if that is none.
    PlistNode* sortTarget() const;

    /// Whether the key, or the value, is text that can be edited in place.
    static bool canEditKey(const PlistNode& node);
    static bool canEditValue(const PlistNode& node);

    // --- Items ---

    /// Adds an empty string at the insertion point, selects it alone, and begins to edit its key,
    /// or in an array its value.
    void addItem() const;

    /// Puts a copy after each selected node, one undo entry for all, and selects the copies.
    void duplicate() const;

    /// Deletes the selected nodes, and selects the row that takes the place of the first of them.
    void deleteSelected() const;

    /// Moves the selected nodes, which gather to one block, before the sibling above the first, or
    /// after the one below the last of them. Only if all are siblings.
    void moveSelected(Direction direction) const;

    /// Sorts the `sortTarget`.
    void sortKeys() const;

    // --- One item ---

    /// Gives the node another key; returns what to tell the user if it is refused.
    std::optional<QString> rename(PlistNode& node, const QString& key) const;

    /// Reads the text as a value of the node's type; returns what to tell the user if it is none,
    /// and the value stays.
    std::optional<QString> setValueFromText(PlistNode& node, const QString& text) const;

    /// Replaces a scalar by another.
    void changeValue(PlistNode& node, const PlistValue& value) const;

    /// Converts the node; a container is shown expanded afterwards.
    void changeType(PlistNode& node, PlistType type) const;

    /// Sets the format that the document will be saved in. Does nothing for the OpenStep form,
    /// which can only be read.
    void changeFormat(PlistFormat format) const;

    // --- Editing in place ---

    /// Edits the first selected row in the given column, the value in place of a key that cannot be
    /// edited; without a column the value or else the key. A field that was open closes now, the
    /// new one opens one turn of the event loop later, if the row is still there.
    void beginEditing(std::optional<OutlineState::Column> column) const;

    /// Goes on from the key of a node to its value, in the same way; where that cannot be edited,
    /// editing ends.
    void moveOnFromKey(const PlistNode& node) const;

    // --- Selection and expansion ---

    /// Selects every row but the root: with it, nothing would be left to act on.
    void selectAll() const;

    /// Expands the selected containers, with all that is below them if asked.
    OutlineState::ExpandResult expandSelected(OutlineState::Reach reach) const;

    /// Collapses the selected containers, with all that is below them if asked. Without that, a
    /// single selected row that is not an expanded container hands the selection to its parent.
    void collapseSelected(OutlineState::Reach reach) const;

    /// Expands the whole tree.
    OutlineState::ExpandResult expandAll() const;

    /// Collapses the whole tree except for the root.
    void collapseAll() const;

    // --- Copies ---

    /// The selected nodes for the clipboard, detached from the memory of the document. Keys are
    /// kept only if every node has one, so that what comes from different places is a plain list.
    PlistTransfer copy() const;

    /// What a drag that begins on a row carries: its node, or if that is selected all that are.
    PlistTransfer dragItems(PlistNode& node) const;

    /// Inserts the items where a new item would go, and selects them.
    void paste(const PlistTransfer& transfer) const;

    /// Takes what is dropped below the first `position` rows. Nodes that this very outline shows,
    /// dragged in this process, are moved; anything else is inserted. Selects the nodes.
    void drop(std::span<const PlistTransfer> transfers, qint64 position, DragOrigin origin) const;

private:
    void insertEntries(std::span<const PlistEntry> entries, const InsertionPoint& point) const;
    void selectAlone(std::span<const PlistNodePtr> nodes) const;
    void openFor(PlistNode& container) const;
    void selectRow(int row) const;
    void editLater(OutlineState::EditingField field) const;

    OutlineState* outline_;
    PlistEditor editor_;
};
