#include "PlistCore/PlistValue.h"

namespace plist {

std::optional<PlistString> PlistValue::asString() const {
    return type() == PlistType::string ? std::optional(stringValue()) : std::nullopt;
}

std::optional<PlistInteger> PlistValue::asInteger() const noexcept {
    return type() == PlistType::integer ? std::optional(integerValue()) : std::nullopt;
}

std::optional<std::int64_t> PlistValue::asInt64() const noexcept {
    const std::optional<PlistInteger> number = asInteger();
    if (!number || *number > INT64_MAX) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(*number);
}

std::optional<double> PlistValue::asReal() const noexcept {
    return type() == PlistType::real ? std::optional(realValue()) : std::nullopt;
}

std::optional<bool> PlistValue::asBoolean() const noexcept {
    return type() == PlistType::boolean ? std::optional(booleanValue()) : std::nullopt;
}

std::optional<double> PlistValue::asDate() const noexcept {
    return type() == PlistType::date ? std::optional(dateValue()) : std::nullopt;
}

std::optional<std::uint64_t> PlistValue::asUid() const noexcept {
    return type() == PlistType::uid ? std::optional(uidValue()) : std::nullopt;
}

std::optional<std::span<const std::uint8_t>> PlistValue::asData() const& noexcept {
    return type() == PlistType::data ? std::optional(dataValue()) : std::nullopt;
}

}  // namespace plist
