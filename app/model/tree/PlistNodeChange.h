#pragma once

#include <QFlags>
#include <cstdint>

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
