#pragma once

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistValue.h"

/// Writes XML property lists. The bytes are fully determined by the value, and any depth is
/// written.
namespace plist::detail::XMLPlistSerializer {

/// The XML form of `value` in UTF-8, tabs for indentation, ended by a line feed. Never fails but
/// for lack of memory.
PlistBytes serialize(const PlistValue& value);

}  // namespace plist::detail::XMLPlistSerializer
