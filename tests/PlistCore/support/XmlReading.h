#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "PlistCore/PlistError.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/xml/XMLPlistParser.h"

namespace plist {

/// What reading an XML property list gave: a value or an error.
struct XmlOutcome {
    std::optional<PlistValue> value;
    std::optional<PlistError> error;

    /// The value on one line, or the description of the error.
    std::string text() const;
};

XmlOutcome xmlOutcome(std::string_view xml, detail::XMLPlistParser::Paths paths =
                                                detail::XMLPlistParser::Paths::fastAndPlain);

/// The value of a text that reads. Throws `PlistError` otherwise.
PlistValue xmlValue(std::string_view xml);

/// How the outcomes of reading `xml` by the fast path and without it differ; empty if they do not.
/// Reads it as it stands and followed by whitespace: the fast path stops before the end of its
/// input, so that it would not touch a short text at all.
std::string differenceOfPaths(std::string_view xml);

}  // namespace plist
