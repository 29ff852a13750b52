#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#pragma GCC visibility push(default)

namespace plist {

/// The nine kinds of property-list values. The order is fixed: it is the order of the alternatives
/// of `PlistValue` and the order in which types are listed to people.
enum class PlistType : std::uint8_t {
    dictionary,
    array,
    string,
    integer,
    real,
    boolean,
    date,
    data,
    uid,
};

/// All nine types, in declaration order.
inline constexpr std::array<PlistType, 9> allPlistTypes = {
    PlistType::dictionary, PlistType::array, PlistType::string, PlistType::integer, PlistType::real,
    PlistType::boolean,    PlistType::date,  PlistType::data,   PlistType::uid,
};

/// The stable identifier of a type in text: "dictionary" ... "uid".
std::string_view rawValue(PlistType type);

/// The name of a type as people see it: "Dictionary" ... "UID".
std::string_view displayName(PlistType type);

/// The type whose raw value is exactly `rawValue` (case-sensitive), or nothing.
std::optional<PlistType> plistTypeFromRawValue(std::string_view rawValue);

/// Whether values of this type have children: true for dictionaries and arrays.
constexpr bool isContainer(PlistType type) {
    return type == PlistType::dictionary || type == PlistType::array;
}

}  // namespace plist

#pragma GCC visibility pop

/// Hashes the raw value, so that the hash does not depend on the order of the enumeration.
template <>
struct std::hash<plist::PlistType> {
    std::size_t operator()(plist::PlistType type) const noexcept {
        return std::hash<std::string_view>{}(rawValue(type));
    }
};
