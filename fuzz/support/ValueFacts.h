#pragma once

#include <cstddef>

#include "PlistCore/PlistValue.h"

namespace plist {

/// What decides which comparisons a value can pass.
struct ValueFacts {
    /// More values, shared ones counted at every place, than a fuzz target should walk. Nothing
    /// else is known then.
    bool isHuge = false;

    /// A NaN stands in it: it is unequal to itself.
    bool holdsNaN = false;

    /// It holds something that is different after a way through XML: a dictionary that is read as a
    /// uid, or a date with a fraction.
    bool losesInXml = false;

    /// It holds a date so far away that its year has more digits than are read, or that its seconds
    /// are no longer exact.
    bool holdsFarDate = false;

    /// The most containers inside each other.
    std::size_t depth = 0;
};

ValueFacts factsOf(const PlistValue& root);

}  // namespace plist
