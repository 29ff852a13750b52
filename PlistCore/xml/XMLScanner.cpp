#include "PlistCore/xml/XMLScanner.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <optional>
#include <utility>

#include "PlistCore/text/Ascii.h"
#include "PlistCore/text/ByteBlock.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist::detail {

namespace {

constexpr std::array<std::string_view, 11> elementNames = {
    "plist", "dict", "array", "key", "string", "integer", "real", "true", "false", "date", "data",
};

/// The longest name of a reference, between "&" and ";".
constexpr std::size_t longestReference = 12;

/// How much of the input is checked for valid UTF-8 at once: it then still is in the nearest cache
/// when it is scanned.
constexpr std::size_t windowSize = std::size_t{1} << 14;

constexpr bool isBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

/// Whether `byte` stands after the first one of a character of several bytes.
constexpr bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

constexpr bool isNameByte(char byte) {
    return Ascii::isLetter(byte) || Ascii::isDigit(byte) || byte == '-' || byte == '.' ||
           byte == ':' || byte == '_';
}

std::optional<XMLElement> elementNamed(std::string_view name) {
    const auto found = std::find(elementNames.begin(), elementNames.end(), name);
    if (found == elementNames.end()) {
        return std::nullopt;
    }
    return static_cast<XMLElement>(found - elementNames.begin());
}

std::optional<char32_t> scalarFromDigits(std::string_view digits, int base) {
    std::uint32_t number = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, base);
    const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
    if (digits.empty() || stop != end || error != std::errc() || number > 0x10FFFF || isSurrogate) {
        return std::nullopt;
    }
    return static_cast<char32_t>(number);
}

/// The character that "&name;" stands for.
std::optional<char32_t> referencedCharacter(std::string_view name) {
    if (name.starts_with("#x") || name.starts_with("#X")) {
        return scalarFromDigits(name.substr(2), 16);
    }
    if (name.starts_with('#')) {
        return scalarFromDigits(name.substr(1), 10);
    }
    constexpr std::array<std::pair<std::string_view, char32_t>, 5> predefined = {{
        {"lt", U'<'},
        {"gt", U'>'},
        {"amp", U'&'},
        {"quot", U'"'},
        {"apos", U'\''},
    }};
    for (const auto& [known, character] : predefined) {
        if (name == known) {
            return character;
        }
    }
    return std::nullopt;
}

}  // namespace

std::string_view elementName(XMLElement element) {
    return elementNames[static_cast<std::size_t>(element)];
}

void XMLScanner::skipBlanks() noexcept {
    while (position_ < input_.size() && isBlank(input_[position_])) {
        ++position_;
    }
}

void XMLScanner::skipMisc() {
    for (;;) {
        skipBlanks();
        if (isAt("<!--")) {
            skipPast("-->", position_ + 4);
        } else if (isAt("<?")) {
            skipPast("?>", position_ + 2);
        } else if (isAt("<!DOCTYPE")) {
            skipDoctype();
        } else {
            return;
        }
    }
}

void XMLScanner::skipPast(std::string_view terminator, std::size_t start) {
    const std::size_t found = input_.find(terminator, start);
    if (found == std::string_view::npos) {
        failAtEnd();
    }
    position_ = found + terminator.size();
}

void XMLScanner::skipDoctype() {
    std::ptrdiff_t depth = 0;
    std::size_t at = position_;
    for (; at < input_.size(); ++at) {
        const char byte = input_[at];
        if (byte == '"' || byte == '\'') {
            at = std::min(input_.find(byte, at + 1), input_.size());
        } else if (byte == '[') {
            ++depth;
        } else if (byte == ']') {
            --depth;
        } else if (byte == '>' && depth <= 0) {
            position_ = at + 1;
            return;
        }
    }
    failAtEnd();
}

std::string_view XMLScanner::readName() noexcept {
    const std::size_t start = position_;
    while (position_ < input_.size() && isNameByte(input_[position_])) {
        ++position_;
    }
    return input_.substr(start, position_ - start);
}

XMLScanner::StartTag XMLScanner::readStartTag() {
    const std::size_t start = position_;
    if (isAtEnd()) {
        failAtEnd();
    }
    if (input_[start] != '<' || isAt("</")) {
        failMalformed(start, "Expected a value.");
    }
    ++position_;
    if (isAtEnd()) {
        failAtEnd();
    }
    const std::string_view name = readName();
    const std::optional<XMLElement> element = elementNamed(name);
    if (!element) {
        failMalformed(start, "Unknown element <" + std::string(name) + ">.");
    }
    skipPast(">", position_);
    return {*element, input_[position_ - 2] == '/', start};
}

void XMLScanner::readEndTag(XMLElement element) {
    const std::size_t start = position_;
    if (isAtEnd() || input_.substr(start) == "<") {
        failAtEnd();
    }
    bool isExpected = isAt("</");
    if (isExpected) {
        position_ += 2;
        if (isAtEnd()) {
            failAtEnd();
        }
        isExpected = readName() == elementName(element);
    }
    if (isExpected) {
        skipBlanks();
        if (isAtEnd()) {
            failAtEnd();
        }
        isExpected = input_[position_] == '>';
    }
    if (!isExpected) {
        failMalformed(start, "Expected </" + std::string(elementName(element)) + ">.");
    }
    ++position_;
}

std::string_view XMLScanner::readText(XMLElement element, std::string& buffer) {
    const std::size_t start = position_;
    position_ = nextMarkup(start);
    std::string_view text = input_.substr(start, position_ - start);
    if (isAt("&") || isAt("<!")) {
        buffer.assign(text);
        readTextPieces(buffer);
        text = buffer;
    }
    readEndTag(element);
    if (!UnicodeText::isValidUtf8(text)) {
        failMalformed(start, "The text is not valid UTF-8.");
    }
    return text;
}

std::size_t XMLScanner::nextMarkup(std::size_t start) const noexcept {
    std::size_t at = start;
    for (; at + ByteBlock::size <= input_.size(); at += ByteBlock::size) {
        const unsigned found = ByteBlock::load(input_.data() + at).markupStarts();
        if (found != 0) {
            return at + static_cast<std::size_t>(std::countr_zero(found));
        }
    }
    while (at < input_.size() && input_[at] != '<' && input_[at] != '&') {
        ++at;
    }
    return at;
}

/// Extends what is known to be valid by windows until it reaches `end`; false from the window on in
/// which something is broken.
bool XMLScanner::checkUpTo(std::size_t end) {
    while (!isBroken_ && validEnd_ < end) {
        std::size_t windowEnd = std::min(validEnd_ + windowSize, input_.size());
        while (windowEnd < input_.size() && windowEnd > validEnd_ &&
               continuesCharacter(input_[windowEnd])) {
            --windowEnd;
        }
        isBroken_ = windowEnd == validEnd_ ||
                    !UnicodeText::isValidUtf8(input_.substr(validEnd_, windowEnd - validEnd_));
        if (!isBroken_) {
            validEnd_ = windowEnd;
        }
    }
    return validEnd_ >= end;
}

void XMLScanner::readTextPieces(std::string& buffer) {
    for (;;) {
        const std::size_t next = nextMarkup(position_);
        buffer.append(input_, position_, next - position_);
        position_ = next;
        if (isAt("&")) {
            readReference(buffer);
        } else if (isAt("<![CDATA[")) {
            const std::size_t content = position_ + 9;
            skipPast("]]>", content);
            buffer.append(input_, content, position_ - 3 - content);
        } else if (isAt("<!--")) {
            skipPast("-->", position_ + 4);
        } else {
            return;
        }
    }
}

void XMLScanner::readReference(std::string& buffer) {
    const std::size_t ampersand = position_;
    const std::string_view window = input_.substr(ampersand + 1, longestReference + 1);
    const std::size_t length = window.find(';');
    if (length == std::string_view::npos) {
        failMalformed(ampersand, "Unterminated entity reference.");
    }
    const std::string_view name = window.substr(0, length);
    const std::optional<char32_t> character = referencedCharacter(name);
    if (!character) {
        failMalformed(ampersand, "Unknown entity “&" + UnicodeText::mended(name) + ";”.");
    }
    UnicodeText::appendUtf8(buffer, *character);
    position_ = ampersand + 1 + length + 1;
}

void XMLScanner::failAt(std::size_t offset, PlistError::Reason reason) const {
    throw PlistError(std::move(reason), PlistError::Offset{offset});
}

void XMLScanner::failMalformed(std::size_t offset, std::string text) const {
    failAt(offset, PlistError::Malformed{std::move(text)});
}

void XMLScanner::failAtEnd() const {
    failAt(input_.size(), PlistError::UnexpectedEnd{});
}

}  // namespace plist::detail
