#include "PlistCore/xml/XMLPlistSerializer.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "PlistCore/Base64.h"
#include "PlistCore/PlistDate.h"
#include "PlistCore/PlistString.h"
#include "PlistCore/value/PlistCell.h"
#include "PlistCore/value/PlistWalk.h"
#include "PlistCore/xml/XMLEscaping.h"

namespace plist::detail {

namespace {

constexpr std::string_view prologue =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
static_assert(prologue.size() == 164);

constexpr std::string_view epilogue = "</plist>\n";

/// Room for everything on a line but its indentation and a text of variable length: the longest
/// pair of tags, the longest number, and what block-wise copies write too far.
constexpr std::size_t lineRoom = 128;

/// Texts up to this size are written with one reservation; longer ones piece by piece, because
/// room for the worst case, a text of ampersands, would be five times the text.
constexpr std::size_t pieceSize = 1024;

/// Indentation up to here is written as one block of fixed size, whatever its depth.
constexpr std::size_t shallowIndent = 16;

/// The width rule of data: a line of at most 76 columns, of which each tab takes eight, and at most
/// eight tabs.
constexpr std::size_t dataColumns = 76;
constexpr std::size_t tabColumns = 8;
constexpr std::size_t mostDataTabs = 8;

/// Below this magnitude every whole double is printed digit by digit by "%.17g" as well.
constexpr double wholeNumberLimit = 1e17;

template <std::size_t size>
char* put(const char (&literal)[size], char* out) noexcept {
    std::memcpy(out, literal, size - 1);
    return out + size - 1;
}

template <typename Number>
char* putNumber(Number number, char* out) noexcept {
    return std::to_chars(out, out + lineRoom, number).ptr;
}

char* putInteger(const PlistCell& cell, char* out) noexcept {
    if (cell.has(PlistCell::unsignedNumber)) {
        return putNumber(cell.word(), out);
    }
    return putNumber(static_cast<std::int64_t>(cell.word()), out);
}

char* putReal(double number, char* out) noexcept {
    if (std::isnan(number)) {
        return put("nan", out);
    }
    if (std::isinf(number)) {
        return number > 0 ? put("+infinity", out) : put("-infinity", out);
    }
    if (number == 0) {
        return put("0.0", out);
    }
    if (std::abs(number) < wholeNumberLimit) {
        const auto whole = static_cast<std::int64_t>(number);
        if (static_cast<double>(whole) == number) {
            return putNumber(whole, out);
        }
    }
    // The same text as C's "%.17g", without its dependence on the locale.
    return std::to_chars(out, out + lineRoom, number, std::chars_format::general, 17).ptr;
}

class Writer {
public:
    explicit Writer(std::size_t maximumBytes) { bytes_.limitTo(maximumBytes); }

    PlistBytes write(const PlistValue& root);

private:
    void writeValue(const PlistValue& value);
    void writeKey(const PlistString& key);
    void writeScalar(const PlistValue& value);
    void openContainer(const PlistValue& container);
    void closeContainer();
    void writeString(const PlistCell& cell);
    void writeData(std::span<const std::uint8_t> bytes);
    void writeUid(std::uint64_t number);

    char* beginLine(std::size_t room) { return beginLine(room, walk_.depth()); }
    char* beginLine(std::size_t room, std::size_t indent);
    void take(char* out);
    void writeLine(std::string_view text);
    template <std::size_t opening, std::size_t closing>
    void writeTextLine(const char (&open)[opening], const PlistCell& text,
                       const char (&close)[closing]);
    void writeLongText(std::string_view text);

    PlistBytes bytes_;
    PlistWalk<const PlistString*> walk_;  ///< with the next key, which is null in an array
};

PlistBytes Writer::write(const PlistValue& root) {
    bytes_.append(prologue);
    writeValue(root);
    while (!walk_.isAtEnd()) {
        const PlistValue* const value = walk_.next();
        if (value == nullptr) {
            closeContainer();
            continue;
        }
        if (const PlistString*& nextKey = walk_.note(); nextKey != nullptr) {
            writeKey(*nextKey++);
        }
        writeValue(*value);
    }
    bytes_.append(epilogue);
    return std::move(bytes_);
}

void Writer::writeValue(const PlistValue& value) {
    if (value.isContainer()) {
        openContainer(value);
    } else {
        writeScalar(value);
    }
}

void Writer::writeKey(const PlistString& key) {
    writeTextLine("<key>", key.cell(), "</key>\n");
}

void Writer::writeString(const PlistCell& cell) {
    writeTextLine("<string>", cell, "</string>\n");
}

void Writer::openContainer(const PlistValue& container) {
    const bool isDictionary = container.type() == PlistType::dictionary;
    if (container.cell().length() == 0) {
        writeLine(isDictionary ? "<dict/>\n" : "<array/>\n");
        return;
    }
    writeLine(isDictionary ? "<dict>\n" : "<array>\n");
    walk_.enter(container, isDictionary ? container.cell().keys().data() : nullptr);
}

void Writer::closeContainer() {
    const bool isDictionary = walk_.leave() != nullptr;
    writeLine(isDictionary ? "</dict>\n" : "</array>\n");
}

void Writer::writeScalar(const PlistValue& value) {
    const PlistCell& cell = value.cell();
    switch (cell.type()) {
        case PlistType::string:
            writeString(cell);
            break;
        case PlistType::integer: {
            char* out = put("<integer>", beginLine(lineRoom));
            take(put("</integer>\n", putInteger(cell, out)));
            break;
        }
        case PlistType::real: {
            char* out = put("<real>", beginLine(lineRoom));
            take(put("</real>\n", putReal(std::bit_cast<double>(cell.word()), out)));
            break;
        }
        case PlistType::boolean:
            writeLine(cell.word() != 0 ? "<true/>\n" : "<false/>\n");
            break;
        case PlistType::date: {
            const std::string text = PlistDate::formatDate(std::bit_cast<double>(cell.word()));
            char* out = put("<date>", beginLine(lineRoom));
            out = std::copy(text.begin(), text.end(), out);
            take(put("</date>\n", out));
            break;
        }
        case PlistType::data:
            writeData(value.dataValue());
            break;
        case PlistType::uid:
            writeUid(cell.word());
            break;
        case PlistType::dictionary:
        case PlistType::array:
            break;
    }
}

/// A uid stands in XML as a dictionary of one entry.
void Writer::writeUid(std::uint64_t number) {
    writeLine("<dict>\n");
    const std::size_t inner = walk_.depth() + 1;
    take(put("<key>CF$UID</key>\n", beginLine(lineRoom, inner)));
    char* out = put("<integer>", beginLine(lineRoom, inner));
    take(put("</integer>\n", putNumber(number, out)));
    writeLine("</dict>\n");
}

void Writer::writeData(std::span<const std::uint8_t> bytes) {
    writeLine("<data>\n");
    const std::size_t tabs = std::min(walk_.depth(), mostDataTabs);
    const std::size_t bytesPerLine = (dataColumns - tabColumns * tabs) / 4 * 3;
    while (!bytes.empty()) {
        const std::span<const std::uint8_t> piece =
            bytes.first(std::min(bytesPerLine, bytes.size()));
        char* out = beginLine(lineRoom, tabs);
        out += Base64::encode(piece, reinterpret_cast<std::uint8_t*>(out)) -
               reinterpret_cast<std::uint8_t*>(out);
        *out++ = '\n';
        take(out);
        bytes = bytes.subspan(piece.size());
    }
    writeLine("</data>\n");
}

template <std::size_t opening, std::size_t closing>
void Writer::writeTextLine(const char (&open)[opening], const PlistCell& text,
                           const char (&close)[closing]) {
    char* out = nullptr;
    if (!text.has(PlistCell::outOfLine)) {
        out = put(open, beginLine(lineRoom + XMLEscaping::growth * PlistCell::inPlaceCapacity));
        out = XMLEscaping::writeInPlace(text, out);
    } else if (text.length() <= pieceSize) {
        out = put(open, beginLine(lineRoom + XMLEscaping::growth * text.length()));
        out = XMLEscaping::write(text.bytes(), out);
    } else {
        take(put(open, beginLine(lineRoom)));
        writeLongText(text.bytes());
        out = reinterpret_cast<char*>(bytes_.reserve(lineRoom));
    }
    take(put(close, out));
}

void Writer::writeLongText(std::string_view text) {
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, pieceSize);
        char* out = reinterpret_cast<char*>(
            bytes_.reserve(XMLEscaping::growth * piece.size() + XMLEscaping::slack));
        take(XMLEscaping::write(piece, out));
        text.remove_prefix(piece.size());
    }
}

void Writer::writeLine(std::string_view text) {
    take(std::copy(text.begin(), text.end(), beginLine(lineRoom)));
}

/// Makes room for a line, writes its indentation and returns the place after it.
char* Writer::beginLine(std::size_t room, std::size_t indent) {
    char* out = reinterpret_cast<char*>(bytes_.reserve(indent + room));
    std::memset(out, '\t', shallowIndent);
    if (indent > shallowIndent) {
        std::memset(out + shallowIndent, '\t', indent - shallowIndent);
    }
    return out + indent;
}

/// Takes what was written up to `out` into the buffer.
void Writer::take(char* out) {
    const std::uint8_t* const start = bytes_.data() + bytes_.size();
    bytes_.advance(static_cast<std::size_t>(reinterpret_cast<std::uint8_t*>(out) - start));
}

}  // namespace

namespace XMLPlistSerializer {

PlistBytes serialize(const PlistValue& value, std::size_t maximumBytes) {
    return Writer(maximumBytes).write(value);
}

}  // namespace XMLPlistSerializer

}  // namespace plist::detail
