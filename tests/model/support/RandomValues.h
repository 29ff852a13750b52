#pragma once

#include <cstdint>
#include <string>

#include "app/model/runtime/Plist.h"

/// The keys and values that random edits bring: few enough to collide often, among them all that
/// is special about keys, numbers and types.
namespace RandomValues {

std::string key(std::uint32_t choice);
PlistValue scalar(std::uint32_t choice);

/// A scalar, or one of some small trees.
PlistValue value(std::uint32_t choice);

/// A content for a whole document.
PlistValue document(std::uint32_t choice);

}  // namespace RandomValues
