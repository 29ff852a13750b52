#include "PlistCore/PlistText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <span>
#include <system_error>
#include <utility>

#include "PlistCore/Base64.h"
#include "PlistCore/PlistDate.h"
#include "PlistCore/PlistEntry.h"
#include "PlistCore/memory/ByteView.h"
#include "PlistCore/text/Ascii.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist {

namespace PlistText {
namespace {

/// Letters outside ASCII need no care: the only one whose lower-case form is ASCII is the Kelvin
/// sign, and no word here has a "k".
template <std::size_t count>
bool isOneOf(std::string_view text, const std::array<std::string_view, count>& words) noexcept {
    return std::any_of(words.begin(), words.end(), [text](std::string_view word) {
        return detail::Ascii::isInAnyCase(text, word);
    });
}

/// Takes `prefix` off the front of `text` if it is there.
bool takePrefix(std::string_view& text, std::string_view prefix) noexcept {
    if (!text.starts_with(prefix)) {
        return false;
    }
    text.remove_prefix(prefix.size());
    return true;
}

enum class Sign : std::uint8_t { plus, minus };

/// Takes a leading "+" or "-"; without either the sign is plus.
Sign takeSign(std::string_view& text) noexcept {
    if (takePrefix(text, "-")) {
        return Sign::minus;
    }
    takePrefix(text, "+");
    return Sign::plus;
}

/// A number of digits only, at least one; nothing above the unsigned 64-bit range.
std::optional<std::uint64_t> parseDigits(std::string_view digits, int base) noexcept {
    std::uint64_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [place, error] = std::from_chars(digits.data(), end, number, base);
    if (error != std::errc() || place != end) {
        return std::nullopt;
    }
    return number;
}

/// What decimal and hexadecimal real literals differ in.
struct RealNotation {
    std::chars_format format;
    std::string_view digits;
    std::string_view exponentMarks;
    std::int64_t exponentPerDigit;
};

constexpr RealNotation decimalNotation = {std::chars_format::general, "0123456789", "eE", 1};
constexpr RealNotation hexadecimalNotation = {std::chars_format::hex, "0123456789abcdefABCDEF",
                                              "pP", 4};

/// The number after the exponent mark of a valid literal; far out of any range if it is too long.
std::int64_t exponentOf(std::string_view digits) noexcept {
    constexpr std::uint64_t farAway = std::uint64_t{1} << 60;
    const Sign sign = takeSign(digits);
    const std::uint64_t number = std::min(parseDigits(digits, 10).value_or(farAway), farAway);
    return sign == Sign::minus ? -static_cast<std::int64_t>(number)
                               : static_cast<std::int64_t>(number);
}

/// Whether a valid literal, not zero, whose value is not a finite double is too large for one
/// rather than too small: whether its first digit other than 0 stands for more than 1.
bool isTooLarge(std::string_view literal, const RealNotation& notation) noexcept {
    const std::size_t mark = literal.find_first_of(notation.exponentMarks);
    const std::string_view mantissa = literal.substr(0, mark);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t firstDigit = mantissa.find_first_not_of("0.");
    const auto places = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(firstDigit);
    const std::int64_t exponent =
        mark == std::string_view::npos ? 0 : exponentOf(literal.substr(mark + 1));
    return exponent + places * notation.exponentPerDigit > 0;
}

/// A literal without a sign or a prefix, which must take up the whole text.
std::optional<double> parseRealLiteral(std::string_view literal, const RealNotation& notation) {
    // The standard conversion would also take a sign or "inf" here.
    if (literal.empty() || (literal.front() != '.' &&
                            notation.digits.find(literal.front()) == std::string_view::npos)) {
        return std::nullopt;
    }
    double number = 0;
    const char* const end = literal.data() + literal.size();
    const auto [place, error] = std::from_chars(literal.data(), end, number, notation.format);
    if (error == std::errc::invalid_argument || place != end) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        return isTooLarge(literal, notation) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return number;
}

/// A real without its sign.
std::optional<double> parseMagnitude(std::string_view text) {
    if (isOneOf<2>(text, {"inf", "infinity"})) {
        return std::numeric_limits<double>::infinity();
    }
    if (takePrefix(text, "0x") || takePrefix(text, "0X")) {
        return parseRealLiteral(text, hexadecimalNotation);
    }
    return parseRealLiteral(text, decimalNotation);
}

std::optional<std::uint64_t> parseUid(std::string_view text) noexcept {
    text = detail::UnicodeText::trimmed(text);
    takePrefix(text, "+");
    return parseDigits(text, 10);
}

PlistValue stringOf(PlistString text) {
    return PlistValue::string(text);
}

PlistValue dataOf(std::vector<std::uint8_t> bytes) {
    return PlistValue::data(bytes);
}

/// `make` of what a rule found, if it found anything.
template <typename Result>
std::optional<PlistValue> made(const std::optional<Result>& result, PlistValue (*make)(Result)) {
    return result ? std::optional(make(*result)) : std::nullopt;
}

/// What the bytes say if they are text, else their Base64.
std::string dataText(std::span<const std::uint8_t> bytes) {
    const std::string_view text = detail::charactersOf(bytes);
    return detail::UnicodeText::isValidUtf8(text) ? std::string(text) : Base64::encoded(bytes);
}

PlistValue dictionaryOfItems(const PlistValue& array) {
    std::vector<PlistString> keys;
    keys.reserve(array.childCount());
    for (std::size_t index = 0; index < array.childCount(); ++index) {
        keys.emplace_back("Item " + std::to_string(index));
    }
    const std::span<const PlistValue> items = array.children();
    return PlistValue::dictionary(std::move(keys), {items.begin(), items.end()});
}

PlistValue arrayOfValues(const PlistValue& dictionary) {
    const std::span<const PlistValue> values = dictionary.children();
    return PlistValue::array({values.begin(), values.end()});
}

/// The number that an integer, real, boolean, date or uid stands for.
double numberOf(const PlistValue& value) {
    switch (value.type()) {
        case PlistType::integer:
            return static_cast<double>(value.integerValue());
        case PlistType::real:
            return value.realValue();
        case PlistType::boolean:
            return value.booleanValue() ? 1 : 0;
        case PlistType::date:
            return value.dateValue();
        default:
            return static_cast<double>(value.uidValue());
    }
}

/// `number` without its fraction; 0 if that is not a valid integer.
PlistInteger truncated(double number) noexcept {
    const double whole = std::trunc(number);
    // NaN fails both comparisons.
    return whole >= -0x1p63 && whole < 0x1p64 ? static_cast<PlistInteger>(whole) : 0;
}

PlistValue integerFromNumber(const PlistValue& value) {
    return PlistValue::integer(value.type() == PlistType::uid ? PlistInteger{value.uidValue()}
                                                              : truncated(numberOf(value)));
}

PlistValue dateFromNumber(const PlistValue& value) {
    const double number = numberOf(value);
    return std::isfinite(number) ? PlistValue::date(number)
                                 : PlistValue::defaultValue(PlistType::date);
}

PlistValue uidFromNumber(const PlistValue& value) {
    const bool fits = value.type() == PlistType::integer && value.integerValue() >= 0;
    return PlistValue::uid(fits ? static_cast<std::uint64_t>(value.integerValue()) : 0);
}

/// Conversion among integers, reals, booleans, dates and uids of different types.
PlistValue convertedNumber(const PlistValue& value, PlistType type) {
    switch (type) {
        case PlistType::integer:
            return integerFromNumber(value);
        case PlistType::real:
            return PlistValue::real(numberOf(value));
        case PlistType::boolean:
            return PlistValue::boolean(numberOf(value) != 0);
        case PlistType::date:
            return dateFromNumber(value);
        default:
            return uidFromNumber(value);
    }
}

/// A string as another scalar: by the rule of that type, else by way of a number.
PlistValue convertedString(const PlistValue& string, PlistType type) {
    const std::string_view text = string.text();
    if (type == PlistType::data) {
        return PlistValue::data(detail::bytesOf(text));
    }
    if (const std::optional<PlistValue> result = value(text, type)) {
        return *result;
    }
    if (const std::optional<PlistInteger> integer = parseInteger(text)) {
        return convertedNumber(PlistValue::integer(*integer), type);
    }
    if (const std::optional<double> real = parseReal(text)) {
        return convertedNumber(PlistValue::real(*real), type);
    }
    return PlistValue::defaultValue(type);
}

PlistValue convertedContainer(const PlistValue& value, PlistType type) {
    switch (type) {
        case PlistType::dictionary:
            return dictionaryOfItems(value);
        case PlistType::array:
            return arrayOfValues(value);
        default:
            return PlistValue::defaultValue(type);
    }
}

}  // namespace

std::optional<PlistInteger> parseInteger(std::string_view text) {
    text = detail::UnicodeText::trimmedWithLineBreaks(text);
    const Sign sign = takeSign(text);
    const int base = takePrefix(text, "0x") || takePrefix(text, "0X") ? 16 : 10;
    // A second sign is taken, but the number that it gives must not be negative: "-+5" is -5,
    // "--5" is nothing and "--0" is 0.
    const Sign secondSign = takeSign(text);
    const std::optional<std::uint64_t> magnitude = parseDigits(text, base);
    if (!magnitude || (secondSign == Sign::minus && *magnitude != 0)) {
        return std::nullopt;
    }
    const PlistInteger number =
        sign == Sign::minus ? -PlistInteger{*magnitude} : PlistInteger{*magnitude};
    return isValidPlistInteger(number) ? std::optional(number) : std::nullopt;
}

std::optional<double> parseReal(std::string_view text) {
    text = detail::UnicodeText::trimmedWithLineBreaks(text);
    const Sign sign = takeSign(text);
    if (detail::Ascii::isInAnyCase(text, "nan")) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const std::optional<double> magnitude = parseMagnitude(text);
    return magnitude && sign == Sign::minus ? -*magnitude : magnitude;
}

std::optional<bool> parseBoolean(std::string_view text) {
    text = detail::UnicodeText::trimmed(text);
    if (isOneOf<3>(text, {"true", "yes", "1"})) {
        return true;
    }
    if (isOneOf<3>(text, {"false", "no", "0"})) {
        return false;
    }
    return std::nullopt;
}

std::optional<std::vector<std::uint8_t>> parseBase64(std::string_view text) {
    std::vector<std::uint8_t> bytes(Base64::decodedCapacity(text.size()));
    const std::optional<std::size_t> count = Base64::decode(text, bytes.data());
    if (!count) {
        return std::nullopt;
    }
    bytes.resize(*count);
    return bytes;
}

std::optional<PlistValue> value(std::string_view text, PlistType type) {
    switch (type) {
        case PlistType::string:
            return made(PlistString::fromUtf8(text), stringOf);
        case PlistType::integer:
            return made(parseInteger(text), PlistValue::integer);
        case PlistType::real:
            return made(parseReal(text), PlistValue::real);
        case PlistType::boolean:
            return made(parseBoolean(text), PlistValue::boolean);
        case PlistType::date:
            return made(PlistDate::parseDate(detail::UnicodeText::trimmed(text)), PlistValue::date);
        case PlistType::data:
            return made(parseBase64(text), dataOf);
        case PlistType::uid:
            return made(parseUid(text), PlistValue::uid);
        default:
            return std::nullopt;
    }
}

std::string displayText(const PlistValue& value) {
    switch (value.type()) {
        case PlistType::string:
            return std::string(value.text());
        case PlistType::integer:
            return decimalText(value.integerValue());
        case PlistType::real:
            return realText(value.realValue());
        case PlistType::boolean:
            return value.booleanValue() ? "true" : "false";
        case PlistType::date:
            return PlistDate::formatDate(value.dateValue());
        case PlistType::data:
            return Base64::encoded(value.dataValue());
        case PlistType::uid:
            return decimalText(value.uidValue());
        default:
            return {};
    }
}

std::string realText(double number) {
    std::array<char, longestRealText> buffer = {};
    return std::string(realText(number, buffer));
}

std::string_view realText(double number, std::span<char, longestRealText> buffer) noexcept {
    if (std::isnan(number)) {
        return "nan";
    }
    if (std::isinf(number)) {
        return number < 0 ? "-inf" : "inf";
    }
    const double magnitude = std::fabs(number);
    const bool isPlain = magnitude == 0 || (magnitude >= 1e-4 && magnitude < 1e16);
    char* const start = buffer.data();
    char* end = std::to_chars(start, start + buffer.size(), number,
                              isPlain ? std::chars_format::fixed : std::chars_format::scientific)
                    .ptr;
    if (isPlain && std::find(start, end, '.') == end) {
        *end++ = '.';
        *end++ = '0';
    }
    return {start, static_cast<std::size_t>(end - start)};
}

PlistValue converted(const PlistValue& value, PlistType type) {
    const PlistType source = value.type();
    if (source == type) {
        return value;
    }
    if (value.isContainer()) {
        return convertedContainer(value, type);
    }
    if (isContainer(type)) {
        return PlistValue::defaultValue(type);
    }
    if (type == PlistType::string) {
        return PlistValue::string(source == PlistType::data ? dataText(value.dataValue())
                                                            : displayText(value));
    }
    if (source == PlistType::string) {
        return convertedString(value, type);
    }
    if (source == PlistType::data || type == PlistType::data) {
        return PlistValue::defaultValue(type);
    }
    return convertedNumber(value, type);
}

}  // namespace PlistText

}  // namespace plist
