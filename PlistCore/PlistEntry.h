#pragma once

#include "PlistCore/PlistString.h"
#include "PlistCore/PlistValue.h"

#pragma GCC visibility push(default)

namespace plist {

/// One entry of a dictionary: a key, which may be empty, and its value.
struct PlistEntry {
    PlistString key;
    PlistValue value;

    friend bool operator==(const PlistEntry&, const PlistEntry&) = default;
};

}  // namespace plist

#pragma GCC visibility pop
