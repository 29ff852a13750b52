#include "tests/PlistCore/support/CanonicalDump.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "PlistCore/text/UnicodeText.h"

namespace plist {

namespace {

/// The parts of JSON that the dumps are made of, without whitespace between them.
class JsonScanner {
public:
    explicit JsonScanner(std::string_view json) : json_(json) {}

    bool isAtEnd() const { return json_.find_first_not_of(" \n", position_) == json_.npos; }

    bool accept(std::string_view text) {
        if (json_.substr(position_, text.size()) != text) {
            return false;
        }
        position_ += text.size();
        return true;
    }

    void expect(std::string_view text) {
        if (!accept(text)) {
            fail("expected " + std::string(text));
        }
    }

    std::string readString() {
        expect("\"");
        std::string text;
        while (!accept("\"")) {
            if (accept("\\")) {
                readEscape(text);
            } else {
                text += readByte();
            }
        }
        return text;
    }

    double readNumber() {
        double number = 0;
        const char* start = json_.data() + position_;
        const auto [end, error] = std::from_chars(start, json_.data() + json_.size(), number);
        if (error != std::errc()) {
            fail("expected a number");
        }
        position_ += static_cast<std::size_t>(end - start);
        return number;
    }

    [[noreturn]] void fail(const std::string& problem) const {
        throw std::runtime_error("dump, byte " + std::to_string(position_) + ": " + problem);
    }

private:
    char readByte() {
        if (position_ >= json_.size()) {
            fail("unexpected end");
        }
        return json_[position_++];
    }

    void readEscape(std::string& text) {
        const char name = readByte();
        if (name == 'u') {
            detail::UnicodeText::appendUtf8(text, readCharacter());
            return;
        }
        constexpr std::string_view names = "bfnrt";
        constexpr std::string_view characters = "\b\f\n\r\t";
        const std::size_t index = names.find(name);
        text += index == std::string_view::npos ? name : characters[index];
    }

    char32_t readCharacter() {
        const std::uint32_t unit = readCodeUnit();
        if (unit < 0xD800 || unit > 0xDBFF) {
            return unit;
        }
        expect("\\u");
        return 0x10000 + ((unit - 0xD800) << 10) + (readCodeUnit() - 0xDC00);
    }

    std::uint32_t readCodeUnit() {
        std::uint32_t unit = 0;
        const std::string_view digits = json_.substr(position_, 4);
        std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
        position_ += digits.size();
        return unit;
    }

    std::string_view json_;
    std::size_t position_ = 0;
};

std::vector<std::uint8_t> decodeBase64(std::string_view text) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::vector<std::uint8_t> bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char letter : text.substr(0, text.find('='))) {
        bits = (bits << 6) | static_cast<std::uint32_t>(alphabet.find(letter));
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<std::uint8_t>(bits >> count));
        }
    }
    return bytes;
}

PlistInteger parseDecimal(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    PlistInteger number = 0;
    for (const char digit : text.substr(isNegative ? 1 : 0)) {
        number = number * 10 + (digit - '0');
    }
    return isNegative ? -number : number;
}

/// "0x1.8p+1", "-inf", "nan": whatever C's "%a" writes, in any locale.
double parseHexadecimalReal(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative ? 1 : 0);
    text.remove_prefix(text.starts_with("0x") ? 2 : 0);
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::hex);
    return isNegative ? -number : number;
}

class DumpReader {
public:
    explicit DumpReader(std::string_view json) : scanner_(json) {}

    PlistValue read() {
        readNode();
        while (!frames_.empty()) {
            continueContainer();
        }
        if (!scanner_.isAtEnd()) {
            scanner_.fail("unexpected content");
        }
        return *result_;
    }

private:
    struct Frame {
        PlistType type;
        std::vector<PlistString> keys;
        std::vector<PlistValue> values;
    };

    /// A scalar, or the start of a container.
    void readNode() {
        scanner_.expect("{\"t\":");
        const std::string type = scanner_.readString();
        scanner_.expect(",\"v\":");
        if (type == "dict" || type == "array") {
            scanner_.expect("[");
            frames_.push_back({type == "dict" ? PlistType::dictionary : PlistType::array, {}, {}});
        } else {
            finish(readScalar(type));
        }
    }

    void continueContainer() {
        Frame& frame = frames_.back();
        if (scanner_.accept("]")) {
            Frame finished = std::move(frame);
            frames_.pop_back();
            finish(
                finished.type == PlistType::array
                    ? PlistValue::array(std::move(finished.values))
                    : PlistValue::dictionary(std::move(finished.keys), std::move(finished.values)));
            return;
        }
        if (!frame.values.empty()) {
            scanner_.expect(",");
        }
        if (frame.type == PlistType::dictionary) {
            scanner_.expect("[");
            frame.keys.emplace_back(scanner_.readString());
            scanner_.expect(",");
        }
        readNode();
    }

    void finish(PlistValue value) {
        scanner_.expect("}");
        if (frames_.empty()) {
            result_ = std::move(value);
            return;
        }
        frames_.back().values.push_back(std::move(value));
        if (frames_.back().type == PlistType::dictionary) {
            scanner_.expect("]");
        }
    }

    PlistValue readScalar(const std::string& type) {
        if (type == "boolean") {
            const bool truth = scanner_.accept("true");
            if (!truth) {
                scanner_.expect("false");
            }
            return PlistValue::boolean(truth);
        }
        if (type == "date") {
            return PlistValue::date(scanner_.readNumber());
        }
        const std::string text = scanner_.readString();
        if (type == "string") {
            return PlistValue::string(text);
        }
        if (type == "integer") {
            return PlistValue::integer(parseDecimal(text));
        }
        if (type == "real") {
            return PlistValue::real(parseHexadecimalReal(text));
        }
        if (type == "data") {
            return PlistValue::data(decodeBase64(text));
        }
        if (type == "uid") {
            return PlistValue::uid(static_cast<std::uint64_t>(parseDecimal(text)));
        }
        scanner_.fail("unknown type " + type);
    }

    JsonScanner scanner_;
    std::vector<Frame> frames_;
    std::optional<PlistValue> result_;
};

}  // namespace

PlistValue CanonicalDump::read(std::string_view json) {
    return DumpReader(json).read();
}

}  // namespace plist
