#include "fuzz/support/RoundTrip.h"

#include "PlistCore/PlistBytes.h"
#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "PlistCore/xml/XMLPlistSerializer.h"
#include "fuzz/support/FuzzCheck.h"
#include "fuzz/support/ValueFacts.h"

namespace {

void checkBinary(const PlistValue& value, const ValueFacts& facts) {
    const PlistBytes first = BinaryPlistSerializer::serialize(value);
    if (facts.depth > BinaryPlistParser::nestingLimit) {
        return;
    }
    const PlistValue again = BinaryPlistParser::parse(first.span());
    fuzzCheck((again == value) == !facts.holdsNaN);
    fuzzCheck(BinaryPlistSerializer::serialize(again).view() == first.view());
}

/// What comes back from the form that loses nothing gives the same bytes in any form.
void checkExactBinary(const PlistValue& value, const ValueFacts& facts) {
    constexpr auto identical = BinaryPlistSerializer::EqualTexts::identical;
    const PlistBytes first = BinaryPlistSerializer::serialize(value, identical);
    if (facts.depth > BinaryPlistParser::nestingLimit) {
        return;
    }
    const PlistValue again = BinaryPlistParser::parse(first.span());
    fuzzCheck(BinaryPlistSerializer::serialize(again, identical).view() == first.view());
    fuzzCheck(XMLPlistSerializer::serialize(again).view() ==
              XMLPlistSerializer::serialize(value).view());
}

void checkXml(const PlistValue& value, const ValueFacts& facts) {
    const PlistBytes first = XMLPlistSerializer::serialize(value);
    // A uid is written as a dictionary, one level deeper.
    if (facts.holdsFarDate || facts.depth + 1 > XMLPlistParser::nestingLimit) {
        return;
    }
    const PlistValue again = XMLPlistParser::parse(first.span());
    if (!facts.losesInXml) {
        fuzzCheck((again == value) == !facts.holdsNaN);
    }
    fuzzCheck(XMLPlistSerializer::serialize(again).view() == first.view());
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
