#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/NodeId.h"
#include "app/model/tree/PlistNodeList.h"
#include "app/model/tree/PlistNodeObserver.h"
#include "app/model/tree/PlistNodePtr.h"

/// The editable form of one value of a document: an item with an identity, a key, and either a
/// scalar or children.
///
/// A container keeps the value that it was made from and makes its children only when somebody
/// asks for them, so a collapsed part of a document costs one node whatever its size. The value of
/// a subtree is kept until something in it changes; saving, copying and searching rebuild only the
/// path from a change to the root.
///
/// Nodes are live objects, never copied and compared by identity. They belong to the main thread
/// and stop the process when an operation is called on another one. A node lives as long as a
/// `PlistNodePtr` names it: that of its parent's children, of the document, of an undo step. There
/// may be millions of them, so siblings made together lie in common blocks with consecutive ids,
/// and nothing here recurses over the depth of the tree.
///
/// Every operation that changes the tree reports what really changed, in one call, to the observer
/// of the root above the node (`PlistNodeObserver`).
class PlistNode {
public:
    /// A new node without a parent. A container's children are not made yet; the cost does not
    /// depend on the size of `value`.
    static PlistNodePtr create(PlistString key, PlistValue value);

    PlistNode(const PlistNode&) = delete;
    PlistNode& operator=(const PlistNode&) = delete;

    NodeId id() const noexcept { return id_; }

    /// The key of the entry. Means something only while the parent is a dictionary: empty for the
    /// root and for items of arrays that never had one.
    const PlistString& key() const noexcept { return key_; }

    PlistType type() const noexcept { return value_.type(); }
    bool isContainer() const noexcept { return value_.isContainer(); }

    /// The value of a scalar; for a container the empty value of its type.
    PlistValue scalar() const;

    /// How many children there are; makes none.
    qint64 childCount() const noexcept;

    /// Null for the root and for a node that was taken out of the tree.
    PlistNode* parent() const noexcept { return has(observed) ? nullptr : owner_.parent; }

    /// Whether it is an entry of a dictionary, and not an item of an array or a root.
    bool isEntry() const noexcept;

    /// Whether `node` is this one or stands below it.
    bool contains(const PlistNode& node) const noexcept;

    /// The children in order, made now if nobody asked before. The first call costs in proportion
    /// to their number. Valid until this node is changed or freed.
    std::span<const PlistNodePtr> children();

    /// Whether the children have been made.
    bool isMaterialized() const noexcept { return has(materialized); }

    /// The value of the whole subtree, memoised: costs in proportion to what changed since the last
    /// call.
    PlistValue value();

    /// The position among the parent's children; nothing without a parent. Usually found at once,
    /// at worst by looking through the siblings.
    std::optional<qint64> indexInParent() const;

    /// Does nothing if the keys are equal as Unicode text.
    void setKey(const PlistString& key);

    /// Replaces the whole content by a value of any type. The old children lose their parent.
    void setValue(PlistValue value);

    /// Replaces the value of a scalar node by another scalar; reports only a difference (NaN
    /// differs from itself).
    void setScalar(PlistValue value);

    /// Puts `nodes` before the child at `index`, from 0 to `childCount()`, in one step. The node is
    /// a container; the new children belong to no other parent any more.
    void insertChildren(std::span<const PlistNodePtr> nodes, qint64 index);

    /// Takes out the children at `positions`, which ascend strictly, in one step. They lose their
    /// parent.
    void removeChildren(std::span<const std::size_t> positions);

    /// Replaces the list of children, in one step: for sorting and for putting an old order back.
    void setChildren(std::span<const PlistNodePtr> nodes);

    /// Makes an array of a dictionary or the reverse, keeping the child nodes and their keys. Both
    /// types must be containers.
    void convertContainer(PlistType type);

    /// Everything but identity, key and parent, so that an edit can be taken back. Holds the very
    /// child nodes, which thereby keep their ids.
    class Representation {
    public:
        /// The content of a node that is made from `value`.
        explicit Representation(PlistValue value) noexcept : value_(std::move(value)) {}

    private:
        friend class PlistNode;
        PlistValue value_;
        PlistNodeList children_;
        bool isMaterialized_ = false;
    };

    /// The content as it is now. Costs nothing, whatever the size.
    Representation representation();

    /// Puts captured content back. Child nodes that are here now and not in it lose their parent.
    void restore(const Representation& representation);

    /// Sets the observer of this node and all below it, while it has no parent. Null for none. The
    /// observer must outlive the node or be taken away. Giving the node a parent takes it away too.
    void setObserver(PlistNodeObserver* observer);

    /// The number of the row that last showed this node, or -1: a hint, to be checked against the
    /// rows. One outline at a time shows a tree.
    int rowHint() const noexcept { return rowHint_; }

private:
    friend class ChildrenMaker;
    friend class PlistNodeBlock;
    friend class PlistNodePtr;
    friend class OutlineWalk;
    friend class OutlineRowList;

    enum Flag : std::uint8_t {
        materialized = 1,      ///< `children_` is the list of children
        cached = 2,            ///< `value_` of a container is its value
        keysKept = 4,          ///< not cached, but `value_` is an older value with the same keys
        observed = 8,          ///< the owner is an observer
        duplicatesKnown = 16,  ///< the children's `duplicateKey` is up to date
        duplicateKey = 32,     ///< one of the siblings has an equal key
        touched = 64,          ///< what a row shows has changed since the outline was here
    };

    union Owner {
        PlistNode* parent;
        PlistNodeObserver* observer;
    };

    PlistNode(NodeId id, std::uint16_t placeInBlock, PlistString key, PlistValue value) noexcept;
    ~PlistNode() = default;

    bool has(Flag flag) const noexcept { return (flags_ & flag) != 0; }
    void set(Flag flag) noexcept { flags_ = static_cast<std::uint8_t>(flags_ | flag); }
    void clear(Flag flag) noexcept { flags_ = static_cast<std::uint8_t>(flags_ & ~flag); }

    void retain() noexcept { ++owners_; }
    void release() noexcept;
    static void destroy(PlistNode* node) noexcept;

    /// What observers can tell apart, for finding out what an operation changed.
    struct Shown {
        PlistValue scalar;
        qint64 childCount;
    };

    /// The first of `count` (at least 1) ids that follow each other.
    static NodeId takeIds(qint64 count);

    void materialize();
    bool needsRebuilding() const noexcept { return isContainer() && !has(cached); }
    void rebuildValue();
    PlistValue valueOf(std::vector<PlistValue> childValues) const;
    /// Finds out which children have a key that a sibling has too, and remembers it in them until
    /// one of the keys, or the list, changes.
    void updateDuplicateKeys();
    void setParent(PlistNode* parent) noexcept;
    void adoptChildren() noexcept;
    void detachChildren() noexcept;
    void dropValue() noexcept;
    void keysOrChildrenChanged() noexcept;
    void contentChanged() noexcept;
    Shown shown() const;
    void reportSince(const Shown& before, PlistNodeChanges others,
                     std::optional<PlistNodeRun> run = std::nullopt);
    void reportReplacement(const Shown& before);
    void report(PlistNodeChanges changes, std::optional<PlistNodeRun> run = std::nullopt);

    // What a walk over the rows reads and writes comes first, within one cache line.
    NodeId id_;
    std::uint32_t owners_ = 0;
    std::uint16_t placeInBlock_;
    std::uint8_t flags_ = 0;
    mutable std::uint32_t positionHint_ = 0;
    int rowHint_ = -1;
    /// A scalar's value; a container's value while it is known; else an empty value of its type.
    PlistValue value_;
    PlistNodeList children_;
    Owner owner_ = {nullptr};
    PlistString key_;
};

inline void PlistNode::release() noexcept {
    if (--owners_ == 0) {
        destroy(this);
    }
}
