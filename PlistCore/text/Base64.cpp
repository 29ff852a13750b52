#include "PlistCore/Base64.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "PlistCore/memory/ByteView.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist {

namespace Base64 {
namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char padding = '=';

using DigitPair = std::array<char, 2>;

/// The two digits of each number of twelve bits.
constexpr std::array<DigitPair, 4096> digitPairs = [] {
    std::array<DigitPair, 4096> pairs = {};
    for (std::size_t number = 0; number < pairs.size(); ++number) {
        pairs.at(number) = {alphabet[number >> 6], alphabet[number & 0x3F]};
    }
    return pairs;
}();

/// Stands for "outside the alphabet" in tables of values; no combination of digits has this bit.
constexpr std::uint32_t noDigit = std::uint32_t{1} << 31;

using DigitTable = std::array<std::uint32_t, 256>;

/// For each byte the value of the digit, moved up by `shift` bits.
constexpr DigitTable digitTable(int shift) {
    DigitTable table = {};
    for (std::uint32_t& entry : table) {
        entry = noDigit;
    }
    for (std::uint32_t value = 0; value < alphabet.size(); ++value) {
        table.at(static_cast<std::uint8_t>(alphabet[value])) = value << shift;
    }
    return table;
}

constexpr DigitTable firstDigit = digitTable(18);
constexpr DigitTable secondDigit = digitTable(12);
constexpr DigitTable thirdDigit = digitTable(6);
constexpr DigitTable fourthDigit = digitTable(0);

/// The 24 bits of four digits, or a number with the bit `noDigit`.
std::uint32_t groupAt(const std::uint8_t* place) noexcept {
    return firstDigit[place[0]] | secondDigit[place[1]] | thirdDigit[place[2]] |
           fourthDigit[place[3]];
}

/// Writes the 24 bits of a group.
std::uint8_t* put(std::uint32_t group, std::uint8_t* output) noexcept {
    output[0] = static_cast<std::uint8_t>(group >> 16);
    output[1] = static_cast<std::uint8_t>(group >> 8);
    output[2] = static_cast<std::uint8_t>(group);
    return output + 3;
}

/// Whether a code point takes part in Base64 or is whitespace.
bool isHarmless(char32_t point) noexcept {
    return (point < 0x80 && (point == U'=' || fourthDigit[point] != noDigit)) ||
           detail::UnicodeText::isWhitespace(point) || detail::UnicodeText::isLineBreak(point);
}

bool isHarmless(std::string_view text) noexcept {
    while (!text.empty()) {
        if (!isHarmless(detail::UnicodeText::takeFirst(text))) {
            return false;
        }
    }
    return true;
}

/// One pass over a text.
class Decoder {
public:
    Decoder(std::string_view text, std::uint8_t* output) noexcept
        : place_(detail::bytesOf(text).data()), end_(place_ + text.size()), output_(output) {}

    /// Decodes the digits up to the padding or the end.
    void decodeDigits() noexcept {
        while (true) {
            if (digitCount_ == 0) {
                decodeCleanGroups();
            }
            if (place_ == end_ || *place_ == padding) {
                return;
            }
            takeByte();
        }
    }

    /// Counts the padding that ends the text; nothing if a digit follows it.
    std::optional<int> countPadding() noexcept {
        int count = 0;
        for (; place_ != end_; ++place_) {
            if (*place_ == padding) {
                ++count;
            } else if (fourthDigit[*place_] != noDigit) {
                return std::nullopt;
            }
        }
        return count;
    }

    /// The digits of the last group, which is not whole: 0 to 3.
    int digitCount() const noexcept { return digitCount_; }

    /// Writes the whole bytes of the last group and returns the end of the output.
    std::uint8_t* finish() noexcept {
        put(group_ << 6 * (4 - digitCount_), output_);
        return output_ + (digitCount_ == 0 ? 0 : digitCount_ - 1);
    }

private:
    /// Decodes groups of four digits as long as nothing else stands between them.
    void decodeCleanGroups() noexcept {
        while (end_ - place_ >= 4) {
            const std::uint32_t group = groupAt(place_);
            if (group >= noDigit) {
                return;
            }
            output_ = put(group, output_);
            place_ += 4;
        }
    }

    void takeByte() noexcept {
        const std::uint32_t value = fourthDigit[*place_++];
        if (value == noDigit) {
            return;
        }
        group_ = group_ << 6 | value;
        if (++digitCount_ == 4) {
            output_ = put(group_, output_);
            digitCount_ = 0;
            group_ = 0;
        }
    }

    const std::uint8_t* place_;
    const std::uint8_t* end_;
    std::uint8_t* output_;
    std::uint32_t group_ = 0;
    int digitCount_ = 0;
};

}  // namespace

std::uint8_t* encode(std::span<const std::uint8_t> bytes, std::uint8_t* output) noexcept {
    while (bytes.size() >= 3) {
        const std::size_t group =
            std::size_t{bytes[0]} << 16 | std::size_t{bytes[1]} << 8 | bytes[2];
        std::memcpy(output, digitPairs[group >> 12].data(), 2);
        std::memcpy(output + 2, digitPairs[group & 0xFFF].data(), 2);
        output += 4;
        bytes = bytes.subspan(3);
    }
    if (bytes.empty()) {
        return output;
    }
    const std::size_t second = bytes.size() == 2 ? bytes[1] : 0;
    const std::size_t group = std::size_t{bytes[0]} << 16 | second << 8;
    std::memcpy(output, digitPairs[group >> 12].data(), 2);
    std::memcpy(output + 2, digitPairs[group & 0xFFF].data(), 2);
    std::fill(output + 1 + bytes.size(), output + 4, static_cast<std::uint8_t>(padding));
    return output + 4;
}

std::string encoded(std::span<const std::uint8_t> bytes) {
    std::string text(encodedLength(bytes.size()), '\0');
    encode(bytes, reinterpret_cast<std::uint8_t*>(text.data()));
    return text;
}

std::optional<std::size_t> decode(std::string_view text, std::uint8_t* output) noexcept {
    Decoder decoder(text, output);
    decoder.decodeDigits();
    const int digits = decoder.digitCount();
    const int neededPadding = digits == 0 ? 0 : 4 - digits;
    const std::optional<int> foundPadding = decoder.countPadding();
    if (!foundPadding || digits == 1 || *foundPadding > neededPadding) {
        return std::nullopt;
    }
    if (*foundPadding < neededPadding && !isHarmless(text)) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(decoder.finish() - output);
}

}  // namespace Base64

}  // namespace plist
