#include "PlistCore/text/TextEncoding.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>

#include "PlistCore/PlistError.h"
#include "PlistCore/memory/ByteView.h"
#include "PlistCore/text/Ascii.h"
#include "PlistCore/text/CommonEncodings.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist::detail {

namespace {

constexpr std::string_view declarationStart = "<?xml";

[[noreturn]] void failUnsupported(std::string_view encoding) {
    throw PlistError(PlistError::Malformed{"The text encoding “" + std::string(encoding) +
                                           "” is not supported."});
}

/// The byte order is left out of the name: it is not what is wrong.
[[noreturn]] void failInvalid(std::string_view encoding) {
    const bool isWide = encoding.starts_with("UTF-16") || encoding.starts_with("UTF-32");
    if (isWide && (encoding.ends_with("LE") || encoding.ends_with("BE"))) {
        encoding.remove_suffix(2);
    }
    throw PlistError(PlistError::Malformed{"The text is not valid " + std::string(encoding) + "."});
}

/// Whether `encoding` looks like the name of a character set. The C library gives other texts a
/// meaning of their own: the empty one is the locale's set, and "//" starts options.
bool isName(std::string_view encoding) {
    return !encoding.empty() && Ascii::isLetter(encoding.front()) &&
           std::all_of(encoding.begin(), encoding.end(), [](char byte) {
               return Ascii::isLetter(byte) || Ascii::isDigit(byte) ||
                      std::string_view("-_.:+").find(byte) != std::string_view::npos;
           });
}

/// A conversion to UTF-8 that stops at the first thing that is broken: our own for the common
/// encodings, the C library's for any other.
class Converter {
public:
    explicit Converter(std::string_view encoding)
        : decoder_(CommonEncodings::decoderOf(encoding)),
          descriptor_(decoder_ == nullptr && isName(encoding)
                          ? iconv_open("UTF-8", std::string(encoding).c_str())
                          : invalidDescriptor()) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (descriptor_ != invalidDescriptor()) {
            iconv_close(descriptor_);
        }
    }

    bool isSupported() const { return decoder_ != nullptr || descriptor_ != invalidDescriptor(); }

    /// The text as UTF-8, or nothing if it is not valid.
    std::optional<std::string> convert(std::string_view text) {
        return decoder_ != nullptr ? decoder_(text) : convertByLibrary(text);
    }

private:
    std::optional<std::string> convertByLibrary(std::string_view text) {
        std::string converted;
        // The C library takes a pointer to variable bytes, which it does not change.
        char* next = const_cast<char*>(text.data());
        std::size_t left = text.size();
        if (!convertAll(&next, &left, converted) || left != 0) {
            return std::nullopt;
        }
        // A stateful encoding may hold something back until it is told that this was all.
        if (!convertAll(nullptr, nullptr, converted) || !UnicodeText::isValidUtf8(converted)) {
            return std::nullopt;
        }
        return converted;
    }

    static iconv_t invalidDescriptor() {
        return reinterpret_cast<iconv_t>(static_cast<std::intptr_t>(-1));
    }

    bool convertAll(char** next, std::size_t* left, std::string& converted) {
        std::array<char, 0x10000> buffer;
        while (true) {
            char* output = buffer.data();
            std::size_t space = buffer.size();
            const std::size_t result = iconv(descriptor_, next, left, &output, &space);
            const int problem = errno;
            converted.append(buffer.data(), buffer.size() - space);
            if (result != static_cast<std::size_t>(-1)) {
                return true;
            }
            if (problem != E2BIG) {
                return false;
            }
        }
    }

    CommonEncodings::Decoder decoder_;
    iconv_t descriptor_;
};

/// A text that begins like this is in this encoding.
struct Start {
    std::string_view bytes;
    std::string_view encoding;
};

using std::string_view_literals::operator""sv;

/// The marks of UTF-32 come first: one of them begins with a mark of UTF-16.
constexpr std::array<Start, 6> wideStarts = {{
    {"\xFF\xFE\0\0"sv, "UTF-32LE"},
    {"\0\0\xFE\xFF"sv, "UTF-32BE"},
    {"\xFF\xFE"sv, "UTF-16LE"},
    {"\xFE\xFF"sv, "UTF-16BE"},
    {"<\0?\0x\0m\0l\0"sv, "UTF-16LE"},
    {"\0<\0?\0x\0m\0l"sv, "UTF-16BE"},
}};

/// The place just after the first "encoding=" in any case, or npos.
std::size_t findEncoding(std::string_view declaration) {
    constexpr std::string_view name = "encoding=";
    const auto found =
        std::search(declaration.begin(), declaration.end(), name.begin(), name.end(),
                    [](char byte, char wanted) { return Ascii::lowerCased(byte) == wanted; });
    if (found == declaration.end()) {
        return std::string_view::npos;
    }
    return static_cast<std::size_t>(found - declaration.begin()) + name.size();
}

/// `text` without its first character, of however many bytes.
std::string_view withoutFirstCharacter(std::string_view text) {
    std::size_t length = std::min<std::size_t>(1, text.size());
    while (length < text.size() && (static_cast<std::uint8_t>(text[length]) & 0xC0) == 0x80) {
        ++length;
    }
    return text.substr(length);
}

}  // namespace

std::optional<std::string_view> TextEncoding::wideEncoding(std::span<const std::uint8_t> bytes) {
    for (const Start& start : wideStarts) {
        if (charactersOf(bytes).starts_with(start.bytes)) {
            return start.encoding;
        }
    }
    return std::nullopt;
}

std::optional<std::string> TextEncoding::declaredEncoding(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t searchedBytes = 256;
    std::string_view text = charactersOf(bytes).substr(0, searchedBytes);
    if (text.starts_with(utf8Mark)) {
        text.remove_prefix(utf8Mark.size());
    }
    if (!text.starts_with(declarationStart)) {
        return std::nullopt;
    }
    const std::string_view declaration = text.substr(0, text.find("?>"));
    const std::size_t found = findEncoding(declaration);
    if (found == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view value = withoutFirstCharacter(declaration.substr(found));
    return UnicodeText::mended(value.substr(0, value.find_first_of("\"'")));
}

bool TextEncoding::contradictsDeclaration(std::span<const std::uint8_t> bytes,
                                          std::string_view encoding) {
    if (charactersOf(bytes).starts_with(utf8Mark)) {
        return true;
    }
    Converter converter(encoding);
    return converter.isSupported() && converter.convert(declarationStart) != declarationStart;
}

std::string TextEncoding::toUtf8(std::span<const std::uint8_t> bytes, std::string_view encoding) {
    Converter converter(encoding);
    if (!converter.isSupported()) {
        failUnsupported(encoding);
    }
    std::optional<std::string> text = converter.convert(charactersOf(bytes));
    if (!text) {
        failInvalid(encoding);
    }
    return *std::move(text);
}

}  // namespace plist::detail
