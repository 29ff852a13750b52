#pragma once

#include <QStringList>
#include <utility>

#include "app/model/tree/PlistNodeObserver.h"

/// Writes down what an observer hears: the key of the node and what changed, "a: type|scalar", and
/// which children came or went, "a: childCount|children +2 at 1".
class ChangeRecorder : public PlistNodeObserver {
public:
    void handleNodeChange(PlistNode& node, PlistNodeChanges changes,
                          std::optional<PlistNodeRun> run) override;

    /// What was heard since the last call.
    QStringList take() { return std::exchange(heard_, {}); }

private:
    QStringList heard_;
};
