#pragma once

#include <string>

#include "PlistCore/PlistValue.h"

namespace plist {

/// How two values differ first, with the path there: "root/key/3: expected 5, found 6"; empty if
/// they do not.
///
/// Stricter than equality, which it does not use: texts must have the same bytes, and numbers the
/// same bits (any NaN is like any other). Dates may differ by `dateTolerance` seconds.
std::string firstDifference(const PlistValue& expected, const PlistValue& found,
                            double dateTolerance = 0);

}  // namespace plist
