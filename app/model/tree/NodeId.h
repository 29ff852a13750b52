#pragma once

#include <QtGlobal>

/// The identity of a node: counts from 1 over all documents of the process, never used twice.
using NodeId = qint64;
