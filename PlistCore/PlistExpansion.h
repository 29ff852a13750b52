#pragma once

#include <cstdint>
#include <span>

#pragma GCC visibility push(default)

namespace plist {

class PlistValue;

/// How large a value is once everything that it shares is written out.
namespace PlistExpansion {

/// The number of values at and below `value`, counting a shared one for each place where it stands,
/// at most `limit` (up to 2^63 - 1). Visits each container in memory once and remembers its count,
/// so that a small file that describes 2^40 values is counted in no time; ends at the limit.
std::uint64_t count(const PlistValue& value, std::uint64_t limit);

/// Whether more than `limit` values (less than 2^63 - 1) stand at and below all of `values`. Counts
/// only if the quick upper bounds of `PlistValue::expandedCount` do not settle it.
bool exceeds(std::span<const PlistValue> values, std::uint64_t limit);

}  // namespace PlistExpansion

}  // namespace plist

#pragma GCC visibility pop
