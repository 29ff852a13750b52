#pragma once

#include <QSet>
#include <QtGlobal>

/// The identity of a node: counts from 1 over all documents of the process, never used twice.
using NodeId = qint64;

using NodeIdSet = QSet<NodeId>;
