#include "benchmarks/support/GeneratedDocument.h"

#include <algorithm>
#include <span>
#include <stdexcept>
#include <vector>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "PlistCore/xml/XMLPlistSerializer.h"
#include "benchmarks/support/DocumentText.h"
#include "benchmarks/support/Random.h"
#include "benchmarks/support/Words.h"

using plist::PlistBytes;
using plist::PlistType;
using plist::PlistValue;
namespace BinaryPlistParser = plist::detail::BinaryPlistParser;
namespace BinaryPlistSerializer = plist::detail::BinaryPlistSerializer;
namespace XMLPlistParser = plist::detail::XMLPlistParser;
namespace XMLPlistSerializer = plist::detail::XMLPlistSerializer;

namespace {

/// Twenty years from 2005 on.
std::int64_t someDate(Random& random) {
    return 126'230'400 + static_cast<std::int64_t>(random.below(631'152'000));
}

/// Hundredths: what people and programs write most, and what has no short binary form.
double someReal(Random& random) {
    return static_cast<double>(random.below(1'000'000)) / 100;
}

std::vector<std::uint8_t> someBytes(Random& random, std::size_t count) {
    std::vector<std::uint8_t> bytes(count);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random.next() >> 56);
    }
    return bytes;
}

// Records

void addRecord(DocumentText& text, Random& random, std::int64_t number) {
    text.open(PlistType::dictionary);
    text.key("Identifier");
    text.integer(number);
    text.key("Name");
    text.string(Words::joined(random));
    text.key("Summary");
    text.string(Words::sentence(random, random.between(24, 100)));
    text.key("Date Added");
    text.date(someDate(random));
    text.key("Rating");
    text.real(someReal(random));
    text.key("Size");
    text.integer(static_cast<std::int64_t>(random.below(100'000'000)));
    text.key("Enabled");
    text.boolean(random.happens(70));
    text.key("Kind");
    text.string(Words::plain(random));
    text.close();
}

void addRecords(DocumentText& text, Random& random, std::size_t bytes) {
    text.open(PlistType::array);
    for (std::int64_t number = 1; text.size() < bytes; ++number) {
        addRecord(text, random, number);
    }
}

// Nested

void addScalar(DocumentText& text, Random& random) {
    const std::size_t choice = random.below(100);
    if (choice < 45) {
        text.string(Words::sentence(random, random.between(4, 40)));
    } else if (choice < 70) {
        text.integer(static_cast<std::int64_t>(random.below(100'000)));
    } else if (choice < 82) {
        text.boolean(random.happens(50));
    } else if (choice < 92) {
        text.real(someReal(random));
    } else if (choice < 97) {
        text.date(someDate(random));
    } else {
        text.data(someBytes(random, random.between(4, 48)));
    }
}

void addKeyIfNeeded(DocumentText& text, Random& random) {
    if (text.isInDictionary()) {
        text.key(Words::joined(random));
    }
}

/// Wanders up and down between depths 2 and 30, leaving values on the way.
void addNested(DocumentText& text, Random& random, std::size_t bytes) {
    text.open(PlistType::dictionary);
    std::size_t goal = 6;
    while (text.size() < bytes) {
        if (text.depth() == goal) {
            goal = random.between(2, random.happens(20) ? 30 : 12);
        }
        if (text.depth() > goal && text.childCount() > 0 && random.happens(25)) {
            text.close();
            continue;
        }
        addKeyIfNeeded(text, random);
        if (text.depth() < goal && random.happens(30)) {
            text.open(random.happens(85) ? PlistType::dictionary : PlistType::array);
        } else {
            addScalar(text, random);
        }
    }
    if (text.childCount() == 0) {
        addKeyIfNeeded(text, random);
        addScalar(text, random);
    }
}

// Strings

std::string textKey(Random& random, std::size_t number) {
    return Words::plain(random) + "." + Words::plain(random) + "." + std::to_string(number);
}

/// Most texts are short labels, some are whole sentences.
void addText(DocumentText& text, Random& random) {
    const std::size_t length = random.happens(60) ? random.between(8, 40) : random.between(40, 140);
    text.string(random.happens(30) ? Words::foreignSentence(random, length)
                                   : Words::sentence(random, length));
}

void addStrings(DocumentText& text, Random& random, std::size_t bytes) {
    text.open(PlistType::dictionary);
    for (std::size_t number = 1; text.size() < bytes; ++number) {
        text.key(textKey(random, number));
        addText(text, random);
    }
}

// Archive

/// The number of some object that has been written or soon will be.
std::uint64_t someObject(Random& random, std::size_t written) {
    return random.below(written + 8);
}

void addReferences(DocumentText& text, Random& random, std::string_view key, std::size_t count,
                   std::size_t written) {
    text.key(key);
    text.open(PlistType::array);
    for (std::size_t i = 0; i < count; ++i) {
        text.uid(someObject(random, written));
    }
    text.close();
}

void addArchivedDictionary(DocumentText& text, Random& random, std::size_t written) {
    const std::size_t count = random.between(1, 6);
    text.open(PlistType::dictionary);
    addReferences(text, random, "NS.keys", count, written);
    addReferences(text, random, "NS.objects", count, written);
    text.key("$class");
    text.uid(random.between(1, 8));
    text.close();
}

void addArchivedShape(DocumentText& text, Random& random, std::size_t written) {
    text.open(PlistType::dictionary);
    text.key("name");
    text.uid(someObject(random, written));
    text.key("parent");
    text.uid(someObject(random, written));
    text.key("opacity");
    text.real(someReal(random));
    text.key("flags");
    text.integer(static_cast<std::int64_t>(random.below(4096)));
    text.key("$class");
    text.uid(random.between(1, 8));
    text.close();
}

void addArchivedObject(DocumentText& text, Random& random, std::size_t written) {
    const std::size_t choice = random.below(100);
    if (choice < 25) {
        addArchivedDictionary(text, random, written);
    } else if (choice < 45) {
        addArchivedShape(text, random, written);
    } else if (choice < 90) {
        text.string(Words::sentence(random, random.between(6, 50)));
    } else {
        text.integer(static_cast<std::int64_t>(random.below(1'000'000)));
    }
}

void addArchive(DocumentText& text, Random& random, std::size_t bytes) {
    text.open(PlistType::dictionary);
    text.key("$version");
    text.integer(100'000);
    text.key("$archiver");
    text.string("KeyedArchiver");
    text.key("$top");
    text.open(PlistType::dictionary);
    text.key("root");
    text.uid(1);
    text.close();
    text.key("$objects");
    text.open(PlistType::array);
    text.string("$null");
    for (std::size_t written = 1; text.size() < bytes; ++written) {
        addArchivedObject(text, random, written);
    }
}

// Blobs

/// As many blobs of 1 to 2 KiB as of 32 to 64 KiB.
std::size_t blobSize(Random& random) {
    const std::size_t least = std::size_t{1024} << random.below(6);
    return random.between(least, 2 * least);
}

void addBlobs(DocumentText& text, Random& random, std::size_t bytes) {
    text.open(PlistType::array);
    while (text.size() < bytes) {
        const std::size_t left = std::max<std::size_t>(bytes - text.size(), 256) * 3 / 4;
        text.open(PlistType::dictionary);
        text.key("name");
        text.string(Words::joined(random));
        text.key("content");
        text.data(someBytes(random, std::min(blobSize(random), left)));
        text.close();
    }
}

void fill(DocumentText& text, DocumentKind kind, std::size_t bytes) {
    Random random(1000 + static_cast<std::uint64_t>(kind));
    switch (kind) {
        case DocumentKind::records:
            addRecords(text, random, bytes);
            break;
        case DocumentKind::nested:
            addNested(text, random, bytes);
            break;
        case DocumentKind::strings:
            addStrings(text, random, bytes);
            break;
        case DocumentKind::archive:
            addArchive(text, random, bytes);
            break;
        case DocumentKind::blobs:
            addBlobs(text, random, bytes);
            break;
    }
}

std::span<const std::uint8_t> bytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace

std::string_view nameOf(DocumentKind kind) {
    constexpr std::array<std::string_view, allDocumentKinds.size()> names = {
        "records", "nested", "strings", "archive", "blobs"};
    return names[static_cast<std::size_t>(kind)];
}

std::optional<DocumentKind> documentKindNamed(std::string_view name) {
    for (const DocumentKind kind : allDocumentKinds) {
        if (nameOf(kind) == name) {
            return kind;
        }
    }
    return std::nullopt;
}

GeneratedDocument generateDocument(DocumentKind kind, std::size_t bytes) {
    DocumentText text(bytes);
    fill(text, kind, bytes);
    text.finish();
    return {text.text(), text.census()};
}

PlistValue checkedValue(const GeneratedDocument& document) {
    PlistValue value = XMLPlistParser::parse(bytesOf(document.xml));
    if (takeCensus(value) != document.census) {
        throw std::logic_error("reading the XML form gives something else than was generated");
    }
    if (XMLPlistSerializer::serialize(value).view() != document.xml) {
        throw std::logic_error("writing the XML form gives other bytes");
    }
    const PlistBytes binary = BinaryPlistSerializer::serialize(value);
    if (BinaryPlistParser::parse(binary.span()) != value) {
        throw std::logic_error("the binary form gives another value");
    }
    return value;
}
