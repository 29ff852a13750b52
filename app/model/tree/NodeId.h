#pragma once

#include <QtGlobal>

/// The identity of a node: counts from 1 over all documents of the process, never used twice.
using NodeId = qint64;

/// Hands out node ids, in order and each once.
class NodeIdCounter {
public:
    /// The next id taken is `last` + 1.
    explicit NodeIdCounter(NodeId last = 0) : last_(last) {}

    /// Takes `count` (at least 1) ids that follow each other and returns the first. Running past
    /// the largest 64-bit number stops the process.
    NodeId take(qint64 count = 1);

private:
    NodeId last_;
};
