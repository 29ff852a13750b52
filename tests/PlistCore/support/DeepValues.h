#pragma once

#include <cstddef>

#include "PlistCore/PlistValue.h"

namespace plist {

/// `depth` arrays, each the only item of the next; the innermost holds `innermost`.
PlistValue chainOfArrays(std::size_t depth, const PlistValue& innermost);

/// `depth` arrays, each of which holds the next one twice; the innermost holds `innermost` twice.
/// Written out they are 2^(depth + 1) - 1 values and those of the innermost ones.
PlistValue doubledArrays(int depth, const PlistValue& innermost);

}  // namespace plist
