#pragma once

#include <QtGlobal>
#include <optional>

#include "app/model/tree/PlistNodePtr.h"

class OutlineState;
class PlistNode;

/// Where new, pasted or dropped items go: before the child at `index` of `container`.
struct InsertionPoint {
    PlistNodePtr container;
    qint64 index = 0;

    /// Where new and pasted items go: into the last selected row if it is open, or if it is the
    /// root, even a collapsed one; else directly after it; without a selection to the end of the
    /// document. Nothing if the root is a scalar that could not hold them.
    static std::optional<InsertionPoint> forNewItems(const OutlineState& outline, PlistNode& root);

    /// Where items go that are dropped between rows, below the first `position` ones: into an open
    /// container above the line, else directly after the row above it. Nothing if the root is a
    /// scalar.
    static std::optional<InsertionPoint> forDrop(const OutlineState& outline, PlistNode& root,
                                                 qint64 position);
};
