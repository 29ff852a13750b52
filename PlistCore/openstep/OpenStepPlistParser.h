#pragma once

#include <string_view>

#include "PlistCore/PlistValue.h"

/// Reads the old OpenStep text form: `{ key = value; }`, `( item, item )`, `<hex>`, quoted and bare
/// strings, files of `"key" = "value";` without braces, and the typed extensions `<*I5>`,
/// `<*R1.5>`,
/// `<*BY>`, `<*D...>`. Entries are sorted by key (`UnicodeText::compare`); of repeated keys the
/// last wins.
namespace plist::detail::OpenStepPlistParser {

/// The most containers that may be open inside each other.
inline constexpr int nestingLimit = 512;

/// The root value. `text` must be valid UTF-8. Throws `PlistError` (`Malformed`, whose text names
/// line and column, or `NestingTooDeep`), without a location.
PlistValue parse(std::string_view text);

}  // namespace plist::detail::OpenStepPlistParser
