#pragma once

#include "PlistCore/PlistString.h"
#include "PlistCore/PlistValue.h"

namespace plist {

/// One entry of a dictionary: a key, which may be empty, and its value.
struct PlistEntry {
    PlistString key;
    PlistValue value;

    friend bool operator==(const PlistEntry&, const PlistEntry&) = default;
};

}  // namespace plist
