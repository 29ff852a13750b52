#include "PlistCore/PlistCodec.h"

#include <optional>
#include <string>

#include "PlistCore/PlistError.h"
#include "PlistCore/PlistExpansion.h"
#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "PlistCore/memory/ByteView.h"
#include "PlistCore/openstep/OpenStepPlistParser.h"
#include "PlistCore/text/TextEncoding.h"
#include "PlistCore/text/UnicodeText.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "PlistCore/xml/XMLPlistSerializer.h"

namespace plist {

namespace {

static_assert(detail::BinaryPlistParser::nestingLimit == PlistCodec::maximumDepth);
static_assert(detail::OpenStepPlistParser::nestingLimit == PlistCodec::maximumDepth);
static_assert(detail::XMLPlistParser::nestingLimit == PlistCodec::maximumDepth);

constexpr std::string_view binaryStart = "bplist00";

/// The first byte that tells text forms apart. Whitespace and the bytes of the UTF-8 byte-order
/// mark, in any order and number, tell nothing; throws if there is nothing else.
char firstTellingByte(std::string_view text) {
    const std::size_t found = text.find_first_not_of("\t\n\r \xEF\xBB\xBF");
    if (found == std::string_view::npos) {
        throw PlistError(PlistError::UnrecognizedFormat{});
    }
    return text[found];
}

PlistFile readXml(std::span<const std::uint8_t> bytes) {
    return {detail::XMLPlistParser::parse(bytes), PlistFormat::xml};
}

/// XML in whatever encoding its declaration names.
PlistFile readDeclaredXml(std::span<const std::uint8_t> bytes) {
    if (!detail::XMLPlistParser::acceptsEncoding(bytes)) {
        const std::optional<std::string> encoding = detail::TextEncoding::declaredEncoding(bytes);
        if (encoding && !detail::TextEncoding::contradictsDeclaration(bytes, *encoding)) {
            return readXml(detail::bytesOf(detail::TextEncoding::toUtf8(bytes, *encoding)));
        }
    }
    return readXml(bytes);
}

PlistFile readOpenStep(std::string_view text) {
    if (!detail::UnicodeText::isValidUtf8(text)) {
        // Old files in a character set of one byte do not say which one. A guess would quietly
        // show, and save, wrong letters.
        throw PlistError(PlistError::Malformed{"The text is not valid UTF-8."});
    }
    return {detail::OpenStepPlistParser::parse(text), PlistFormat::openStep};
}

/// Text that was UTF-16 or UTF-32, whatever encoding its declaration names.
PlistFile readConverted(std::string_view text) {
    return firstTellingByte(text) == '<' ? readXml(detail::bytesOf(text)) : readOpenStep(text);
}

void checkWrittenValues(const PlistValue& value, std::uint64_t limit) {
    if (PlistExpansion::exceeds({&value, 1}, limit)) {
        throw PlistError(PlistError::InvalidValue{"The document describes more than " +
                                                  std::to_string(limit) +
                                                  " values when written out."});
    }
}

PlistBytes writtenWithinLimit(const PlistValue& value, PlistFormat format,
                              const PlistCodec::WriteOptions& options) {
    using detail::BinaryPlistSerializer::EqualTexts;
    const EqualTexts equalTexts =
        options.keepsSpellings ? EqualTexts::identical : EqualTexts::equivalent;
    const std::size_t limit = options.maximumBytes;
    PlistBytes bytes = format == PlistFormat::binary
                           ? detail::BinaryPlistSerializer::serialize(value, equalTexts, limit)
                           : detail::XMLPlistSerializer::serialize(value, limit);
    if (bytes.size() > limit) {
        throw PlistBytes::LimitReached();
    }
    bytes.limitTo(std::numeric_limits<std::size_t>::max());
    return bytes;
}

/// What `work` gives, or the error it throws.
template <typename Work>
auto attempted(const Work& work) -> PlistResult<decltype(work())> {
    try {
        return work();
    } catch (const PlistError& error) {
        return error;
    }
}

}  // namespace

PlistFile PlistCodec::read(std::span<const std::uint8_t> bytes) {
    const std::string_view text = detail::charactersOf(bytes);
    if (text.starts_with(binaryStart)) {
        return {detail::BinaryPlistParser::parse(bytes), PlistFormat::binary};
    }
    if (const std::optional<std::string_view> encoding =
            detail::TextEncoding::wideEncoding(bytes)) {
        return readConverted(detail::TextEncoding::toUtf8(bytes, *encoding));
    }
    return firstTellingByte(text) == '<' ? readDeclaredXml(bytes) : readOpenStep(text);
}

PlistFile PlistCodec::read(std::string_view bytes) {
    return read(detail::bytesOf(bytes));
}

PlistBytes PlistCodec::write(const PlistValue& value, PlistFormat format,
                             const WriteOptions& options) {
    if (!isWritable(format)) {
        throw PlistError(PlistError::NotWritable{format});
    }
    checkWrittenValues(value, options.maximumValues);
    try {
        return writtenWithinLimit(value, format, options);
    } catch (const PlistBytes::LimitReached&) {
        throw PlistError(PlistError::InvalidValue{"The document takes more than " +
                                                  std::to_string(options.maximumBytes) +
                                                  " bytes when written out."});
    }
}

PlistResult<PlistFile> PlistCodec::tryRead(std::span<const std::uint8_t> bytes) {
    return attempted([bytes] { return read(bytes); });
}

PlistResult<PlistFile> PlistCodec::tryRead(std::string_view bytes) {
    return tryRead(detail::bytesOf(bytes));
}

PlistResult<PlistBytes> PlistCodec::tryWrite(const PlistValue& value, PlistFormat format,
                                             const WriteOptions& options) {
    return attempted([&value, format, &options] { return write(value, format, options); });
}

}  // namespace plist
