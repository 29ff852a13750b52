#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "PlistCore/PlistError.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist::detail {

/// The elements of the vocabulary.
enum class XMLElement : std::uint8_t {
    plist,
    dict,
    array,
    key,
    string,
    integer,
    real,
    trueElement,
    falseElement,
    date,
    data,
};

/// The name of an element in a file.
std::string_view elementName(XMLElement element);

/// Steps through the bytes of an XML property list: misc content, tags, texts and references. Knows
/// nothing of values.
///
/// Every operation starts at `position` and moves it past what it took. Failures are
/// `PlistError`s with a byte offset.
class XMLScanner {
public:
    /// A start tag, with the offset of its "<".
    struct StartTag {
        XMLElement element;
        bool isSelfClosing;
        std::size_t offset;
    };

    /// `input` must outlive the scanner.
    explicit XMLScanner(std::string_view input) : input_(input) {}

    std::string_view input() const noexcept { return input_; }
    std::size_t position() const noexcept { return position_; }
    void moveTo(std::size_t position) noexcept { position_ = position; }

    bool isAtEnd() const noexcept { return position_ == input_.size(); }
    bool isAt(std::string_view text) const noexcept {
        return input_.substr(position_, text.size()) == text;
    }

    /// Skips the whitespace of XML: space, tab, line feed and carriage return.
    void skipBlanks() noexcept;

    /// Skips whitespace, comments, processing instructions and document type declarations.
    void skipMisc();

    /// Takes any start tag of the vocabulary; its attributes are skipped.
    StartTag readStartTag();

    /// Takes the end tag of `element`.
    void readEndTag(XMLElement element);

    /// Takes text up to the end tag of `element`, and that end tag: references are resolved, CDATA
    /// sections copied, comments left out. The result is valid UTF-8; it lies in the input where
    /// that is possible, else in `buffer`.
    std::string_view readText(XMLElement element, std::string& buffer);

    /// Whether a piece of the input between two ASCII bytes or its ends is valid UTF-8. The input
    /// is checked in windows ahead of the scanner, which costs a fraction of checking each text.
    bool isValidUtf8(std::string_view piece) {
        const std::size_t end =
            static_cast<std::size_t>(piece.data() - input_.data()) + piece.size();
        return end <= validEnd_ || checkUpTo(end) || UnicodeText::isValidUtf8(piece);
    }

    [[noreturn]] void failAt(std::size_t offset, PlistError::Reason reason) const;
    [[noreturn]] void failMalformed(std::size_t offset, std::string text) const;
    [[noreturn]] void failAtEnd() const;

private:
    /// Moves past the next `terminator`, searched for from `start` on.
    void skipPast(std::string_view terminator, std::size_t start);
    void skipDoctype();
    std::string_view readName() noexcept;
    bool checkUpTo(std::size_t end);
    /// Where the next "<" or "&" stands, or the end of the input.
    std::size_t nextMarkup(std::size_t start) const noexcept;
    void readTextPieces(std::string& buffer);
    void readReference(std::string& buffer);

    std::string_view input_;
    std::size_t position_ = 0;
    /// The input up to here is valid UTF-8, and no character runs over it.
    std::size_t validEnd_ = 0;
    bool isBroken_ = false;
};

}  // namespace plist::detail
