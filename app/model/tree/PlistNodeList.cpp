#include "app/model/tree/PlistNodeList.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>

#include "app/model/tree/PlistNode.h"

PlistNodeList::PlistNodeList(std::span<const PlistNodePtr> nodes) {
    if (!nodes.empty()) {
        storage_ = allocate(nodes.size());
        std::uninitialized_copy(nodes.begin(), nodes.end(), itemsOf(storage_));
        storage_->size = storage_->capacity;
    }
}

PlistNodeList PlistNodeList::ofSize(std::size_t count) {
    PlistNodeList list;
    if (count != 0) {
        list.storage_ = allocate(count);
        std::uninitialized_value_construct_n(itemsOf(list.storage_), count);
        list.storage_->size = list.storage_->capacity;
    }
    return list;
}

std::span<PlistNodePtr> PlistNodeList::fresh() noexcept {
    if (storage_ == nullptr) {
        return {};
    }
    return {itemsOf(storage_), storage_->size};
}

PlistNodeList::PlistNodeList(const PlistNodeList& other) noexcept : storage_(other.storage_) {
    if (storage_ != nullptr) {
        ++storage_->owners;
    }
}

PlistNodeList& PlistNodeList::operator=(const PlistNodeList& other) noexcept {
    PlistNodeList copy(other);
    std::swap(storage_, copy.storage_);
    return *this;
}

PlistNodeList& PlistNodeList::operator=(PlistNodeList&& other) noexcept {
    PlistNodeList taken(std::move(other));
    std::swap(storage_, taken.storage_);
    return *this;
}

PlistNodeList::~PlistNodeList() {
    if (storage_ != nullptr && --storage_->owners == 0) {
        std::destroy_n(itemsOf(storage_), storage_->size);
        free(storage_);
    }
}

std::span<const PlistNodePtr> PlistNodeList::nodes() const noexcept {
    if (storage_ == nullptr) {
        return {};
    }
    return {itemsOf(storage_), storage_->size};
}

void PlistNodeList::insert(std::size_t index, std::span<const PlistNodePtr> added) {
    if (added.empty()) {
        return;
    }
    const std::size_t oldSize = size();
    makeOwn(oldSize + added.size());
    PlistNodePtr* items = itemsOf(storage_);
    std::uninitialized_value_construct_n(items + oldSize, added.size());
    storage_->size = static_cast<std::uint32_t>(oldSize + added.size());
    std::move_backward(items + index, items + oldSize, items + storage_->size);
    std::copy(added.begin(), added.end(), items + index);
}

void PlistNodeList::remove(std::span<const std::size_t> positions) {
    if (storage_ == nullptr || positions.empty()) {
        return;
    }
    makeOwn(size());
    PlistNodePtr* items = itemsOf(storage_);
    PlistNodePtr* kept = items + positions.front();
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const std::size_t next = i + 1 < positions.size() ? positions[i + 1] : size();
        kept = std::move(items + positions[i] + 1, items + next, kept);
    }
    std::destroy(kept, items + storage_->size);
    storage_->size = static_cast<std::uint32_t>(kept - items);
}

PlistNodeList::Storage* PlistNodeList::allocate(std::size_t capacity) {
    if (capacity > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("too many children");
    }
    void* memory = ::operator new(sizeof(Storage) + capacity * sizeof(PlistNodePtr));
    return new (memory) Storage{1, 0, static_cast<std::uint32_t>(capacity)};
}

PlistNodePtr* PlistNodeList::itemsOf(Storage* storage) noexcept {
    return reinterpret_cast<PlistNodePtr*>(storage + 1);
}

void PlistNodeList::free(Storage* storage) noexcept {
    ::operator delete(storage);
}

void PlistNodeList::makeOwn(std::size_t capacity) {
    if (storage_ == nullptr) {
        storage_ = allocate(capacity);
        return;
    }
    if (storage_->owners == 1 && storage_->capacity >= capacity) {
        return;
    }
    // Lists that grow one by one get room ahead; most lists never change and have none to spare.
    const std::size_t roomy = capacity > storage_->size ? capacity + capacity / 2 : capacity;
    PlistNodeList own;
    own.storage_ = allocate(roomy);
    PlistNodePtr* from = itemsOf(storage_);
    PlistNodePtr* to = itemsOf(own.storage_);
    if (storage_->owners == 1) {
        std::uninitialized_move_n(from, storage_->size, to);
    } else {
        std::uninitialized_copy_n(from, storage_->size, to);
    }
    own.storage_->size = storage_->size;
    std::swap(storage_, own.storage_);
}
