#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <variant>

#include "PlistCore/PlistError.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "fuzz/support/FuzzCheck.h"
#include "fuzz/support/RoundTrip.h"

namespace plist::detail {

namespace {

/// Every error names a line of the input.
void checkPlace(const PlistError& error, std::size_t size) {
    fuzzCheck(error.location().has_value());
    const auto* place = std::get_if<PlistError::Line>(&*error.location());
    fuzzCheck(place != nullptr);
    fuzzCheck(place->line >= 1 && static_cast<std::size_t>(place->line) <= size + 1);
    fuzzCheck(place->column >= 1 && static_cast<std::size_t>(place->column) <= size + 1);
}

std::optional<PlistValue> read(std::span<const std::uint8_t> bytes) {
    try {
        return XMLPlistParser::parse(bytes);
    } catch (const PlistError& error) {
        checkPlace(error, bytes.size());
        return std::nullopt;
    }
}

}  // namespace

/// Any bytes as XML: a value that comes back, or an error with a place.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::uint8_t> bytes(data, size);
    XMLPlistParser::acceptsEncoding(bytes);
    if (const std::optional<PlistValue> value = read(bytes)) {
        checkRoundTrips(*value);
    }
    return 0;
}

}  // namespace plist::detail
