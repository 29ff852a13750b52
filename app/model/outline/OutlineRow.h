#pragma once

#include <QtGlobal>
#include <cstdint>
#include <optional>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/NodeId.h"

class PlistNode;

/// One visible row of an outline: a small record, because there may be millions. Two rows are equal
/// when they show the same node in the same way.
class OutlineRow {
public:
    /// The first row: the root, which has no parent. `hasNewContent`: see below.
    OutlineRow(PlistNode& node, NodeId id, bool isExpanded, bool hasNewContent) noexcept
        : node_(&node), id_(id), isExpanded_(isExpanded), hasNewContent_(hasNewContent) {}

    OutlineRow(PlistNode& node, NodeId id, std::uint32_t depth, std::uint32_t index,
               PlistType parentType, bool isDuplicateKey, bool isExpanded,
               bool hasNewContent) noexcept
        : node_(&node),
          id_(id),
          index_(index),
          depth_(depth & maximumDepth),
          inDictionary_(parentType == PlistType::dictionary),
          isDuplicateKey_(isDuplicateKey),
          isExpanded_(isExpanded),
          hasNewContent_(hasNewContent) {}

    /// The deepest level that a row can hold.
    static constexpr std::uint32_t maximumDepth = (std::uint32_t{1} << 28) - 1;

    /// Valid while the row is part of its outline, which keeps the node alive.
    PlistNode& node() const noexcept { return *node_; }
    NodeId nodeId() const noexcept { return id_; }

    /// 0 for the root.
    qint64 depth() const noexcept { return depth_; }

    /// The position among the children of the parent, hidden siblings counted; 0 for the root.
    qint64 index() const noexcept { return index_; }

    /// For a row whose node stands elsewhere among its siblings now.
    void setIndex(qint64 index) noexcept { index_ = static_cast<std::uint32_t>(index); }

    /// Nothing for the root.
    std::optional<PlistType> parentType() const noexcept {
        if (depth_ == 0) {
            return std::nullopt;
        }
        return inDictionary_ ? PlistType::dictionary : PlistType::array;
    }

    bool isDuplicateKey() const noexcept { return isDuplicateKey_; }
    bool isExpanded() const noexcept { return isExpanded_; }

    /// Whether key, type, value or count of the node changed between the making of the rows before
    /// and of these. No part of what the row is, so it does not count for equality.
    bool hasNewContent() const noexcept { return hasNewContent_; }

    friend bool operator==(const OutlineRow& left, const OutlineRow& right) noexcept {
        return left.id_ == right.id_ && left.index_ == right.index_ &&
               left.depth_ == right.depth_ && left.inDictionary_ == right.inDictionary_ &&
               left.isDuplicateKey_ == right.isDuplicateKey_ &&
               left.isExpanded_ == right.isExpanded_;
    }

private:
    PlistNode* node_;
    NodeId id_;
    std::uint32_t index_ = 0;
    std::uint32_t depth_ : 28 = 0;
    std::uint32_t inDictionary_ : 1 = 0;
    std::uint32_t isDuplicateKey_ : 1 = 0;
    std::uint32_t isExpanded_ : 1 = 0;
    std::uint32_t hasNewContent_ : 1 = 0;
};

static_assert(sizeof(OutlineRow) == 24);
