#pragma once

#include <QString>
#include <optional>
#include <unordered_map>
#include <vector>

#include "app/model/tree/NodeId.h"
#include "tests/model/support/ReferenceItem.h"

class OutlineState;
class PlistDocument;
class PlistNode;
class ReferenceDocument;
class ReferenceOutline;
class UndoManager;

/// Compares the model with the plain one, and keeps which node is which item: once a node has been
/// seen in the place of an item, it must stay the node of that item for ever.
class ModelComparison {
public:
    using Name = ReferenceItem::Name;

    /// An item and its node.
    struct Known {
        const ReferenceItem* item;
        PlistNode* node;
    };

    /// With or without making all nodes that the model has not made by itself.
    explicit ModelComparison(bool makesAllNodes) : makesAllNodes_(makesAllNodes) {}

    bool makesAllNodes() const noexcept { return makesAllNodes_; }

    void compareDocuments(PlistDocument& document, const ReferenceDocument& reference);
    void compareHistories(const UndoManager& undo, const ReferenceDocument& reference);

    /// After the documents.
    void compareOutlines(const OutlineState& outline, const ReferenceOutline& reference);

    void require(bool holds, const char* what) {
        if (!holds && !difference_) {
            difference_ = QString::fromUtf8(what);
        }
    }

    /// The first difference ever found.
    const std::optional<QString>& difference() const noexcept { return difference_; }

    /// The items whose nodes have been made, in the order of the document. Valid until one of the
    /// documents changes.
    const std::vector<Known>& known() const noexcept { return known_; }

    /// The item of a node.
    std::optional<Name> nameOf(NodeId id) const;

private:
    void compareNode(const Known& pair, const PlistNode* parent, qint64 index);
    void compareRows(const OutlineState& outline, const ReferenceOutline& reference);
    void compareSelection(const OutlineState& outline, const ReferenceOutline& reference);

    bool makesAllNodes_;
    std::vector<Known> known_;
    std::unordered_map<Name, NodeId> ids_;
    std::unordered_map<NodeId, Name> names_;
    std::optional<QString> difference_;
};
