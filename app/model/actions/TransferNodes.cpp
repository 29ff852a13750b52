#include "app/model/actions/TransferNodes.h"

#include <algorithm>
#include <unordered_map>

#include "app/model/editing/UniqueKeys.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"

PlistTransfer TransferNodes::copied(std::span<const PlistNodePtr> nodes) {
    const bool keepsKeys =
        std::ranges::all_of(nodes, [](const PlistNodePtr& node) { return node->isEntry(); });
    PlistTransfer transfer;
    transfer.entries.reserve(nodes.size());
    transfer.sourceIDs.reserve(nodes.size());
    for (const PlistNodePtr& node : nodes) {
        transfer.entries.push_back({keepsKeys ? node->key() : PlistString(), node->value()});
        transfer.sourceIDs.push_back(node->id());
    }
    return transfer;
}

PlistTransfer TransferNodes::joined(std::span<const PlistTransfer> transfers) {
    PlistTransfer all;
    for (const PlistTransfer& transfer : transfers) {
        all.entries.insert(all.entries.end(), transfer.entries.begin(), transfer.entries.end());
        all.sourceIDs.insert(all.sourceIDs.end(), transfer.sourceIDs.begin(),
                             transfer.sourceIDs.end());
    }
    return all;
}

std::vector<PlistNodePtr> TransferNodes::made(std::span<const PlistEntry> entries,
                                              PlistNode& container) {
    std::vector<PlistNodePtr> nodes;
    nodes.reserve(entries.size());
    if (container.type() != PlistType::dictionary) {
        for (const PlistEntry& entry : entries) {
            nodes.push_back(PlistNode::create(entry.key, entry.value));
        }
        return nodes;
    }
    UniqueKeys keys(container.children());
    for (const PlistEntry& entry : entries) {
        const PlistString wanted =
            entry.key.isEmpty() ? PlistString(UniqueKeys::newItem) : entry.key;
        nodes.push_back(PlistNode::create(keys.take(wanted), entry.value));
    }
    return nodes;
}

std::vector<PlistNodePtr> TransferNodes::shown(const PlistTransfer& transfer,
                                               const OutlineState& outline) {
    if (transfer.sourceIDs.size() != transfer.entries.size()) {
        return {};
    }
    std::unordered_map<NodeId, PlistNode*> found;
    for (const NodeId id : transfer.sourceIDs) {
        found.emplace(id, nullptr);
    }
    for (const OutlineRow& row : outline.rows()) {
        const auto wanted = found.find(row.nodeId());
        if (wanted != found.end()) {
            wanted->second = &row.node();
        }
    }
    std::vector<PlistNodePtr> nodes;
    nodes.reserve(transfer.sourceIDs.size());
    for (const NodeId id : transfer.sourceIDs) {
        PlistNode* node = found[id];
        if (node == nullptr) {
            return {};
        }
        nodes.emplace_back(node);
    }
    return nodes;
}
