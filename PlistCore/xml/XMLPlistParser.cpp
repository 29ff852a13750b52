#include "PlistCore/xml/XMLPlistParser.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "PlistCore/Base64.h"
#include "PlistCore/PlistDate.h"
#include "PlistCore/PlistError.h"
#include "PlistCore/PlistText.h"
#include "PlistCore/memory/ByteView.h"
#include "PlistCore/text/Ascii.h"
#include "PlistCore/text/TextEncoding.h"
#include "PlistCore/text/UnicodeText.h"
#include "PlistCore/value/PlistCell.h"
#include "PlistCore/xml/XMLFastPath.h"
#include "PlistCore/xml/XMLScanner.h"
#include "PlistCore/xml/XMLTreeBuilder.h"

namespace plist::detail {

namespace {

static_assert(XMLPlistParser::nestingLimit == XMLTreeBuilder::depthLimit);

/// One reading of one document. Everything is located by byte offset.
class Reader {
public:
    Reader(std::string_view input, XMLPlistParser::Paths paths)
        : scanner_(input),
          tree_(input.size()),
          fastPath_(scanner_, tree_),
          isFastPathTaken_(paths == XMLPlistParser::Paths::fastAndPlain) {}

    PlistValue read() {
        if (scanner_.isAt(TextEncoding::utf8Mark)) {
            scanner_.moveTo(TextEncoding::utf8Mark.size());
        }
        scanner_.skipMisc();
        const StartTag tag = scanner_.readStartTag();
        if (tag.element == XMLElement::plist) {
            readWrapped(tag);
        } else {
            readRoot(tag);
        }
        scanner_.skipMisc();
        if (!scanner_.isAtEnd()) {
            scanner_.failMalformed(scanner_.position(), "Unexpected content after the root value.");
        }
        return tree_.finish();
    }

private:
    using StartTag = XMLScanner::StartTag;

    void readWrapped(const StartTag& wrapper) {
        if (wrapper.isSelfClosing) {
            scanner_.failMalformed(wrapper.offset, "The <plist> element is empty.");
        }
        scanner_.skipMisc();
        readRoot(scanner_.readStartTag());
        scanner_.skipMisc();
        scanner_.readEndTag(XMLElement::plist);
    }

    void readRoot(const StartTag& tag) {
        readValue(tag);
        while (tree_.isOpen()) {
            if (isFastPathTaken_) {
                fastPath_.run();
            }
            if (tree_.isOpen()) {
                readNext();
            }
        }
    }

    /// Reads what comes next in an open container: its end, a key or a value.
    void readNext() {
        scanner_.skipMisc();
        if (scanner_.isAtEnd()) {
            scanner_.failAtEnd();
        }
        if (scanner_.isAt("</")) {
            closeContainer();
        } else if (tree_.awaitsKey()) {
            readKey();
        } else {
            readValue(scanner_.readStartTag());
        }
    }

    void closeContainer() {
        if (!tree_.isInDictionary()) {
            scanner_.readEndTag(XMLElement::array);
            tree_.closeArray();
            return;
        }
        if (!tree_.awaitsKey()) {
            scanner_.failMalformed(
                scanner_.position(),
                "The key “" + std::string(tree_.pendingKey()) + "” has no value.");
        }
        scanner_.readEndTag(XMLElement::dict);
        tree_.closeDictionary();
    }

    void readKey() {
        if (!scanner_.isAt("<")) {
            scanner_.failMalformed(scanner_.position(), "Expected <key>.");
        }
        const StartTag tag = scanner_.readStartTag();
        if (tag.element != XMLElement::key) {
            scanner_.failMalformed(tag.offset, "Expected <key>, found <" +
                                                   std::string(elementName(tag.element)) + ">.");
        }
        const std::string_view key = readText(tag);
        tree_.addKey(key, asciiFlag(key));
    }

    void readValue(const StartTag& tag) {
        switch (tag.element) {
            case XMLElement::plist:
                scanner_.failMalformed(tag.offset, "<plist> cannot be nested.");
            case XMLElement::key:
                scanner_.failMalformed(tag.offset, "<key> is only allowed inside <dict>.");
            case XMLElement::dict:
            case XMLElement::array:
                openContainer(tag);
                break;
            case XMLElement::string:
                addString(readText(tag));
                break;
            case XMLElement::integer:
                addInteger(tag);
                break;
            case XMLElement::real:
                addReal(tag);
                break;
            case XMLElement::trueElement:
            case XMLElement::falseElement:
                addBoolean(tag);
                break;
            case XMLElement::date:
                addDate(tag);
                break;
            case XMLElement::data:
                addData(tag);
                break;
        }
    }

    void openContainer(const StartTag& tag) {
        const bool isDictionary = tag.element == XMLElement::dict;
        if (tag.isSelfClosing) {
            const PlistType type = isDictionary ? PlistType::dictionary : PlistType::array;
            tree_.add(PlistCell(type, 0, 0));
            return;
        }
        if (!tree_.canOpen()) {
            scanner_.failAt(scanner_.position(),
                            PlistError::NestingTooDeep{XMLPlistParser::nestingLimit});
        }
        if (isDictionary) {
            tree_.openDictionary();
        } else {
            tree_.openArray();
        }
    }

    void addString(std::string_view text) {
        tree_.add(tree_.scalars().string(text, asciiFlag(text)));
    }

    void addInteger(const StartTag& tag) {
        const std::string_view text = readText(tag);
        const std::optional<PlistInteger> number = PlistText::parseInteger(text);
        if (!number) {
            failInvalid(tag, quoted(text) + " is not a valid integer.");
        }
        tree_.add(PlistCell::ofInteger(*number));
    }

    void addReal(const StartTag& tag) {
        const std::string_view text = readText(tag);
        const std::optional<double> number = PlistText::parseReal(text);
        if (!number) {
            failInvalid(tag, quoted(text) + " is not a valid real number.");
        }
        tree_.add(PlistCell::ofReal(*number));
    }

    void addBoolean(const StartTag& tag) {
        if (!tag.isSelfClosing) {
            scanner_.skipBlanks();
            scanner_.readEndTag(tag.element);
        }
        tree_.add(PlistCell::ofBoolean(tag.element == XMLElement::trueElement));
    }

    void addDate(const StartTag& tag) {
        const std::string_view text = readText(tag);
        const std::optional<double> date =
            PlistDate::parseDate(UnicodeText::trimmedWithLineBreaks(text));
        if (!date) {
            failInvalid(tag, quoted(text) + " is not a valid date.");
        }
        tree_.add(PlistCell::ofDate(*date));
    }

    void addData(const StartTag& tag) {
        const std::string_view text = readText(tag);
        const auto data = tree_.scalars().data(
            Base64::decodedCapacity(text.size()),
            [text](std::uint8_t* place) { return Base64::decode(text, place); });
        if (!data) {
            failInvalid(tag, "The <data> element is not valid Base64.");
        }
        tree_.add(*data);
    }

    /// The content of an element that holds text, up to and with its end tag. Valid until the next
    /// reading of text.
    std::string_view readText(const StartTag& tag) {
        return tag.isSelfClosing ? std::string_view() : scanner_.readText(tag.element, buffer_);
    }

    static std::uint8_t asciiFlag(std::string_view text) {
        return UnicodeText::isAscii(text) ? std::uint8_t{PlistCell::ascii} : std::uint8_t{0};
    }

    static std::string quoted(std::string_view text) { return "“" + std::string(text) + "”"; }

    [[noreturn]] void failInvalid(const StartTag& tag, std::string text) const {
        scanner_.failAt(tag.offset, PlistError::InvalidValue{std::move(text)});
    }

    XMLScanner scanner_;
    XMLTreeBuilder tree_;
    XMLFastPath fastPath_;
    bool isFastPathTaken_;
    std::string buffer_;
};

/// The place of a byte offset as people count. Columns count bytes; a carriage return is an
/// ordinary byte of its line.
PlistError::Line lineAt(std::uint64_t offset, std::string_view input) {
    const std::string_view before = input.substr(0, offset);
    const std::size_t feed = before.rfind('\n');
    const std::size_t lineStart = feed == std::string_view::npos ? 0 : feed + 1;
    return {1 + std::count(before.begin(), before.end(), '\n'),
            static_cast<std::int64_t>(offset - lineStart) + 1};
}

}  // namespace

bool XMLPlistParser::acceptsEncoding(std::span<const std::uint8_t> bytes) {
    const std::optional<std::string> declared = TextEncoding::declaredEncoding(bytes);
    return !declared || Ascii::isInAnyCase(*declared, "utf-8") ||
           Ascii::isInAnyCase(*declared, "utf8");
}

PlistValue XMLPlistParser::parse(std::span<const std::uint8_t> bytes, Paths paths) {
    const std::string_view input = charactersOf(bytes);
    try {
        return Reader(input, paths).read();
    } catch (const PlistError& error) {
        const auto& location = error.location();
        if (!location || !std::holds_alternative<PlistError::Offset>(*location)) {
            throw;
        }
        throw PlistError(error.reason(),
                         lineAt(std::get<PlistError::Offset>(*location).offset, input));
    }
}

}  // namespace plist::detail
