#pragma once

#pragma GCC visibility push(default)

namespace plist {

class PlistString;
class PlistValue;

/// Copies that stand on their own feet. A value that was read shares the memory of its whole
/// document, and so does a plain copy of any part of it.
namespace PlistCopy {

/// A value equal to `value`, byte for byte, that keeps no memory alive much larger than itself. A
/// part that is small against the documents it comes from is created again, and what it shares
/// within itself stays shared; anything else is copied as it stands, at no cost.
///
/// Costs in proportion to the part, at most to an eighth of its documents. May throw
/// `std::bad_alloc`.
PlistValue detached(const PlistValue& value);
PlistString detached(const PlistString& text);

}  // namespace PlistCopy

}  // namespace plist

#pragma GCC visibility pop
