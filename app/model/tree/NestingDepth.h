#pragma once

#include <span>

#include "app/model/runtime/Plist.h"

class PlistNode;

/// How deep containers stand in each other. A file that nests deeper than
/// `PlistCodec::maximumDepth` can be written but never read again.
namespace NestingDepth {

/// Throws the `PlistError` (`NestingTooDeep`) of a reader if `entries`, put into `container`, would
/// nest too deep. Visits every container in memory at most once for each level on which it stands.
void check(std::span<const PlistEntry> entries, const PlistNode& container);

}  // namespace NestingDepth
