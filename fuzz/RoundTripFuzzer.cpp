#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistError.h"
#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "PlistCore/xml/XMLPlistSerializer.h"
#include "fuzz/support/FuzzCheck.h"
#include "fuzz/support/ValueFacts.h"

namespace plist::detail {

namespace {

std::optional<PlistValue> read(std::span<const std::uint8_t> bytes) {
    try {
        return XMLPlistParser::parse(bytes);
    } catch (const PlistError&) {
        return std::nullopt;
    }
}

PlistValue throughBinary(const PlistValue& value) {
    return BinaryPlistParser::parse(BinaryPlistSerializer::serialize(value).span());
}

PlistValue throughXml(const PlistValue& value) {
    return XMLPlistParser::parse(XMLPlistSerializer::serialize(value).span());
}

}  // namespace

/// XML, its value, the binary form, its value, XML again: the value is the same all the way.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::optional<PlistValue> value = read({data, size});
    if (!value) {
        return 0;
    }
    const ValueFacts facts = factsOf(*value);
    if (facts.isHuge || facts.holdsFarDate) {
        return 0;
    }
    // Nothing that was read from XML is lost there, but that a NaN equals nothing.
    fuzzCheck(!facts.losesInXml);
    const PlistValue second = throughBinary(*value);
    fuzzCheck((second == *value) == !facts.holdsNaN);
    const PlistValue third = throughXml(second);
    fuzzCheck((third == *value) == !facts.holdsNaN);
    fuzzCheck(XMLPlistSerializer::serialize(third).view() ==
              XMLPlistSerializer::serialize(second).view());
    return 0;
}

}  // namespace plist::detail
