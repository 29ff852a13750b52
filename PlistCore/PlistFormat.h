#pragma once

#include <array>
#include <cstdint>

#pragma GCC visibility push(default)

namespace plist {

/// The three forms of a property list on disk, in the order in which they are listed to people.
enum class PlistFormat : std::uint8_t {
    xml,
    binary,
    openStep,
};

/// All formats, in declaration order.
inline constexpr std::array<PlistFormat, 3> allPlistFormats = {
    PlistFormat::xml,
    PlistFormat::binary,
    PlistFormat::openStep,
};

/// Whether files of this format can be written: all but the old OpenStep form.
constexpr bool isWritable(PlistFormat format) {
    return format != PlistFormat::openStep;
}

}  // namespace plist

#pragma GCC visibility pop
