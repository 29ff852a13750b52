#pragma once

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistValue.h"

/// Writes binary property lists ("bplist00"). Equal scalars share one object; equal trees give
/// identical bytes; any depth is written.
namespace BinaryPlistSerializer {

/// The binary form of `value`. Never fails but for lack of memory.
PlistBytes serialize(const PlistValue& value);

}  // namespace BinaryPlistSerializer
