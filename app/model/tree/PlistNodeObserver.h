#pragma once

#include <optional>

#include "app/model/tree/PlistNodeChange.h"
#include "app/model/tree/PlistNodeRun.h"

class PlistNode;

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
