#include "app/model/outline/OutlineRowList.h"

#include <algorithm>
#include <utility>

#include "app/model/tree/PlistNode.h"

OutlineRowList::~OutlineRowList() {
    release(rows_.data(), rows_.data() + rows_.size());
}

void OutlineRowList::reset(std::vector<OutlineRow> rows) {
    retain(rows.data(), rows.data() + rows.size());
    const std::vector<OutlineRow> old = std::exchange(rows_, std::move(rows));
    release(old.data(), old.data() + old.size());
}

void OutlineRowList::replace(std::size_t first, std::size_t end, std::vector<OutlineRow> rows) {
    if (first == 0 && end == rows_.size()) {
        reset(std::move(rows));
        return;
    }
    retain(rows.data(), rows.data() + rows.size());
    remove(first, end);
    insertRetained(first, rows);
}

void OutlineRowList::remove(std::size_t first, std::size_t end) {
    release(rows_.data() + first, rows_.data() + end);
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(first),
                rows_.begin() + static_cast<std::ptrdiff_t>(end));
}

void OutlineRowList::update(std::size_t at, std::vector<OutlineRow> rows, std::size_t first,
                            std::size_t end) {
    retain(rows.data() + first, rows.data() + end);
    if (rows.size() == rows_.size() + (end - first)) {
        rows_ = std::move(rows);
        return;
    }
    insertRetained(at + first, std::span(rows).subspan(first, end - first));
    const auto target = rows_.begin() + static_cast<std::ptrdiff_t>(at);
    const auto after = static_cast<std::ptrdiff_t>(end);
    std::copy_n(rows.begin(), first, target);
    std::copy(rows.begin() + after, rows.end(), target + after);
}

void OutlineRowList::insert(std::size_t place, std::span<const OutlineRow> rows) {
    retain(rows.data(), rows.data() + rows.size());
    insertRetained(place, rows);
}

std::size_t OutlineRowList::renumber(std::size_t parent, std::size_t start,
                                     const PlistNodeRun& run) {
    const qint64 depth = rows_[parent].depth();
    const qint64 distance = static_cast<qint64>(run.added) - static_cast<qint64>(run.removed);
    std::size_t last = parent;
    for (std::size_t i = start; i < rows_.size() && rows_[i].depth() > depth; ++i) {
        if (rows_[i].depth() == depth + 1) {
            rows_[i].setIndex(rows_[i].index() + distance);
            last = i;
        }
    }
    return last;
}

void OutlineRowList::insertRetained(std::size_t place, std::span<const OutlineRow> rows) {
    const std::size_t size = rows_.size() + rows.size();
    if (size > rows_.capacity()) {
        constexpr std::size_t sixteenth = 16;
        rows_.reserve(size + size / sixteenth);
    }
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(place), rows.begin(), rows.end());
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
