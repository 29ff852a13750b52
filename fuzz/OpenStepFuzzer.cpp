#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

#include "PlistCore/PlistError.h"
#include "PlistCore/openstep/OpenStepPlistParser.h"
#include "PlistCore/text/UnicodeText.h"
#include "fuzz/support/FuzzCheck.h"
#include "fuzz/support/RoundTrip.h"

namespace plist::detail {

namespace {

/// Errors carry their place in the text, and only these two reasons.
void checkKind(const PlistError& error) {
    fuzzCheck(!error.location().has_value());
    fuzzCheck(std::holds_alternative<PlistError::Malformed>(error.reason()) ||
              std::holds_alternative<PlistError::NestingTooDeep>(error.reason()));
}

std::optional<PlistValue> read(std::string_view text) {
    try {
        return OpenStepPlistParser::parse(text);
    } catch (const PlistError& error) {
        checkKind(error);
        return std::nullopt;
    }
}

}  // namespace

/// Any valid UTF-8 as the OpenStep text form.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (!UnicodeText::isValidUtf8(text)) {
        return 0;
    }
    if (const std::optional<PlistValue> value = read(text)) {
        checkRoundTrips(*value);
    }
    return 0;
}

}  // namespace plist::detail
