#pragma once

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistValue.h"

namespace plist::detail {

/// Writes XML property lists. The bytes are fully determined by the value, and any depth is
/// written.
namespace XMLPlistSerializer {

/// The XML form of `value` in UTF-8, tabs for indentation, ended by a line feed. Never fails but
/// for lack of memory.
PlistBytes serialize(const PlistValue& value);

}  // namespace XMLPlistSerializer

}  // namespace plist::detail
