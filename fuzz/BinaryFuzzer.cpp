#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <variant>

#include "PlistCore/PlistError.h"
#include "PlistCore/binary/BinaryPlistParser.h"
#include "fuzz/support/FuzzCheck.h"
#include "fuzz/support/RoundTrip.h"

namespace plist::detail {

namespace {

/// A place, where there is one, is an offset into the input.
void checkPlace(const PlistError& error, std::size_t size) {
    if (error.location().has_value()) {
        const auto* place = std::get_if<PlistError::Offset>(&*error.location());
        fuzzCheck(place != nullptr && place->offset <= size);
    }
}

std::optional<PlistValue> read(std::span<const std::uint8_t> bytes) {
    try {
        return BinaryPlistParser::parse(bytes);
    } catch (const PlistError& error) {
        checkPlace(error, bytes.size());
        return std::nullopt;
    }
}

}  // namespace

/// Any bytes as the binary form.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (const std::optional<PlistValue> value = read({data, size})) {
        checkRoundTrips(*value);
    }
    return 0;
}

}  // namespace plist::detail
