#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <vector>

#include "app/model/tree/NodeId.h"

/// A set of node ids: what is expanded, selected, or left by a search.
///
/// One bit for each id in pages of neighbours. Nodes made together have neighbouring ids, so a
/// million of them take an eighth of a megabyte and looking them up stays within the processor's
/// caches, where a hash table would miss them once for every row. Iteration ascends.
class NodeIdSet {
    static constexpr std::size_t bitsPerWord = 64;
    static constexpr std::size_t wordsPerPage = 16;
    static constexpr NodeId idsPerPage = bitsPerWord * wordsPerPage;

public:
    class const_iterator;

    NodeIdSet() = default;
    NodeIdSet(std::initializer_list<NodeId> ids);

    /// Ids are positive; any other number is simply not in the set.
    bool contains(NodeId id) const noexcept {
        const std::size_t page = pageOf(id);
        return id > 0 && page < numbers_.size() && numbers_[page] == id / idsPerPage &&
               (pages_[page][wordOf(id)] & bitOf(id)) != 0;
    }

    /// Adds or takes out one id, which is positive; the set knows ids only once.
    void insert(NodeId id);
    void remove(NodeId id) noexcept;
    void clear() noexcept;

    bool isEmpty() const noexcept { return count_ == 0; }
    qsizetype size() const noexcept { return count_; }

    const_iterator begin() const noexcept;
    const_iterator end() const noexcept;

    /// Whether both hold the same ids.
    friend bool operator==(const NodeIdSet& left, const NodeIdSet& right) noexcept {
        return left.count_ == right.count_ && left.numbers_ == right.numbers_ &&
               left.pages_ == right.pages_;
    }

private:
    using Page = std::array<std::uint64_t, wordsPerPage>;

    static std::size_t wordOf(NodeId id) noexcept {
        return static_cast<std::size_t>(id % idsPerPage) / bitsPerWord;
    }
    static std::uint64_t bitOf(NodeId id) noexcept {
        return std::uint64_t{1} << (static_cast<std::uint64_t>(id) % bitsPerWord);
    }

    /// Where the page of the id is, or would be put.
    std::size_t pageOf(NodeId id) const noexcept;

    std::vector<NodeId> numbers_;  ///< the numbers of the pages that hold ids, ascending
    std::vector<Page> pages_;
    qsizetype count_ = 0;
};

/// Walks over the ids in ascending order; valid until the set changes.
class NodeIdSet::const_iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = NodeId;
    using difference_type = std::ptrdiff_t;
    using pointer = const NodeId*;
    using reference = NodeId;

    const_iterator() = default;

    NodeId operator*() const noexcept {
        const auto bit = static_cast<std::size_t>(std::countr_zero(rest_));
        return set_->numbers_[page_] * idsPerPage + static_cast<NodeId>(word_ * bitsPerWord + bit);
    }

    const_iterator& operator++() noexcept {
        rest_ &= rest_ - 1;
        settle();
        return *this;
    }

    const_iterator operator++(int) noexcept {
        const const_iterator before = *this;
        ++*this;
        return before;
    }

    friend bool operator==(const const_iterator&, const const_iterator&) = default;

private:
    friend class NodeIdSet;

    const_iterator(const NodeIdSet& set, std::size_t page) noexcept : set_(&set), page_(page) {
        if (page_ < set.pages_.size()) {
            rest_ = set.pages_[page_][0];
            settle();
        }
    }

    /// Moves on to the next word that has bits left, or to the end.
    void settle() noexcept;

    const NodeIdSet* set_ = nullptr;
    std::size_t page_ = 0;
    std::size_t word_ = 0;
    std::uint64_t rest_ = 0;  ///< the bits of the word that are still to come
};

inline NodeIdSet::const_iterator NodeIdSet::begin() const noexcept {
    return {*this, 0};
}

inline NodeIdSet::const_iterator NodeIdSet::end() const noexcept {
    return {*this, pages_.size()};
}
