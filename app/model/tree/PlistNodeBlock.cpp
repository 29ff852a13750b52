#include "app/model/tree/PlistNodeBlock.h"

#include <new>
#include <utility>

#include "app/model/tree/PlistNode.h"

static_assert(alignof(PlistNode) <= sizeof(std::size_t), "nodes follow the header at once");

PlistNodeBlock* PlistNodeBlock::make(std::size_t count) {
    void* memory = ::operator new(sizeof(PlistNodeBlock) + count * sizeof(PlistNode));
    return new (memory) PlistNodeBlock(count);
}

PlistNode* PlistNodeBlock::place(std::size_t index, NodeId id, PlistString key,
                                 PlistValue value) noexcept {
    return new (nodes() + index)
        PlistNode(id, static_cast<std::uint16_t>(index), std::move(key), std::move(value));
}

void PlistNodeBlock::free(PlistNode* node) noexcept {
    PlistNode* first = node - node->placeInBlock_;
    PlistNodeBlock* block = reinterpret_cast<PlistNodeBlock*>(first) - 1;
    node->~PlistNode();
    if (--block->living_ == 0) {
        ::operator delete(block);
    }
}

PlistNode* PlistNodeBlock::nodes() noexcept {
    return reinterpret_cast<PlistNode*>(this + 1);
}
