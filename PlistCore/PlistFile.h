#pragma once

#include "PlistCore/PlistFormat.h"
#include "PlistCore/PlistValue.h"

#pragma GCC visibility push(default)

namespace plist {

/// The content of a file: its top value, of any type, and the form it was or will be in.
struct PlistFile {
    PlistValue root;
    PlistFormat format = PlistFormat::xml;
};

}  // namespace plist

#pragma GCC visibility pop
