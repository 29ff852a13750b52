#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistFile.h"
#include "PlistCore/PlistFormat.h"
#include "PlistCore/PlistResult.h"
#include "PlistCore/PlistValue.h"

#pragma GCC visibility push(default)

/// The one way from bytes to a value and back. Both operations are pure functions of their
/// arguments and may be called from any thread.
namespace plist::PlistCodec {

/// Finds out which form the bytes are in and reads them. The result holds nothing of `bytes`.
/// Throws `PlistError`.
PlistFile read(std::span<const std::uint8_t> bytes);
PlistFile read(std::string_view bytes);

/// The same without `PlistError` being thrown; `std::bad_alloc` still is.
PlistResult<PlistFile> tryRead(std::span<const std::uint8_t> bytes);
PlistResult<PlistFile> tryRead(std::string_view bytes);

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

    /// The most values to write, shared ones counted at every place. A larger value is refused
    /// before anything is written.
    std::uint64_t maximumValues = writtenValueLimit;

    /// The most bytes to give back. Writing ends as soon as there are more.
    std::size_t maximumBytes = std::numeric_limits<std::size_t>::max();
};

/// The bytes of `value` in `format`. Throws `PlistError`: `NotWritable` for the OpenStep form, and
/// `InvalidValue` for a value that would run past a limit of `options`.
PlistBytes write(const PlistValue& value, PlistFormat format, const WriteOptions& options = {});

/// The same without `PlistError` being thrown; `std::bad_alloc` still is.
PlistResult<PlistBytes> tryWrite(const PlistValue& value, PlistFormat format,
                                 const WriteOptions& options = {});

}  // namespace plist::PlistCodec

#pragma GCC visibility pop
