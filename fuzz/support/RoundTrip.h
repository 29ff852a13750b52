#pragma once

#include "PlistCore/PlistValue.h"

namespace plist {

/// What must hold for every value: it comes back from the binary and from the XML form as far as
/// those can hold it, and writing what came back gives the same bytes again. Stops the process
/// where it does not hold. Does nothing with values that are too large to be written out.
void checkRoundTrips(const PlistValue& value);

}  // namespace plist
