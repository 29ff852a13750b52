#include "app/model/tree/DuplicateKeyFinder.h"

#include "app/model/tree/PlistNode.h"

DuplicateKeyFinder::DuplicateKeyFinder(PlistNode& dictionary)
    : dictionary_(dictionary), table_(dictionary.children_.nodes()) {}

bool DuplicateKeyFinder::find(std::size_t count) {
    const std::span<const PlistNodePtr> nodes = dictionary_.children_.nodes();
    const bool isDone = table_.insertSome(count, [nodes](std::size_t first, std::size_t second) {
        nodes[first]->set(PlistNode::duplicateKey);
        nodes[second]->set(PlistNode::duplicateKey);
    });
    if (isDone) {
        dictionary_.set(PlistNode::duplicatesKnown);
    }
    return isDone;
}
