#include "PlistCore/PlistError.h"

#include <utility>

#include "PlistCore/text/UnicodeText.h"

namespace plist {

namespace {

/// What is wrong, without the place.
struct ReasonText {
    std::string operator()(const PlistError::Malformed& reason) const { return reason.text; }
    std::string operator()(const PlistError::InvalidValue& reason) const { return reason.text; }
    std::string operator()(const PlistError::NestingTooDeep& reason) const {
        return "The file nests more than " + std::to_string(reason.limit) + " levels deep.";
    }
    std::string operator()(const PlistError::NotWritable&) const {
        return "This format can only be read.";
    }
    std::string operator()(const PlistError::UnrecognizedFormat&) const {
        return "The file is not a property list.";
    }
    std::string operator()(const PlistError::UnexpectedEnd&) const {
        return "The file ends unexpectedly.";
    }
};

struct LocationText {
    std::string operator()(const PlistError::Line& place) const {
        return "Line " + std::to_string(place.line) + ", column " + std::to_string(place.column);
    }
    std::string operator()(const PlistError::Offset& place) const {
        return "Byte " + std::to_string(place.offset);
    }
};

std::string described(const PlistError::Reason& reason,
                      const std::optional<PlistError::Location>& location) {
    const std::string text = std::visit(ReasonText(), reason);
    return location ? std::visit(LocationText(), *location) + ": " + text : text;
}

}  // namespace

PlistError::PlistError(Reason reason, std::optional<Location> location)
    : reason_(std::move(reason)),
      location_(location),
      description_(described(reason_, location_)) {}

bool PlistError::Malformed::operator==(const Malformed& other) const {
    return detail::UnicodeText::equal(text, other.text);
}

bool PlistError::InvalidValue::operator==(const InvalidValue& other) const {
    return detail::UnicodeText::equal(text, other.text);
}

bool PlistError::operator==(const PlistError& other) const {
    return reason_ == other.reason_ && location_ == other.location_;
}

}  // namespace plist
