#include "fuzz/support/RoundTrip.h"

#include "PlistCore/PlistBytes.h"
#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "PlistCore/xml/XMLPlistSerializer.h"
#include "fuzz/support/FuzzCheck.h"
#include "fuzz/support/ValueFacts.h"

namespace plist {

namespace {

void checkBinary(const PlistValue& value, const ValueFacts& facts) {
    const PlistBytes first = detail::BinaryPlistSerializer::serialize(value);
    if (facts.depth > detail::BinaryPlistParser::nestingLimit) {
        return;
    }
    const PlistValue again = detail::BinaryPlistParser::parse(first.span());
    fuzzCheck((again == value) == !facts.holdsNaN);
    fuzzCheck(detail::BinaryPlistSerializer::serialize(again).view() == first.view());
}

/// What comes back from the form that loses nothing gives the same bytes in any form.
void checkExactBinary(const PlistValue& value, const ValueFacts& facts) {
    constexpr auto identical = detail::BinaryPlistSerializer::EqualTexts::identical;
    const PlistBytes first = detail::BinaryPlistSerializer::serialize(value, identical);
    if (facts.depth > detail::BinaryPlistParser::nestingLimit) {
        return;
    }
    const PlistValue again = detail::BinaryPlistParser::parse(first.span());
    fuzzCheck(detail::BinaryPlistSerializer::serialize(again, identical).view() == first.view());
    fuzzCheck(detail::XMLPlistSerializer::serialize(again).view() ==
              detail::XMLPlistSerializer::serialize(value).view());
}

void checkXml(const PlistValue& value, const ValueFacts& facts) {
    const PlistBytes first = detail::XMLPlistSerializer::serialize(value);
    // A uid is written as a dictionary, one level deeper.
    if (facts.holdsFarDate || facts.depth + 1 > detail::XMLPlistParser::nestingLimit) {
        return;
    }
    const PlistValue again = detail::XMLPlistParser::parse(first.span());
    if (!facts.losesInXml) {
        fuzzCheck((again == value) == !facts.holdsNaN);
    }
    fuzzCheck(detail::XMLPlistSerializer::serialize(again).view() == first.view());
}

}  // namespace

void checkRoundTrips(const PlistValue& value) {
    const ValueFacts facts = factsOf(value);
    if (facts.isHuge) {
        return;
    }
    checkBinary(value, facts);
    checkExactBinary(value, facts);
    checkXml(value, facts);
}

}  // namespace plist
