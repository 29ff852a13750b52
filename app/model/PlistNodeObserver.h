#pragma once

#include "app/model/PlistNodeChange.h"

class PlistNode;

/// Who hears of every change below a root node: the document that the root belongs to.
class PlistNodeObserver {
public:
    /// `node`, which is the observed root or stands below it, has changed. Called once for each
    /// operation, when the tree is consistent again.
    virtual void handleNodeChange(PlistNode& node, PlistNodeChanges changes) = 0;

protected:
    PlistNodeObserver() = default;
    PlistNodeObserver(const PlistNodeObserver&) = default;
    PlistNodeObserver& operator=(const PlistNodeObserver&) = default;
    ~PlistNodeObserver() = default;
};
