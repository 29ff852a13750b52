#pragma once

#include <cstddef>
#include <limits>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistValue.h"

/// Writes XML property lists. The bytes are fully determined by the value, and any depth is
/// written.
namespace plist::detail::XMLPlistSerializer {

/// The XML form of `value` in UTF-8, tabs for indentation, ended by a line feed. Fails only for
/// lack of memory, or by `PlistBytes::LimitReached` when it is known to take more than
/// `maximumBytes`.
PlistBytes serialize(const PlistValue& value,
                     std::size_t maximumBytes = std::numeric_limits<std::size_t>::max());

}  // namespace plist::detail::XMLPlistSerializer
