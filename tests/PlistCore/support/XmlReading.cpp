#include "tests/PlistCore/support/XmlReading.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <variant>
#include <vector>

#include "tests/PlistCore/support/ValueDifference.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist {

namespace {

using Paths = detail::XMLPlistParser::Paths;

/// More than the fast path leaves to the plain one at the end of its input.
constexpr std::size_t paddingSize = 200;

/// Whether the text knows correctly whether it is ASCII.
bool hasRightFlag(const detail::PlistCell& cell) {
    const std::string_view bytes = cell.bytes();
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(), [](char byte) {
        return static_cast<unsigned char>(byte) < 0x80;
    });
    return cell.has(detail::PlistCell::ascii) == isAscii;
}

/// Whether all texts and keys at and below `value` know whether they are ASCII.
bool hasRightFlags(const PlistValue& value) {
    std::vector<const PlistValue*> waiting{&value};
    while (!waiting.empty()) {
        const PlistValue* next = waiting.back();
        waiting.pop_back();
        if (next->type() == PlistType::string && !hasRightFlag(next->cell())) {
            return false;
        }
        const auto keys = next->keys();
        if (!std::all_of(keys.begin(), keys.end(),
                         [](const PlistString& key) { return hasRightFlag(key.cell()); })) {
            return false;
        }
        for (const PlistValue& child : next->children()) {
            waiting.push_back(&child);
        }
    }
    return true;
}

std::string difference(const XmlOutcome& expected, const XmlOutcome& found) {
    if (!expected.value || !found.value) {
        const bool isSame = !expected.value && !found.value &&
                            expected.error->reason() == found.error->reason() &&
                            expected.error->location() == found.error->location();
        return isSame ? "" : "expected “" + expected.text() + "”, found “" + found.text() + "”";
    }
    if (!hasRightFlags(*found.value) || !hasRightFlags(*expected.value)) {
        return "a text does not know whether it is ASCII: " + found.text();
    }
    return firstDifference(*expected.value, *found.value);
}

bool isUnexpectedEnd(const XmlOutcome& outcome) {
    return outcome.error &&
           std::holds_alternative<PlistError::UnexpectedEnd>(outcome.error->reason());
}

std::string labelled(std::string_view label, const std::string& difference) {
    return difference.empty() ? difference : std::string(label) + difference;
}

}  // namespace

std::string XmlOutcome::text() const {
    return value ? valueText(*value) : error->errorDescription();
}

XmlOutcome xmlOutcome(std::string_view xml, detail::XMLPlistParser::Paths paths) {
    // A copy of exactly the right size, so that a sanitizer sees any byte read beyond it.
    const std::vector<std::uint8_t> bytes(xml.begin(), xml.end());
    try {
        return {detail::XMLPlistParser::parse(bytes, paths), std::nullopt};
    } catch (const PlistError& error) {
        return {std::nullopt, error};
    }
}

PlistValue xmlValue(std::string_view xml) {
    const std::vector<std::uint8_t> bytes(xml.begin(), xml.end());
    return detail::XMLPlistParser::parse(bytes);
}

std::string differenceOfPaths(std::string_view xml) {
    const XmlOutcome plain = xmlOutcome(xml, Paths::plain);
    std::string found = difference(plain, xmlOutcome(xml));
    if (!found.empty()) {
        return "as it stands: " + found;
    }
    const std::string padded = std::string(xml) + std::string(paddingSize, ' ');
    const XmlOutcome plainPadded = xmlOutcome(padded, Paths::plain);
    found = difference(plainPadded, xmlOutcome(padded));
    if (!found.empty()) {
        return "padded: " + found;
    }
    // What ends too soon ends too soon elsewhere, or with another error, when whitespace follows.
    return isUnexpectedEnd(plain) ? std::string()
                                  : labelled("by the padding: ", difference(plain, plainPadded));
}

}  // namespace plist
