#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "app/model/PlistNodePtr.h"

/// The ordered children of a node, as strong links. Copies share one block of memory until one of
/// them is changed, so that keeping the list as it was (for undo) costs nothing.
class PlistNodeList {
public:
    PlistNodeList() noexcept = default;
    explicit PlistNodeList(std::span<const PlistNodePtr> nodes);
    PlistNodeList(const PlistNodeList& other) noexcept;
    PlistNodeList(PlistNodeList&& other) noexcept;
    PlistNodeList& operator=(PlistNodeList other) noexcept;
    ~PlistNodeList();

    std::size_t size() const noexcept { return storage_ != nullptr ? storage_->size : 0; }

    /// The nodes in order. Valid until this list is changed or the last of its copies is gone.
    std::span<const PlistNodePtr> nodes() const noexcept;

    /// A list of `count` empty links, for the caller to fill through `fresh` before anyone copies
    /// the list.
    static PlistNodeList ofSize(std::size_t count);
    std::span<PlistNodePtr> fresh() noexcept;

    /// Puts `added` before the node at `index`, which is at most `size()`.
    void insert(std::size_t index, std::span<const PlistNodePtr> added);

    /// Takes out the nodes at `positions`, which ascend strictly and are less than `size()`.
    void remove(std::span<const std::size_t> positions);

private:
    friend class PlistNode;

    struct Storage {
        std::size_t size;
        std::size_t capacity;
        std::size_t owners;
    };

    static Storage* allocate(std::size_t capacity);
    static PlistNodePtr* itemsOf(Storage* storage) noexcept;
    static void free(Storage* storage) noexcept;
    void makeOwn(std::size_t capacity);

    Storage* storage_ = nullptr;
};
