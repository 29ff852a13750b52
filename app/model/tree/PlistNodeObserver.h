#pragma once

#include <QFlags>
#include <cstddef>
#include <cstdint>
#include <optional>

class PlistNode;

/// The observable parts of a node. One change of the tree reports all that it touched at once.
enum class PlistNodeChange : std::uint8_t {
    key = 1,
    type = 2,
    scalar = 4,
    childCount = 8,
    /// The list of children is another one: items came, went, changed places or were replaced.
    children = 16,
};

Q_DECLARE_FLAGS(PlistNodeChanges, PlistNodeChange)
Q_DECLARE_OPERATORS_FOR_FLAGS(PlistNodeChanges)

/// Children of one node that stood next to each other before they went, or that stand next to each
/// other since they came; all others are as they were. One of the two numbers is 0.
struct PlistNodeRun {
    std::size_t first = 0;  ///< the position of the first of them
    std::size_t removed = 0;
    std::size_t added = 0;
};

/// Who hears of every change below a root node: the document that the root belongs to.
class PlistNodeObserver {
public:
    /// `node`, which is the observed root or stands below it, has changed. Called once for each
    /// operation, when the tree is consistent again. `run` tells which children came or went if
    /// that is all that happened to the list of children.
    virtual void handleNodeChange(PlistNode& node, PlistNodeChanges changes,
                                  std::optional<PlistNodeRun> run) = 0;

protected:
    PlistNodeObserver() = default;
    PlistNodeObserver(const PlistNodeObserver&) = default;
    PlistNodeObserver& operator=(const PlistNodeObserver&) = default;
    ~PlistNodeObserver() = default;
};
