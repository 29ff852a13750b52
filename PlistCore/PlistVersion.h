#pragma once

#include <string_view>

#if __cplusplus < 202002L
#error "PlistCore needs C++20."
#endif

// Integers have 128 bits, and a value of 16 bytes holds a length and a pointer.
static_assert(sizeof(void*) == 8, "PlistCore needs a 64-bit system.");

namespace plist {

/// The version of the library. Until 1.0 a new minor version may break callers.
inline constexpr int versionMajor = 0;
inline constexpr int versionMinor = 1;
inline constexpr int versionPatch = 0;

/// The same as text. The build takes it from this line.
inline constexpr std::string_view version = "0.1.0";

}  // namespace plist
