#pragma once

#include <string_view>

#include "PlistCore/PlistValue.h"

namespace plist {

/// Reads values that another program wrote down, to compare ours with: compact JSON in which every
/// value is an object of its type and content.
///
///     {"t":"dict","v":[["key",{"t":"integer","v":"5"}]]}
///
/// The types are dict, array, string, integer, real (as hexadecimal floating point), boolean, date
/// (seconds since 2001), data (Base64) and uid.
namespace CanonicalDump {

/// The value. Throws `std::runtime_error` for anything else.
PlistValue read(std::string_view json);

}  // namespace CanonicalDump

}  // namespace plist
