#pragma once

#include <QPointer>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <utility>
#include <variant>
#include <vector>

#include "app/model/editing/UndoManager.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/model/tree/PlistNodePtr.h"

class PlistDocument;

/// The only way in which the tree of a document is changed. Each operation is one undo group with a
/// name. What changes nothing does nothing and registers nothing.
///
/// A record without state of its own, cheap to copy. The document must outlive it and the entries
/// of the undo manager; without an undo manager edits happen all the same.
///
/// `PlistDocument::treeChanged` follows each operation, or each step of undo and redo, once.
class PlistEditor {
public:
    class EditError;

    explicit PlistEditor(PlistDocument& document, UndoManager* undoManager = nullptr);

    PlistDocument& document() const noexcept { return *document_; }
    UndoManager* undoManager() const noexcept { return undoManager_.data(); }

    /// Gives an entry another key. Refused for the root, and in a dictionary for a key that a
    /// sibling has.
    std::optional<EditError> rename(PlistNode& node, const PlistString& key) const;

    /// Replaces a scalar by another; does nothing for containers or an equal value.
    void changeValue(PlistNode& node, const PlistValue& value) const;

    /// Converts the content to another type. Between dictionary and array the child nodes stay; an
    /// array that becomes a dictionary gets keys where they are missing or repeated.
    void changeType(PlistNode& node, PlistType type) const;

    /// Sets the format for saving; does nothing for the OpenStep form, which can only be read.
    void changeFormat(PlistFormat format) const;

    /// Inserts new nodes before the child at `index`, or at the end if it is too large. Keys are
    /// used as they are. Does nothing if `parent` is a scalar.
    void add(std::span<const PlistNodePtr> nodes, PlistNode& parent, qint64 index) const;

    /// A new node, and the one that it is placed directly after.
    struct Copy {
        PlistNodePtr original;
        PlistNodePtr copy;
    };

    /// Inserts each copy after its original; all originals have parents and differ. Keys are used
    /// as they are. Counts one revision for each copy, but costs in proportion to the siblings.
    void addCopies(std::span<const Copy> copies) const;

    /// Takes nodes out of the tree; the root is skipped.
    void remove(std::span<const PlistNodePtr> nodes) const;

    /// Moves nodes before the child at `index`, as it is before the move, and returns those that
    /// were moved: nodes that hold `parent` stay. In a dictionary keys that are taken get a number.
    std::vector<PlistNodePtr> move(std::span<const PlistNodePtr> nodes, PlistNode& parent,
                                   qint64 index) const;

    /// Sorts the entries of a dictionary by key, in the order of `UnicodeText::compare`; equal keys
    /// keep their order.
    void sortKeys(PlistNode& node) const;

    /// Makes the content of a file in the format `format`, from which `root` has been made, that of
    /// the document, as reverting and reloading do: one step that brings the old tree, format and
    /// notice back when it is undone.
    void replaceContent(const PlistNodePtr& root, PlistFormat format,
                        const QString& actionName) const;

private:
    enum class Revision : std::uint8_t { stays, counts };

    void perform(const QString& actionName, Revision revision, std::function<void()> change) const;
    void setKey(const PlistNodePtr& node, const PlistString& key) const;
    void makeKeysUnique(std::span<const PlistNodePtr> nodes, PlistNode& parent) const;

    PlistDocument* document_;
    QPointer<UndoManager> undoManager_;
};

/// Why an edit that the user asked for was refused.
class PlistEditor::EditError {
public:
    /// A sibling in the same dictionary has the key already.
    struct DuplicateKey {
        PlistString key;
        friend bool operator==(const DuplicateKey&, const DuplicateKey&) = default;
    };
    struct RootCannotChange {
        friend bool operator==(const RootCannotChange&, const RootCannotChange&) = default;
    };
    using Reason = std::variant<DuplicateKey, RootCannotChange>;

    explicit EditError(Reason reason) : reason_(std::move(reason)) {}

    const Reason& reason() const noexcept { return reason_; }

    /// One sentence for the user.
    QString message() const;

    friend bool operator==(const EditError&, const EditError&) = default;

private:
    Reason reason_;
};
