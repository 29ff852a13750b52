#include "app/model/tree/NodeIdSet.h"

#include <algorithm>

#include "app/model/runtime/Plist.h"

NodeIdSet::NodeIdSet(std::initializer_list<NodeId> ids) {
    for (const NodeId id : ids) {
        insert(id);
    }
}

void NodeIdSet::insert(NodeId id) {
    plistCheck(id > 0, "node ids are positive");
    const NodeId number = id / idsPerPage;
    // Ids are mostly collected in the order in which they were given out.
    const bool isOnLastPage = !numbers_.empty() && numbers_.back() == number;
    const std::size_t page = isOnLastPage ? numbers_.size() - 1 : pageOf(id);
    if (page == numbers_.size() || numbers_[page] != number) {
        pages_.insert(pages_.begin() + static_cast<std::ptrdiff_t>(page), Page{});
        numbers_.insert(numbers_.begin() + static_cast<std::ptrdiff_t>(page), number);
    }
    std::uint64_t& word = pages_[page][wordOf(id)];
    if ((word & bitOf(id)) == 0) {
        word |= bitOf(id);
        ++count_;
    }
}

void NodeIdSet::remove(NodeId id) noexcept {
    if (!contains(id)) {
        return;
    }
    const std::size_t page = pageOf(id);
    pages_[page][wordOf(id)] &= ~bitOf(id);
    --count_;
    // Equal sets have the same pages, so none stays behind empty.
    if (std::ranges::all_of(pages_[page], [](std::uint64_t word) { return word == 0; })) {
        pages_.erase(pages_.begin() + static_cast<std::ptrdiff_t>(page));
        numbers_.erase(numbers_.begin() + static_cast<std::ptrdiff_t>(page));
    }
}

void NodeIdSet::clear() noexcept {
    *this = {};
}

std::size_t NodeIdSet::pageOf(NodeId id) const noexcept {
    const auto found = std::ranges::lower_bound(numbers_, id / idsPerPage);
    return static_cast<std::size_t>(found - numbers_.begin());
}

void NodeIdSet::const_iterator::settle() noexcept {
    while (rest_ == 0) {
        if (++word_ == wordsPerPage) {
            word_ = 0;
            if (++page_ == set_->pages_.size()) {
                return;
            }
        }
        rest_ = set_->pages_[page_][word_];
    }
}
