#include "PlistCore/xml/XMLFastPath.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

#include "PlistCore/PlistDate.h"
#include "PlistCore/text/Ascii.h"
#include "PlistCore/text/ByteBlock.h"

namespace plist::detail {

namespace {

/// Enough for any tag, a number or a date, and the end tag after it.
constexpr std::size_t margin = 64;

/// The most digits that cannot overflow 64 bits.
constexpr std::ptrdiff_t safeDigits = 18;

/// The most bytes of a real that are looked at.
constexpr std::size_t longestReal = 40;

/// Whether `text` stands at `at`; compiles to one or two comparisons of whole words.
template <std::size_t size>
bool isAt(const char* at, const char (&text)[size]) {
    return std::memcmp(at, text, size - 1) == 0;
}

}  // namespace

XMLFastPath::XMLFastPath(XMLScanner& scanner, XMLTreeBuilder& tree)
    : scanner_(scanner), tree_(tree), start_(scanner.input().data()) {
    const std::size_t size = scanner.input().size();
    limit_ = size < margin ? start_ : start_ + (size - margin);
}

void XMLFastPath::run() {
    const char* at = start_ + scanner_.position();
    while (at < limit_ && tree_.isOpen()) {
        at = skipBlanks(at);
        if (at >= limit_) {
            break;
        }
        const char* next = tree_.awaitsKey() ? readKeyOrEnd(at) : readValueOrEnd(at);
        if (next == nullptr) {
            break;
        }
        at = next;
    }
    scanner_.moveTo(static_cast<std::size_t>(at - start_));
}

inline const char* XMLFastPath::skipBlanks(const char* at) const {
    for (; at < limit_; at += ByteBlock::size) {
        const unsigned others = ByteBlock::load(at).whitespace() ^ 0xFFFFU;
        if (others != 0) {
            return at + std::countr_zero(others);
        }
    }
    return at;
}

inline const char* XMLFastPath::readKeyOrEnd(const char* at) {
    if (isAt(at, "<key>")) {
        const char* next = readExpectedKey(at + 5);
        return next != nullptr ? next : readKey(at + 5);
    }
    if (isAt(at, "</dict>")) {
        tree_.closeDictionary();
        return at + 7;
    }
    return nullptr;
}

inline const char* XMLFastPath::readValueOrEnd(const char* at) {
    switch (at[1]) {
        case 's':
            return isAt(at, "<string>") ? readString(at + 8) : nullptr;
        case 'i':
            return isAt(at, "<integer>") ? readInteger(at + 9) : nullptr;
        case 'r':
            return isAt(at, "<real>") ? readReal(at + 6) : nullptr;
        case 't':
            return isAt(at, "<true/>") ? add(PlistCell::ofBoolean(true), at + 7) : nullptr;
        case 'f':
            return isAt(at, "<false/>") ? add(PlistCell::ofBoolean(false), at + 8) : nullptr;
        case 'd':
            return isAt(at, "<date>") ? readDate(at + 6) : openContainer(at);
        case 'a':
            return openContainer(at);
        case '/':
            if (isAt(at, "</array>") && !tree_.isInDictionary()) {
                tree_.closeArray();
                return at + 8;
            }
            return nullptr;
        default:
            return nullptr;
    }
}

inline const char* XMLFastPath::openContainer(const char* at) {
    if (!tree_.canOpen()) {
        return nullptr;
    }
    if (isAt(at, "<dict>")) {
        tree_.openDictionary();
        return at + 6;
    }
    if (isAt(at, "<array>")) {
        tree_.openArray();
        return at + 7;
    }
    return nullptr;
}

inline const char* XMLFastPath::readExpectedKey(const char* content) {
    const PlistCell* key = tree_.expectedKey();
    if (key == nullptr) {
        return nullptr;
    }
    const std::string_view bytes = key->bytes();
    if (bytes.size() > margin / 2 || std::memcmp(content, bytes.data(), bytes.size()) != 0 ||
        !isAt(content + bytes.size(), "</key>")) {
        return nullptr;
    }
    tree_.addExpectedKey();
    return content + bytes.size() + 6;
}

const char* XMLFastPath::readKey(const char* content) {
    const Text text = findTextEnd(content);
    if (text.end == nullptr || !isAt(text.end, "</key>")) {
        return nullptr;
    }
    const std::string_view key(content, static_cast<std::size_t>(text.end - content));
    if (!text.isAscii && !scanner_.isValidUtf8(key)) {
        return nullptr;
    }
    tree_.addKey(key, text.isAscii ? PlistCell::ascii : 0);
    return text.end + 6;
}

inline const char* XMLFastPath::readString(const char* content) {
    const Text text = findTextEnd(content);
    if (text.end == nullptr || !isAt(text.end, "</string>")) {
        return nullptr;
    }
    const std::string_view bytes(content, static_cast<std::size_t>(text.end - content));
    if (!text.isAscii && !scanner_.isValidUtf8(bytes)) {
        return nullptr;
    }
    const std::uint8_t flags = text.isAscii ? PlistCell::ascii : 0;
    return add(tree_.scalars().stringFromBlock(bytes, flags), text.end + 9);
}

inline const char* XMLFastPath::readInteger(const char* content) {
    const bool isNegative = *content == '-';
    const char* digits = content + (isNegative ? 1 : 0);
    const char* at = digits;
    std::int64_t number = 0;
    while (Ascii::isDigit(*at) && at - digits < safeDigits) {
        number = number * 10 + (*at++ - '0');
    }
    if (at == digits || !isAt(at, "</integer>")) {
        return nullptr;
    }
    return add(PlistCell::ofInteger(isNegative ? -number : number), at + 10);
}

inline const char* XMLFastPath::readReal(const char* content) {
    if (!Ascii::isDigit(content[*content == '-' ? 1 : 0])) {
        return nullptr;
    }
    double number = 0;
    const auto [end, error] = std::from_chars(content, content + longestReal, number);
    if (error != std::errc() || !isAt(end, "</real>")) {
        return nullptr;
    }
    return add(PlistCell::ofReal(number), end + 7);
}

inline const char* XMLFastPath::readDate(const char* content) {
    constexpr std::size_t fullLength = 20;
    if (!isAt(content + fullLength, "</date>")) {
        return nullptr;
    }
    const std::optional<double> date = PlistDate::parseDate({content, fullLength});
    return date ? add(PlistCell::ofDate(*date), content + fullLength + 7) : nullptr;
}

inline const char* XMLFastPath::add(const PlistCell& value, const char* next) {
    tree_.add(value);
    return next;
}

/// Where the next markup starts, with at least `margin` - 16 bytes left behind it.
inline XMLFastPath::Text XMLFastPath::findTextEnd(const char* content) const {
    unsigned high = 0;
    for (const char* at = content; at < limit_; at += ByteBlock::size) {
        const ByteBlock block = ByteBlock::load(at);
        const unsigned markup = block.markupStarts();
        if (markup != 0) {
            const int length = std::countr_zero(markup);
            high |= block.highBits() & ((1U << length) - 1);
            return {at + length, high == 0};
        }
        high |= block.highBits();
    }
    return {nullptr, false};
}

}  // namespace plist::detail
