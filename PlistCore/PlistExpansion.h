#pragma once

#include <cstdint>

class PlistValue;

/// How large a value is once everything that it shares is written out.
namespace PlistExpansion {

/// The number of values at and below `value`, counting a shared one for each place where it stands,
/// at most `limit`. Visits each container in memory once and remembers its count, so that a small
/// file that describes 2^40 values is counted in no time.
std::uint64_t count(const PlistValue& value, std::uint64_t limit);

}  // namespace PlistExpansion
