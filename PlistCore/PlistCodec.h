#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistFile.h"
#include "PlistCore/PlistFormat.h"
#include "PlistCore/PlistValue.h"

#pragma GCC visibility push(default)

/// The one way from bytes to a value and back. Both operations are pure functions of their
/// arguments and may be called from any thread.
namespace plist::PlistCodec {

/// Finds out which form the bytes are in and reads them. The result holds nothing of `bytes`.
/// Throws `PlistError`.
PlistFile read(std::span<const std::uint8_t> bytes);
PlistFile read(std::string_view bytes);

/// The most containers inside each other that a reader opens.
inline constexpr int maximumDepth = 512;

/// The most values that a file is written with. By sharing, a small binary file can describe more
/// values than any memory holds when each of them is written out; this limit stops that with a
/// message, at about a hundred times the size of the largest documents.
inline constexpr std::uint64_t writtenValueLimit = std::uint64_t{1} << 28;

/// How a value is written.
struct WriteOptions {
    /// Whether texts that differ in bytes, though not as Unicode text, stay different. The binary
    /// form else stores equivalent texts once, in the spelling that comes first; XML keeps all.
    bool keepsSpellings = false;
};

/// The bytes of `value` in `format`. Throws `PlistError`: `NotWritable` for the OpenStep form, and
/// `InvalidValue` for a value that would run past `writtenValueLimit`.
PlistBytes write(const PlistValue& value, PlistFormat format, const WriteOptions& options = {});

}  // namespace plist::PlistCodec

#pragma GCC visibility pop
