#include "PlistCore/openstep/OpenStepScanner.h"

#include <algorithm>
#include <array>
#include <vector>

#include "PlistCore/PlistDate.h"
#include "PlistCore/PlistError.h"
#include "PlistCore/PlistText.h"
#include "PlistCore/openstep/NextStepEncoding.h"
#include "PlistCore/text/Ascii.h"
#include "PlistCore/text/TextEncoding.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist::detail {

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";
constexpr char32_t replacementCharacter = 0xFFFD;

constexpr bool isOctalDigit(char byte) {
    return byte >= '0' && byte <= '7';
}

/// Bytes of words without quotes: those that paths, versions, colours, selectors and names of
/// window classes are made of.
constexpr std::array<bool, 256> makeWordBytes() {
    std::array<bool, 256> bytes{};
    for (char byte = '0'; byte <= '9'; ++byte) {
        bytes[static_cast<std::uint8_t>(byte)] = true;
    }
    for (char byte = 'A'; byte <= 'Z'; ++byte) {
        bytes[static_cast<std::uint8_t>(byte)] = true;
        bytes[static_cast<std::uint8_t>(byte - 'A' + 'a')] = true;
    }
    for (const char byte : std::string_view("_$/:.-+")) {
        bytes[static_cast<std::uint8_t>(byte)] = true;
    }
    return bytes;
}

constexpr bool isWordByte(char byte) {
    constexpr std::array<bool, 256> wordBytes = makeWordBytes();
    return wordBytes[static_cast<std::uint8_t>(byte)];
}

constexpr bool isWhitespace(char byte) {
    return whiteSpace.find(byte) != std::string_view::npos;
}

/// The value of a hexadecimal digit, or -1.
constexpr int hexadecimalDigit(char byte) {
    if (Ascii::isDigit(byte)) {
        return byte - '0';
    }
    if (byte >= 'a' && byte <= 'f') {
        return byte - 'a' + 10;
    }
    if (byte >= 'A' && byte <= 'F') {
        return byte - 'A' + 10;
    }
    return -1;
}

constexpr bool isHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool isLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Whether `text` has the digits and marks of `shape`, in which "0" stands for any digit and "+"
/// for either sign.
bool hasShape(std::string_view text, std::string_view shape) {
    return std::equal(text.begin(), text.end(), shape.begin(), shape.end(),
                      [](char byte, char model) {
                          switch (model) {
                              case '0':
                                  return Ascii::isDigit(byte);
                              case '+':
                                  return byte == '+' || byte == '-';
                              default:
                                  return byte == model;
                          }
                      });
}

/// The two digits at `start` as a number.
int twoDigits(std::string_view text, std::size_t start) {
    return (text[start] - '0') * 10 + (text[start + 1] - '0');
}

/// The date "YYYY-MM-DD HH:MM:SS +HHMM", in seconds since 2001.
std::optional<double> parseZonedDate(std::string_view text) {
    constexpr std::string_view shape = "0000-00-00 00:00:00 +0000";
    constexpr std::size_t timeStart = 11;
    constexpr std::size_t timeEnd = 19;
    constexpr std::size_t zoneStart = 20;
    if (!hasShape(text, shape)) {
        return std::nullopt;
    }
    std::string local(text.substr(0, timeEnd));
    local[timeStart - 1] = 'T';
    const std::optional<double> seconds = PlistDate::parseDate(local);
    const int minutes = twoDigits(text, zoneStart + 3);
    if (!seconds || minutes > 59) {
        return std::nullopt;
    }
    const int offset = (twoDigits(text, zoneStart + 1) * 60 + minutes) * 60;
    return text[zoneStart] == '-' ? *seconds + offset : *seconds - offset;
}

}  // namespace

OpenStepScanner::OpenStepScanner(std::string_view text) : text_(text) {
    if (startsWith(TextEncoding::utf8Mark)) {
        position_ = TextEncoding::utf8Mark.size();
    }
}

void OpenStepScanner::skipBlanks() {
    while (!isAtEnd()) {
        if (isWhitespace(text_[position_])) {
            ++position_;
        } else if (startsWith("//") || startsWith("/*")) {
            skipComment();
        } else {
            return;
        }
    }
}

void OpenStepScanner::skipComment() {
    if (startsWith("//")) {
        position_ = std::min(text_.find_first_of("\n\r", position_), text_.size());
        return;
    }
    constexpr std::string_view mark = "/*";
    const std::size_t end = text_.find("*/", position_ + mark.size());
    if (end == std::string_view::npos) {
        fail("Unterminated comment");
    }
    position_ = end + mark.size();
}

bool OpenStepScanner::accept(char mark) noexcept {
    if (!isAt(mark)) {
        return false;
    }
    ++position_;
    return true;
}

bool OpenStepScanner::isAtString() const noexcept {
    return isAt('"') || isAt('\'') || (!isAtEnd() && isWordByte(text_[position_]));
}

std::string_view OpenStepScanner::readString() {
    return isAt('"') || isAt('\'') ? readQuoted() : readWord();
}

std::string_view OpenStepScanner::readWord() {
    const std::size_t start = position_;
    while (!isAtEnd() && isWordByte(text_[position_])) {
        ++position_;
    }
    // "a/* b */" is a word and a comment.
    if (isAt('*') && position_ - start > 1 && text_[position_ - 1] == '/') {
        --position_;
    }
    return text_.substr(start, position_ - start);
}

std::string_view OpenStepScanner::readQuoted() {
    const std::size_t start = position_;
    const char quote = text_[position_];
    decoded_.clear();
    ++position_;
    while (true) {
        std::size_t end = position_;
        while (end < text_.size() && text_[end] != quote && text_[end] != '\\') {
            ++end;
        }
        const bool isEscape = end < text_.size() && text_[end] == '\\';
        if (end + (isEscape ? 1 : 0) >= text_.size()) {
            fail("Unterminated string", start);
        }
        const std::string_view run = text_.substr(position_, end - position_);
        position_ = end + 1;
        if (!isEscape) {
            return decoded_.empty() ? run : std::string_view(decoded_.append(run));
        }
        decoded_.append(run);
        decodeEscape();
    }
}

/// Appends what the escape whose backslash was just read stands for. One byte at least follows.
void OpenStepScanner::decodeEscape() {
    const char name = text_[position_];
    if (isOctalDigit(name)) {
        decodeOctal();
        return;
    }
    if (name == 'U' || name == 'u') {
        decodeCodeUnit();
        return;
    }
    ++position_;
    constexpr std::string_view names = "abfnrtv";
    constexpr std::string_view characters = "\a\b\f\n\r\t\v";
    const std::size_t index = names.find(name);
    // The quotes, the backslash and the line break are covered by this: what is not a name stands
    // for itself. So does the first byte of a longer character; its other bytes follow as text.
    decoded_.push_back(index == std::string_view::npos ? name : characters[index]);
}

/// One to three octal digits, as many as fit into a byte.
void OpenStepScanner::decodeOctal() {
    std::uint32_t number = 0;
    for (int count = 0; count < 3 && !isAtEnd() && isOctalDigit(text_[position_]); ++count) {
        const std::uint32_t longer =
            number * 8 + static_cast<std::uint32_t>(text_[position_] - '0');
        if (longer > 0xFF) {
            break;
        }
        number = longer;
        ++position_;
    }
    UnicodeText::appendUtf8(decoded_,
                            NextStepEncoding::character(static_cast<std::uint8_t>(number)));
}

/// A UTF-16 code unit, and the second one of a pair if it follows. Half a pair is no character.
void OpenStepScanner::decodeCodeUnit() {
    const std::optional<std::uint32_t> unit = readCodeUnit();
    if (!unit) {
        decoded_.push_back(text_[position_++]);
        return;
    }
    char32_t character = *unit;
    if (isHighSurrogate(*unit) && accept('\\')) {
        const std::size_t second = position_;
        const std::optional<std::uint32_t> low = readCodeUnit();
        if (low && isLowSurrogate(*low)) {
            character = 0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00);
        } else {
            position_ = second - 1;
        }
    }
    const bool isHalf = character >= 0xD800 && character <= 0xDFFF;
    UnicodeText::appendUtf8(decoded_, isHalf ? replacementCharacter : character);
}

/// The number of "U" and one to four hexadecimal digits, or of "u" and exactly four: the small
/// letter is a newer spelling, and texts hold it as an ordinary letter too ("\usepackage"). Nothing
/// is read if something else is next.
std::optional<std::uint32_t> OpenStepScanner::readCodeUnit() {
    constexpr std::size_t mostDigits = 4;
    if (!isAt('U') && !isAt('u')) {
        return std::nullopt;
    }
    const std::size_t start = position_ + 1;
    std::size_t end = start;
    std::uint32_t number = 0;
    while (end < text_.size() && end - start < mostDigits && hexadecimalDigit(text_[end]) >= 0) {
        number = number * 16 + static_cast<std::uint32_t>(hexadecimalDigit(text_[end]));
        ++end;
    }
    const std::size_t leastDigits = isAt('u') ? mostDigits : 1;
    if (end - start < leastDigits) {
        return std::nullopt;
    }
    position_ = end;
    return number;
}

PlistValue OpenStepScanner::readBrackets() {
    if (startsWith("<*")) {
        return readTyped();
    }
    if (startsWith("<[")) {
        return readBase64();
    }
    return readData();
}

PlistValue OpenStepScanner::readData() {
    std::vector<std::uint8_t> bytes;
    int high = -1;
    for (++position_; !isAt('>'); ++position_) {
        const int digit = isAtEnd() ? -1 : hexadecimalDigit(text_[position_]);
        if (digit < 0) {
            if (isAtEnd() || !isWhitespace(text_[position_])) {
                fail("Expected a hexadecimal digit or “>”");
            }
        } else if (high < 0) {
            high = digit;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(high * 16 + digit));
            high = -1;
        }
    }
    if (high >= 0) {
        fail("Expected a hexadecimal digit");
    }
    ++position_;
    return PlistValue::data(bytes);
}

PlistValue OpenStepScanner::readBase64() {
    constexpr std::string_view opening = "<[";
    constexpr std::string_view closing = "]>";
    const std::size_t start = position_;
    const std::size_t end = text_.find(closing, start);
    if (end == std::string_view::npos) {
        fail("Expected “]>”", text_.size());
    }
    const std::size_t first = start + opening.size();
    const std::optional<std::vector<std::uint8_t>> bytes =
        PlistText::parseBase64(text_.substr(first, end - first));
    if (!bytes) {
        fail("Invalid Base64");
    }
    position_ = end + closing.size();
    return PlistValue::data(*bytes);
}

/// "<*", a letter for the type, a text (in double quotes, with some writers) and ">".
PlistValue OpenStepScanner::readTyped() {
    const std::size_t end = text_.find('>', position_);
    if (end == std::string_view::npos) {
        fail("Expected “>”", text_.size());
    }
    const char type = text_[position_ + 2];
    std::string_view content = text_.substr(position_, end - position_);
    content.remove_prefix(std::min<std::size_t>(3, content.size()));
    if (content.size() >= 2 && content.front() == '"' && content.back() == '"') {
        content = content.substr(1, content.size() - 2);
    }
    std::optional<PlistValue> value;
    std::string_view problem;
    switch (type) {
        case 'I':
            value = PlistText::value(content, PlistType::integer);
            problem = "Invalid integer";
            break;
        case 'R':
            value = PlistText::value(content, PlistType::real);
            problem = "Invalid real number";
            break;
        case 'B':
            if (content == "Y" || content == "N") {
                value = PlistValue::boolean(content == "Y");
            }
            problem = "Invalid boolean";
            break;
        case 'D':
            if (const std::optional<double> seconds = parseZonedDate(content)) {
                value = PlistValue::date(*seconds);
            }
            problem = "Invalid date";
            break;
        default:
            problem = "Unknown type";
    }
    if (!value) {
        fail(problem);
    }
    position_ = end + 1;
    return *value;
}

void OpenStepScanner::fail(std::string_view what, std::size_t place) const {
    const std::string_view before = text_.substr(0, place);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineBreak = before.rfind('\n');
    const std::size_t lineStart = lineBreak == std::string_view::npos ? 0 : lineBreak + 1;
    std::string text(what);
    text += " at line " + std::to_string(line);
    text += ", column " + std::to_string(place - lineStart + 1) + ".";
    throw PlistError(PlistError::Malformed{text});
}

}  // namespace plist::detail
