#pragma once

/// Characters that canonical composition (NFC) leaves alone wherever they stand: it neither changes
/// them nor joins them to what is before them, and they are not marks that could be put in another
/// order. A text of nothing else is its own composition.
namespace plist::detail::StableCharacters {

/// Whether `codePoint` is known to be one. Knows most of the scripts that are written without
/// combining marks; false says nothing. Costs a few comparisons.
bool contains(char32_t codePoint) noexcept;

}  // namespace plist::detail::StableCharacters
