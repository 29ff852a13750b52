#include "PlistCore/PlistType.h"

#include <algorithm>

namespace plist {

namespace {

struct TypeNames {
    std::string_view rawValue;
    std::string_view displayName;
};

/// In declaration order.
constexpr std::array<TypeNames, allPlistTypes.size()> names = {{
    {"dictionary", "Dictionary"},
    {"array", "Array"},
    {"string", "String"},
    {"integer", "Integer"},
    {"real", "Real"},
    {"boolean", "Boolean"},
    {"date", "Date"},
    {"data", "Data"},
    {"uid", "UID"},
}};

}  // namespace

std::string_view rawValue(PlistType type) {
    return names.at(static_cast<std::size_t>(type)).rawValue;
}

std::string_view displayName(PlistType type) {
    return names.at(static_cast<std::size_t>(type)).displayName;
}

std::optional<PlistType> plistTypeFromRawValue(std::string_view rawValue) {
    const auto found =
        std::find_if(allPlistTypes.begin(), allPlistTypes.end(),
                     [rawValue](PlistType type) { return plist::rawValue(type) == rawValue; });
    return found == allPlistTypes.end() ? std::nullopt : std::optional(*found);
}

}  // namespace plist
