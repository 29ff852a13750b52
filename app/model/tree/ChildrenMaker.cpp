#include "app/model/tree/ChildrenMaker.h"

#include <algorithm>
#include <span>
#include <utility>

#include "app/model/runtime/MainThread.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/model/tree/PlistNodeBlock.h"

ChildrenMaker::ChildrenMaker(PlistNode& parent)
    : parent_(parent), list_(PlistNodeList::ofSize(static_cast<std::size_t>(parent.childCount()))) {
    MainThread::check();
    plistCheck(!parent.isMaterialized(), "children are made once");
    if (list_.size() > 0) {
        nextId_ = PlistNode::takeIds(parent.childCount());
    }
}

bool ChildrenMaker::make(std::size_t count) {
    MainThread::check();
    if (!parent_.isContainer()) {
        return true;
    }
    if (!keys_) {
        if (!makeNodes(count) || !hasKeysToCompare()) {
            return parent_.isMaterialized();
        }
        keys_.emplace(parent_.children());
        return false;
    }
    return markDuplicates(parent_, *keys_, count);
}

bool ChildrenMaker::makeNodes(std::size_t count) {
    const std::size_t end = made_ + std::min(count, list_.size() - made_);
    while (made_ < end) {
        makeBlock(std::min(PlistNodeBlock::capacity, end - made_));
    }
    if (made_ < list_.size()) {
        return false;
    }
    plistCheck(!parent_.isMaterialized(), "children are made once");
    parent_.children_ = std::move(list_);
    parent_.set(PlistNode::materialized);
    return true;
}

void ChildrenMaker::makeBlock(std::size_t count) {
    const std::span<const PlistValue> values = parent_.value_.children();
    const std::span<const PlistString> keys = parent_.value_.keys();
    const std::span<PlistNodePtr> links = list_.fresh();
    PlistNodeBlock* block = PlistNodeBlock::make(count);
    for (std::size_t i = 0; i < count; ++i, ++made_) {
        PlistString key = keys.empty() ? PlistString() : keys[made_];
        PlistNode* child = block->place(i, nextId_++, std::move(key), values[made_]);
        child->owner_.parent = &parent_;
        child->positionHint_ = static_cast<std::uint32_t>(made_);
        links[made_] = PlistNodePtr(child);
    }
}

bool ChildrenMaker::hasKeysToCompare() const {
    return parent_.type() == PlistType::dictionary && parent_.childCount() > 0;
}

bool ChildrenMaker::markDuplicates(PlistNode& dictionary, KeyTable& keys, std::size_t count) {
    const std::span<const PlistNodePtr> nodes = dictionary.children_.nodes();
    const bool isDone = keys.insertSome(count, [nodes](std::size_t first, std::size_t second) {
        nodes[first]->set(PlistNode::duplicateKey);
        nodes[second]->set(PlistNode::duplicateKey);
    });
    if (isDone) {
        dictionary.set(PlistNode::duplicatesKnown);
    }
    return isDone;
}
