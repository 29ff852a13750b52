#include "PlistCore/binary/BinaryPlistParser.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistError.h"
#include "PlistCore/PlistInteger.h"
#include "PlistCore/binary/BigEndian.h"
#include "PlistCore/binary/Utf16BigEndian.h"
#include "PlistCore/memory/ByteView.h"
#include "PlistCore/memory/ZeroedArray.h"
#include "PlistCore/text/UnicodeText.h"
#include "PlistCore/value/PlistBuilder.h"
#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

namespace {

constexpr std::string_view magic = "bplist00";
constexpr std::size_t trailerSize = 32;

[[noreturn]] void failMalformed(std::string text) {
    throw PlistError(PlistError::Malformed{std::move(text)});
}

[[noreturn]] void failMalformed(std::string text, std::uint64_t offset) {
    throw PlistError(PlistError::Malformed{std::move(text)}, PlistError::Offset{offset});
}

[[noreturn]] void failAtEnd(std::uint64_t offset) {
    throw PlistError(PlistError::UnexpectedEnd{}, PlistError::Offset{offset});
}

[[noreturn]] void failTooDeep() {
    throw PlistError(PlistError::NestingTooDeep{BinaryPlistParser::nestingLimit});
}

[[noreturn]] void failUnknown(unsigned marker, std::uint64_t offset) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "Unknown object type 0x";
    if (marker > 0xF) {
        text += digits[marker >> 4];
    }
    text += digits[marker & 0xF];
    failMalformed(text + ".", offset);
}

/// The unsigned number of `width` bytes, at most eight, at `place`.
std::uint64_t numberAt(const std::uint8_t* place, std::size_t width) noexcept {
    switch (width) {
        case 1:
            return *place;
        case 2:
            return BigEndian::load<std::uint16_t>(place);
        case 4:
            return BigEndian::load<std::uint32_t>(place);
        case 8:
            return BigEndian::load<std::uint64_t>(place);
        default: {
            std::uint64_t number = 0;
            for (std::size_t i = 0; i < width; ++i) {
                number = number << 8 | place[i];
            }
            return number;
        }
    }
}

/// Arrays, the two kinds of sets, which are read as arrays, and dictionaries.
bool isContainerMarker(unsigned marker) noexcept {
    return marker >= 0xA0 && marker <= 0xDF;
}

/// What the end of the file says about it, checked.
struct Trailer {
    std::size_t offsetSize = 0;
    std::size_t referenceSize = 0;
    std::uint64_t objectCount = 0;
    std::uint64_t root = 0;
    std::uint64_t offsetTableStart = 0;
};

bool isWidth(std::size_t size) noexcept {
    return size == 1 || size == 2 || size == 4 || size == 8;
}

/// Whether the trailer describes a table of offsets that lies in a file of `end` bytes before the
/// trailer.
bool isValid(const Trailer& trailer, std::uint64_t end) noexcept {
    return isWidth(trailer.offsetSize) && isWidth(trailer.referenceSize) &&
           trailer.root < trailer.objectCount && trailer.offsetTableStart >= magic.size() &&
           trailer.offsetTableStart <= end &&
           trailer.objectCount <= (end - trailer.offsetTableStart) / trailer.offsetSize;
}

Trailer readTrailer(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < magic.size() + trailerSize ||
        std::memcmp(bytes.data(), magic.data(), magic.size()) != 0) {
        throw PlistError(PlistError::UnexpectedEnd{});
    }
    const std::uint8_t* const start = bytes.data() + bytes.size() - trailerSize;
    const Trailer trailer = {start[6], start[7], numberAt(start + 8, 8), numberAt(start + 16, 8),
                             numberAt(start + 24, 8)};
    if (!isValid(trailer, bytes.size() - trailerSize)) {
        failMalformed("The binary property list trailer is invalid.");
    }
    return trailer;
}

/// The values of objects that were read. An empty dictionary is all zero, as is an object that was
/// not read yet; there is nothing in it that would have to be read only once.
class KnownObjects {
public:
    explicit KnownObjects(std::size_t count) : cells_(count) {}

    void set(std::uint64_t object, const PlistCell& cell) noexcept { cells_[object] = cell; }

    /// Marks the object as a container that is being read.
    void setOpen(std::uint64_t object) noexcept { cells_[object] = openMark; }

    const PlistCell& operator[](std::uint64_t object) const noexcept { return cells_[object]; }

    static bool isRead(const PlistCell& cell) noexcept {
        return cell.type() != PlistType::dictionary || cell.word() != 0;
    }
    static bool isOpen(const PlistCell& cell) noexcept {
        return cell.type() == openMark.type() && cell.word() == openMark.word();
    }

private:
    /// No dictionary lies at address 1.
    static constexpr PlistCell openMark{PlistType::dictionary, 0, 1};

    ZeroedArray<PlistCell> cells_;
};

/// The lists of keys of recent dictionaries, known by the bytes of their references.
class RecentKeyLists {
public:
    /// The list that the references in `bytes` named before, or null.
    const PlistCell* find(std::string_view bytes) const noexcept {
        const Place& place = places_[indexOf(bytes)];
        return place.references == bytes ? place.keys : nullptr;
    }

    /// `bytes` must outlive this memory.
    void remember(std::string_view bytes, const PlistCell* keys) noexcept {
        places_[indexOf(bytes)] = {bytes, keys};
    }

private:
    struct Place {
        std::string_view references;
        const PlistCell* keys = nullptr;
    };
    static constexpr int indexBits = 8;

    /// The first and the last key together tell most lists apart.
    static std::size_t indexOf(std::string_view bytes) noexcept {
        std::uint64_t hash = bytes.size();
        const std::size_t looked = std::min(bytes.size(), sizeof hash);
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        std::memcpy(&first, bytes.data(), looked);
        std::memcpy(&last, bytes.data() + bytes.size() - looked, looked);
        hash = (hash ^ first) * 0x9E3779B97F4A7C15;
        hash = (hash ^ (hash >> 32) ^ last) * 0xD1B54A32D192ED03;
        return static_cast<std::size_t>(hash >> (64 - indexBits));
    }

    std::array<Place, std::size_t{1} << indexBits> places_{};
};

/// A container whose members are being read: for a dictionary first its keys, then its values.
struct OpenContainer {
    PlistType type = PlistType::array;
    std::uint64_t object = 0;
    std::uint64_t offset = 0;            ///< of its marker
    std::size_t count = 0;               ///< of items or entries
    PlistCell* target = nullptr;         ///< where its own value goes
    const std::uint8_t* next = nullptr;  ///< the next reference
    const std::uint8_t* endOfKeys = nullptr;
    const std::uint8_t* end = nullptr;
    const std::uint8_t* fetched = nullptr;  ///< up to here known values were fetched
    PlistCell* slot = nullptr;              ///< where the member after `next` goes
    PlistCell* keys = nullptr;
    PlistCell* values = nullptr;  ///< null while keys are being read
    unsigned flags = 0;           ///< of the values together
    bool hasOtherKeys = false;    ///< some key is not a string
};

/// The bytes of an object after its marker, or after the count that follows the marker.
struct Payload {
    std::uint64_t offset = 0;
    std::uint64_t count = 0;
};

class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes)
        : bytes_(bytes),
          trailer_(readTrailer(bytes)),
          builder_(bytes.size() + trailer_.objectCount * sizeof(PlistCell)),
          known_(trailer_.objectCount) {}

    PlistValue read();

private:
    enum class Outcome { done, opened };

    Outcome readObject(std::uint64_t object, PlistCell* slot);
    Outcome readContainer(std::uint64_t object, std::uint64_t offset, PlistCell* slot);
    void openContainer(const OpenContainer& container);
    Outcome readMembers(OpenContainer& container, const std::uint8_t* end);
    void fetchKnown(OpenContainer& container);
    void beginValues(OpenContainer& dictionary);
    void closeContainer();

    PlistCell readScalar(std::uint64_t offset);
    PlistCell readInteger(std::uint64_t offset) const;
    PlistCell readReal(std::uint64_t offset) const;
    PlistCell readDate(std::uint64_t offset) const;
    PlistCell readUid(std::uint64_t offset) const;
    PlistCell readData(std::uint64_t offset);
    PlistCell readUtf8(std::uint64_t offset);
    PlistCell readUtf16(std::uint64_t offset);

    std::uint64_t offsetOf(std::uint64_t object) const;
    unsigned byteAt(std::uint64_t offset) const noexcept { return bytes_[offset]; }
    void checkRange(std::uint64_t start, std::uint64_t count, std::uint64_t width = 1) const;
    std::uint64_t doubleWordAt(std::uint64_t offset) const;
    PlistInteger integerAt(std::uint64_t offset) const;
    Payload payloadOf(std::uint64_t offset) const;
    std::string_view takeBytes(const Payload& payload, std::uint64_t width);
    void noteRead(std::uint64_t& total, std::uint64_t amount) const;

    std::span<const std::uint8_t> bytes_;
    Trailer trailer_;
    PlistBuilder builder_;
    KnownObjects known_;
    RecentKeyLists keyLists_;
    std::vector<OpenContainer> open_;
    std::uint64_t referencesRead_ = 0;
    std::uint64_t contentRead_ = 0;
    PlistBytes decoded_;
};

PlistValue Reader::read() {
    // References into the stack stay valid while containers are opened.
    open_.reserve(BinaryPlistParser::nestingLimit);
    PlistCell root;
    if (readObject(trailer_.root, &root) == Outcome::done) {
        return builder_.finish(root);
    }
    while (!open_.empty()) {
        OpenContainer& container = open_.back();
        if (container.values == nullptr) {
            if (readMembers(container, container.endOfKeys) == Outcome::opened) {
                continue;
            }
            beginValues(container);
        }
        if (readMembers(container, container.end) == Outcome::done) {
            closeContainer();
        }
    }
    return builder_.finish(root);
}

/// Reads members up to the reference at `end`, or until one of them is a container that has to be
/// read first.
Reader::Outcome Reader::readMembers(OpenContainer& container, const std::uint8_t* end) {
    while (container.next != end) {
        if (container.next >= container.fetched) {
            fetchKnown(container);
        }
        const std::uint64_t object = numberAt(container.next, trailer_.referenceSize);
        container.next += trailer_.referenceSize;
        PlistCell* const slot = container.slot++;
        if (readObject(object, slot) == Outcome::opened) {
            return Outcome::opened;
        }
        container.flags |= slot->flags();
    }
    return Outcome::done;
}

/// Has the values fetched that the next members share with containers before. They lie anywhere, so
/// that waiting for each of them would take most of the time.
void Reader::fetchKnown(OpenContainer& container) {
    constexpr std::size_t membersAhead = 16;
    const std::size_t width = trailer_.referenceSize;
    const auto left = static_cast<std::size_t>(container.end - container.next);
    container.fetched = container.next + std::min(left, membersAhead * width);
    for (const std::uint8_t* at = container.next; at != container.fetched; at += width) {
        const std::uint64_t object = numberAt(at, width);
        if (object < trailer_.objectCount) {
            __builtin_prefetch(&known_[object]);
        }
    }
}

/// Puts the value of an object into `slot`, or opens the container that will end there.
Reader::Outcome Reader::readObject(std::uint64_t object, PlistCell* slot) {
    if (object >= trailer_.objectCount) {
        failMalformed("Object reference out of range.");
    }
    const PlistCell& known = known_[object];
    if (KnownObjects::isRead(known)) {
        if (KnownObjects::isOpen(known)) {
            // It contains itself. What is left on the way from it to itself is the same in every
            // round, so that going on would only add containers until there are too many.
            failTooDeep();
        }
        *slot = known;
        if (isContainer(slot->type()) && slot->length() != 0) {
            builder_.arena().noteSharedContainer();
        }
        return Outcome::done;
    }
    const std::uint64_t offset = offsetOf(object);
    if (isContainerMarker(byteAt(offset))) {
        return readContainer(object, offset, slot);
    }
    *slot = readScalar(offset);
    known_.set(object, *slot);
    return Outcome::done;
}

Reader::Outcome Reader::readContainer(std::uint64_t object, std::uint64_t offset, PlistCell* slot) {
    const bool isDictionary = byteAt(offset) >> 4 == 0xD;
    const Payload payload = payloadOf(offset);
    const std::size_t width = trailer_.referenceSize;
    checkRange(payload.offset, payload.count, isDictionary ? 2 * width : width);
    OpenContainer container;
    container.type = isDictionary ? PlistType::dictionary : PlistType::array;
    if (payload.count == 0) {
        *slot = PlistCell(container.type, 0, 0);
        known_.set(object, *slot);
        return Outcome::done;
    }
    noteRead(referencesRead_, isDictionary ? 2 * payload.count : payload.count);
    if (open_.size() == BinaryPlistParser::nestingLimit) {
        failTooDeep();
    }
    container.object = object;
    container.offset = offset;
    container.count = payload.count;
    container.target = slot;
    container.next = bytes_.data() + payload.offset;
    container.endOfKeys = container.next + (isDictionary ? payload.count * width : 0);
    container.end = container.endOfKeys + payload.count * width;
    openContainer(container);
    return Outcome::opened;
}

void Reader::openContainer(const OpenContainer& container) {
    known_.setOpen(container.object);
    OpenContainer& opened = open_.emplace_back(container);
    if (opened.type == PlistType::array) {
        opened.values = builder_.roomForItems(opened.count);
        opened.slot = opened.values;
        return;
    }
    const std::string_view references = charactersOf({opened.next, opened.endOfKeys});
    const PlistCell* const sameKeys = keyLists_.find(references);
    if (sameKeys != nullptr) {
        opened.next = opened.endOfKeys;
        opened.values =
            builder_.roomForEntries(reinterpret_cast<const PlistString*>(sameKeys), opened.count);
        opened.slot = opened.values;
        return;
    }
    opened.keys = builder_.roomForItems(opened.count);
    opened.slot = opened.keys;
}

/// Takes the keys of a dictionary as read and goes on to its values.
void Reader::beginValues(OpenContainer& dictionary) {
    for (std::size_t i = 0; i < dictionary.count; ++i) {
        if (dictionary.keys[i].type() != PlistType::string) {
            dictionary.hasOtherKeys = true;
        }
    }
    if (!dictionary.hasOtherKeys) {
        const std::size_t size = dictionary.count * trailer_.referenceSize;
        const std::uint8_t* const references = dictionary.endOfKeys - size;
        keyLists_.remember(charactersOf({references, size}), dictionary.keys);
    }
    dictionary.values = builder_.roomForEntries(
        reinterpret_cast<const PlistString*>(dictionary.keys), dictionary.count);
    dictionary.slot = dictionary.values;
}

/// Makes the value of the innermost container, all of whose members are read.
void Reader::closeContainer() {
    const OpenContainer& container = open_.back();
    if (container.hasOtherKeys) {
        failMalformed("Dictionary keys must be strings.", container.offset);
    }
    const auto flags = static_cast<std::uint8_t>(container.flags);
    *container.target = container.type == PlistType::dictionary
                            ? builder_.dictionaryOf(container.values, container.count, flags)
                            : builder_.arrayOf(container.values, container.count, flags);
    known_.set(container.object, *container.target);
    const unsigned ownFlags = container.target->flags();
    open_.pop_back();
    if (!open_.empty()) {
        open_.back().flags |= ownFlags;
    }
}

PlistCell Reader::readScalar(std::uint64_t offset) {
    const unsigned marker = byteAt(offset);
    switch (marker >> 4) {
        case 0x0:
            if (marker == 0x08 || marker == 0x09) {
                return PlistCell::ofBoolean(marker == 0x09);
            }
            break;
        case 0x1:
            return readInteger(offset);
        case 0x2:
            return readReal(offset);
        case 0x3:
            if (marker == 0x33) {
                return readDate(offset);
            }
            break;
        case 0x4:
            return readData(offset);
        case 0x5:
        case 0x7:
            return readUtf8(offset);
        case 0x6:
            return readUtf16(offset);
        case 0x8:
            return readUid(offset);
        default:
            break;
    }
    failUnknown(marker, offset);
}

PlistCell Reader::readInteger(std::uint64_t offset) const {
    return PlistCell::ofInteger(integerAt(offset));
}

PlistCell Reader::readReal(std::uint64_t offset) const {
    const unsigned exponent = byteAt(offset) & 0xF;
    if (exponent == 3) {
        return PlistCell::ofReal(std::bit_cast<double>(doubleWordAt(offset + 1)));
    }
    if (exponent != 2) {
        failMalformed("Unsupported real size.", offset);
    }
    checkRange(offset + 1, 4);
    const auto bits = BigEndian::load<std::uint32_t>(bytes_.data() + offset + 1);
    return PlistCell::ofReal(std::bit_cast<float>(bits));
}

PlistCell Reader::readDate(std::uint64_t offset) const {
    return PlistCell::ofDate(std::bit_cast<double>(doubleWordAt(offset + 1)));
}

PlistCell Reader::readUid(std::uint64_t offset) const {
    const std::size_t width = (byteAt(offset) & 0xF) + 1;
    if (width > 8) {
        failMalformed("UID too large.", offset);
    }
    checkRange(offset + 1, width);
    return PlistCell::ofUid(numberAt(bytes_.data() + offset + 1, width));
}

PlistCell Reader::readData(std::uint64_t offset) {
    return builder_.data(takeBytes(payloadOf(offset), 1));
}

PlistCell Reader::readUtf8(std::uint64_t offset) {
    const Payload payload = payloadOf(offset);
    const std::string_view text = takeBytes(payload, 1);
    if (UnicodeText::isAscii(text)) {
        // The trailer follows any text, so that its last block can be read as a whole.
        return builder_.stringFromBlock(text, PlistCell::ascii);
    }
    if (!UnicodeText::isValidUtf8(text)) {
        failMalformed("The text is not valid UTF-8.", payload.offset);
    }
    return builder_.string(text, 0);
}

PlistCell Reader::readUtf16(std::uint64_t offset) {
    const Payload payload = payloadOf(offset);
    const std::string_view units = takeBytes(payload, 2);
    char* const start =
        reinterpret_cast<char*>(decoded_.reserve(payload.count * Utf16BigEndian::mostBytesPerUnit));
    const char* const end = Utf16BigEndian::decode(units, start);
    const std::string_view text(start, static_cast<std::size_t>(end - start));
    // Every unit that is not ASCII becomes more than one byte.
    const bool isAscii = text.size() == payload.count;
    return builder_.string(text, isAscii ? PlistCell::ascii : 0);
}

std::uint64_t Reader::offsetOf(std::uint64_t object) const {
    const std::uint8_t* const table = bytes_.data() + trailer_.offsetTableStart;
    const std::uint64_t offset =
        numberAt(table + object * trailer_.offsetSize, trailer_.offsetSize);
    if (offset < magic.size() || offset >= trailer_.offsetTableStart) {
        failMalformed("Object offset out of range.");
    }
    return offset;
}

/// Checks that `count` things of `width` bytes from `start`, which is no further than the table of
/// offsets, lie before it. Nothing can overflow.
void Reader::checkRange(std::uint64_t start, std::uint64_t count, std::uint64_t width) const {
    __extension__ using Product = unsigned __int128;
    if (Product{count} * width > trailer_.offsetTableStart - start) {
        failAtEnd(start);
    }
}

std::uint64_t Reader::doubleWordAt(std::uint64_t offset) const {
    checkRange(offset, 8);
    return BigEndian::load<std::uint64_t>(bytes_.data() + offset);
}

/// The number of the integer object at `offset`.
PlistInteger Reader::integerAt(std::uint64_t offset) const {
    const unsigned exponent = byteAt(offset) & 0xF;
    const std::uint64_t payload = offset + 1;
    checkRange(payload, std::uint64_t{1} << exponent);
    const std::uint8_t* const place = bytes_.data() + payload;
    if (exponent < 3) {
        return numberAt(place, std::size_t{1} << exponent);
    }
    if (exponent == 3) {
        return static_cast<std::int64_t>(numberAt(place, 8));
    }
    if (exponent > 4) {
        failMalformed("Unsupported integer size.", payload);
    }
    const auto high = static_cast<std::int64_t>(numberAt(place, 8));
    const PlistInteger number =
        PlistInteger{high} * (PlistInteger{1} << 64) + numberAt(place + 8, 8);
    if (!isValidPlistInteger(number)) {
        throw PlistError(PlistError::InvalidValue{"Integer out of range."},
                         PlistError::Offset{payload});
    }
    return number;
}

/// The count in the marker at `offset` or after it, not checked yet, and where what it counts
/// begins.
Payload Reader::payloadOf(std::uint64_t offset) const {
    const unsigned count = byteAt(offset) & 0xF;
    if (count != 0xF) {
        return {offset + 1, count};
    }
    const std::uint64_t integer = offset + 1;
    checkRange(integer, 1);
    if (byteAt(integer) >> 4 != 1) {
        failMalformed("Invalid length.", integer);
    }
    const PlistInteger number = integerAt(integer);
    if (number < 0) {
        failMalformed("Invalid length.", integer);
    }
    const std::uint64_t width = std::uint64_t{1} << (byteAt(integer) & 0xF);
    return {integer + 1 + width, static_cast<std::uint64_t>(number)};
}

/// The bytes of a text or of data, whose units have `width` bytes each.
std::string_view Reader::takeBytes(const Payload& payload, std::uint64_t width) {
    checkRange(payload.offset, payload.count, width);
    noteRead(contentRead_, payload.count * width);
    return charactersOf({bytes_.data() + payload.offset, payload.count * width});
}

/// Adds to what objects held so far. No file needs more than its size, but one whose objects
/// overlap could make a few bytes into gigabytes.
void Reader::noteRead(std::uint64_t& total, std::uint64_t amount) const {
    total += amount;
    if (total > BinaryPlistParser::referencesPerByte * bytes_.size()) {
        failMalformed("The objects of the file overlap.");
    }
}

}  // namespace

namespace BinaryPlistParser {

PlistValue parse(std::span<const std::uint8_t> bytes) {
    return Reader(bytes).read();
}

}  // namespace BinaryPlistParser

}  // namespace plist::detail
