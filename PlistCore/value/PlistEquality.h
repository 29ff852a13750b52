#pragma once

namespace plist {
class PlistValue;
}  // namespace plist

/// Equality of whole values.
namespace plist::detail::PlistEquality {

/// See `operator==` of `PlistValue`. Walks with an explicit stack; containers that both sides share
/// are skipped unless a NaN stands in them, and values that share much within themselves are
/// compared once for each pair of containers and not once for each place.
bool equal(const PlistValue& left, const PlistValue& right);

}  // namespace plist::detail::PlistEquality
