#pragma once

#include <stop_token>
#include <string_view>

#include "PlistCore/PlistMatches.h"

#pragma GCC visibility push(default)

namespace plist {

class PlistValue;

/// Search over all keys and texts of a value.
namespace PlistSearch {

/// The places whose key or text contains `query` (UTF-8) when case and diacritics are ignored,
/// containers before what is in them, each place once. The query counts without the spaces and
/// tabs around it; one of which nothing is left once it is folded (`TextFolding`) matches nothing.
/// The root has no key.
///
/// The text of a string is the string; that of an integer, real, date or uid what `PlistText`
/// displays. Booleans, data and containers have none.
///
/// A pure function, for any thread. Looks at `stop` before each member of a container and every
/// few kilobytes within long texts. Takes memory for the matches, of which it keeps a limited
/// number (`PlistMatches`), and for the depth of the value, which it does not recurse over. What
/// shared containers hold is walked again only where something was found in it, so that a small
/// file which describes 2^40 values is searched in no time.
PlistMatches matches(const PlistValue& root, std::string_view query,
                     const std::stop_token& stop = {});

}  // namespace PlistSearch

}  // namespace plist

#pragma GCC visibility pop
