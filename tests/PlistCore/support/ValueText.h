#pragma once

#include <string>

#include "PlistCore/PlistValue.h"

namespace plist {

/// A value on one line, so that a test can compare a whole tree and a failure shows it:
///
///     {"key" = ("text", 5, 1.5, true, 2001-01-01T00:00:00Z, <00ff>, uid(7))}
///
/// Entries and items stand in their order; texts are not escaped. Recursive: for small values.
std::string valueText(const PlistValue& value);

}  // namespace plist
