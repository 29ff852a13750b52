#include "tests/PlistCore/support/ValueText.h"

#include <cstdint>

#include "PlistCore/PlistDate.h"
#include "PlistCore/PlistInteger.h"
#include "PlistCore/PlistText.h"

namespace plist {

namespace {

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string hexadecimal(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}

std::string containerText(const PlistValue& value) {
    const bool isDictionary = value.type() == PlistType::dictionary;
    std::string text(isDictionary ? "{" : "(");
    for (std::size_t index = 0; index < value.childCount(); ++index) {
        text += index == 0 ? "" : ", ";
        if (isDictionary) {
            text += quoted(value.keys()[index].view()) + " = ";
        }
        text += valueText(value.children()[index]);
    }
    return text + (isDictionary ? "}" : ")");
}

}  // namespace

std::string valueText(const PlistValue& value) {
    switch (value.type()) {
        case PlistType::dictionary:
        case PlistType::array:
            return containerText(value);
        case PlistType::string:
            return quoted(value.text());
        case PlistType::integer:
            return decimalText(value.integerValue());
        case PlistType::real:
            return PlistText::realText(value.realValue());
        case PlistType::boolean:
            return value.booleanValue() ? "true" : "false";
        case PlistType::date:
            return PlistDate::formatDate(value.dateValue());
        case PlistType::data:
            return "<" + hexadecimal(value.dataValue()) + ">";
        case PlistType::uid:
            return "uid(" + std::to_string(value.uidValue()) + ")";
    }
    return "?";
}

}  // namespace plist
