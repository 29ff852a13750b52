#include "app/model/OutlineRowList.h"

#include <utility>

#include "app/model/PlistNode.h"

OutlineRowList::~OutlineRowList() {
    release(rows_.data(), rows_.data() + rows_.size());
}

void OutlineRowList::reset(std::vector<OutlineRow> rows) {
    retain(rows.data(), rows.data() + rows.size());
    const std::vector<OutlineRow> old = std::exchange(rows_, std::move(rows));
    release(old.data(), old.data() + old.size());
}

void OutlineRowList::remove(std::size_t first, std::size_t end) {
    release(rows_.data() + first, rows_.data() + end);
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(first),
                rows_.begin() + static_cast<std::ptrdiff_t>(end));
}

void OutlineRowList::replaceAdding(std::vector<OutlineRow> rows, std::size_t first,
                                   std::size_t end) {
    retain(rows.data() + first, rows.data() + end);
    rows_ = std::move(rows);
}

void OutlineRowList::retain(const OutlineRow* first, const OutlineRow* end) noexcept {
    for (; first != end; ++first) {
        first->node().retain();
    }
}

void OutlineRowList::release(const OutlineRow* first, const OutlineRow* end) noexcept {
    for (; first != end; ++first) {
        first->node().release();
    }
}
