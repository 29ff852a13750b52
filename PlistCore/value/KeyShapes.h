#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "PlistCore/value/PlistBuilder.h"
#include "PlistCore/value/PlistCell.h"
#include "PlistCore/value/PlistCellStack.h"

namespace plist::detail {

/// The sequences of keys that the dictionaries of a document were seen to have, as a tree: a shape
/// is the keys of a dictionary read so far, and its children are the keys that followed.
///
/// Keys repeat: where a dictionary takes the same way through the tree as one before it, its keys
/// are compared instead of stored, and both share one list of them. Where keys do not repeat the
/// tree stays small and `follow` soon gives up; the reader then stores the keys one by one.
class KeyShapes {
public:
    using Shape = std::uint32_t;

    /// The shape of a dictionary without keys, where every dictionary starts.
    static constexpr Shape root = 0;

    /// No shape: the keys of this dictionary are not followed.
    static constexpr Shape none = UINT32_MAX;

    explicit KeyShapes(PlistBuilder& builder);

    /// The shape that followed `shape` last time, or `none`.
    Shape expected(Shape shape) const noexcept { return nodes_[shape].firstChild; }

    /// The last key of a shape other than the root.
    const PlistCell& lastKey(Shape shape) const noexcept { return nodes_[shape].key; }

    /// Whether the text of the last key stands in a file as it is, without any reference.
    bool isPlain(Shape shape) const noexcept { return nodes_[shape].isPlain; }

    /// The shape that `key`, valid UTF-8, leads to; `none` where following it is not worthwhile.
    /// `flags` is `PlistCell::ascii` or 0.
    Shape follow(Shape shape, std::string_view key, std::uint8_t flags);

    /// The number of keys.
    std::size_t length(Shape shape) const noexcept { return nodes_[shape].length; }

    /// The list of the keys of a shape other than the root, made when it is first asked for.
    const PlistString* keyList(Shape shape);

    /// Pushes the keys of `shape`, in order.
    void pushKeys(Shape shape, PlistCellStack& stack) const;

private:
    struct Node {
        PlistCell key;
        const PlistString* list = nullptr;
        Shape parent = none;
        Shape firstChild = none;
        Shape nextSibling = none;
        std::uint32_t length : 31 = 0;
        std::uint32_t isPlain : 1 = 0;
    };

    Shape findChild(Shape shape, std::string_view key);
    Shape addChild(Shape shape, std::string_view key, std::uint8_t flags);
    std::span<const PlistCell> keysOf(Shape shape);

    PlistBuilder& builder_;
    std::vector<Node> nodes_;
    std::vector<PlistCell> keys_;
    std::size_t reuses_ = 0;
};

}  // namespace plist::detail
