#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "app/model/tree/PlistNodePtr.h"

/// The ordered children of a node, as strong links. Copies share one block of memory until one of
/// them is changed, so that keeping the list as it was (for undo) costs nothing.
class PlistNodeList {
public:
    PlistNodeList() noexcept = default;

    /// Throws `std::bad_alloc`, as does every change of a list.
    explicit PlistNodeList(std::span<const PlistNodePtr> nodes);

    /// A list of `count` empty links, to be filled through `fresh` before it is copied.
    static PlistNodeList ofSize(std::size_t count);
    std::span<PlistNodePtr> fresh() noexcept;

    PlistNodeList(const PlistNodeList& other) noexcept;
    PlistNodeList(PlistNodeList&& other) noexcept
        : storage_(std::exchange(other.storage_, nullptr)) {}
    PlistNodeList& operator=(const PlistNodeList& other) noexcept;
    PlistNodeList& operator=(PlistNodeList&& other) noexcept;
    ~PlistNodeList();

    std::size_t size() const noexcept { return storage_ != nullptr ? storage_->size : 0; }

    /// The nodes in order. Valid until this list is changed or gone.
    std::span<const PlistNodePtr> nodes() const noexcept;

    /// Puts `added`, which lies outside this list, before the node at `index` (at most `size()`).
    void insert(std::size_t index, std::span<const PlistNodePtr> added);

    /// Takes out the nodes at `positions`, which ascend strictly and are less than `size()`.
    void remove(std::span<const std::size_t> positions);

private:
    friend class PlistNode;

    /// The head of a block of memory; the links follow it.
    struct Storage {
        std::size_t owners;
        std::uint32_t size;
        std::uint32_t capacity;
    };

    static Storage* allocate(std::size_t capacity);
    static PlistNodePtr* itemsOf(Storage* storage) noexcept;
    static void free(Storage* storage) noexcept;

    /// Makes sure that nobody else owns the memory and that it has room for `capacity` links.
    void makeOwn(std::size_t capacity);

    Storage* storage_ = nullptr;
};
