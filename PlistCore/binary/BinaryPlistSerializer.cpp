#include "PlistCore/binary/BinaryPlistSerializer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistString.h"
#include "PlistCore/binary/BigEndian.h"
#include "PlistCore/binary/BinaryObjectOrder.h"
#include "PlistCore/binary/EqualObjectTable.h"
#include "PlistCore/binary/Utf16BigEndian.h"
#include "PlistCore/memory/ZeroedArray.h"
#include "PlistCore/text/UnicodeText.h"
#include "PlistCore/value/KeyListMemory.h"
#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

// The file is written in one pass. Objects are numbered in the order in which they stand in the
// file: a container, its keys, then its values with everything below each of them. So a container
// can be written with room for its references as soon as it is reached, and each reference is
// filled in when the number of its object is known. Only the width of references depends on the
// number of objects, which is known at the end; it is chosen from the number of values, and in the
// rare case that so many of them are equal that a narrower one fits, the file is written again.

namespace {

using BinaryPlistSerializer::EqualTexts;
using ObjectNumber = std::uint32_t;

/// One more would not fit the table of equal objects. Such a file is larger than 20 GB.
constexpr std::size_t mostObjects = std::numeric_limits<ObjectNumber>::max() - 1;

constexpr std::string_view magic = "bplist00";
constexpr std::size_t trailerSize = 32;

/// The types of objects, in the high nibble of a marker.
enum Marker : unsigned {
    falseMarker = 0x08,
    trueMarker = 0x09,
    integerMarker = 0x10,
    realMarker = 0x23,
    dateMarker = 0x33,
    dataMarker = 0x40,
    asciiMarker = 0x50,
    utf16Marker = 0x60,
    uidMarker = 0x80,
    arrayMarker = 0xA0,
    dictionaryMarker = 0xD0,
};

/// The most bytes of a marker with a count, or of a number with its marker.
constexpr std::size_t headRoom = 32;

unsigned widthOf(std::uint64_t number) noexcept {
    if (number <= 0xFF) {
        return 1;
    }
    if (number <= 0xFFFF) {
        return 2;
    }
    return number <= 0xFFFFFFFF ? 4 : 8;
}

/// Writes the low `width` bytes of `number`; `width` is 1, 2, 4 or 8.
std::uint8_t* putBytes(std::uint64_t number, unsigned width, std::uint8_t* out) noexcept {
    switch (width) {
        case 1:
            *out = static_cast<std::uint8_t>(number);
            break;
        case 2:
            BigEndian::store(static_cast<std::uint16_t>(number), out);
            break;
        case 4:
            BigEndian::store(static_cast<std::uint32_t>(number), out);
            break;
        default:
            BigEndian::store(number, out);
            break;
    }
    return out + width;
}

std::uint8_t* putMarker(unsigned marker, std::uint8_t* out) noexcept {
    *out = static_cast<std::uint8_t>(marker);
    return out + 1;
}

std::uint8_t* putUnsigned(std::uint64_t number, std::uint8_t* out) noexcept {
    const unsigned width = widthOf(number);
    const auto exponent = static_cast<unsigned>(std::countr_zero(width));
    return putBytes(number, width, putMarker(integerMarker | exponent, out));
}

std::uint8_t* putInteger(const PlistCell& cell, std::uint8_t* out) noexcept {
    const std::uint64_t word = cell.word();
    if (cell.has(PlistCell::unsignedNumber)) {
        out = putBytes(0, 8, putMarker(integerMarker | 4, out));
        return putBytes(word, 8, out);
    }
    if (static_cast<std::int64_t>(word) < 0) {
        return putBytes(word, 8, putMarker(integerMarker | 3, out));
    }
    return putUnsigned(word, out);
}

/// A marker with a count: in its low nibble up to 14, as an integer object after it from 15 on.
std::uint8_t* putHead(unsigned marker, std::size_t count, std::uint8_t* out) noexcept {
    constexpr unsigned countFollows = 0xF;
    if (count < countFollows) {
        return putMarker(marker | static_cast<unsigned>(count), out);
    }
    return putUnsigned(count, putMarker(marker | countFollows, out));
}

/// Takes what `putHead` wrote from `place` and returns the count.
std::size_t takeCount(const char*& place) noexcept {
    const unsigned inMarker = static_cast<std::uint8_t>(*place++) & 0xFU;
    if (inMarker != 0xF) {
        return inMarker;
    }
    const unsigned exponent = static_cast<std::uint8_t>(*place++) & 0xFU;
    std::size_t count = 0;
    for (unsigned left = 1U << exponent; left != 0; --left) {
        count = count << 8 | static_cast<std::uint8_t>(*place++);
    }
    return count;
}

std::uint64_t mixed(std::uint64_t left, std::uint64_t right) noexcept {
    __extension__ using Product = unsigned __int128;
    const Product product = Product{left} * right;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

constexpr std::uint64_t firstHashKey = 0x9E3779B97F4A7C15;
constexpr std::uint64_t secondHashKey = 0xD1B54A32D192ED03;

std::uint64_t wordAt(const char* place) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, place, sizeof word);
    return word;
}

/// A hash of what a cell holds in itself.
std::uint64_t hashInPlace(const PlistCell& cell) noexcept {
    const char* bytes = reinterpret_cast<const char*>(&cell);
    return mixed(wordAt(bytes) ^ firstHashKey, wordAt(bytes + 8) ^ secondHashKey);
}

/// A hash of more than 14 bytes. The last blocks overlap what is before them, so that most texts
/// need no loop and none a piece of odd size.
std::uint64_t hashOutOfLine(std::string_view bytes) noexcept {
    const char* place = bytes.data();
    const char* const end = place + bytes.size();
    std::uint64_t hash = bytes.size() * firstHashKey;
    for (; end - place > 32; place += 16) {
        hash = mixed(wordAt(place) ^ hash, wordAt(place + 8) ^ secondHashKey);
    }
    if (end - place >= 16) {
        hash = mixed(wordAt(place) ^ hash, wordAt(place + 8) ^ secondHashKey);
        place = end - 16;
    }
    return mixed(wordAt(place) ^ hash, wordAt(end - 8) ^ firstHashKey);
}

/// A hash of what a cell holds, which identical scalars have in common.
std::uint64_t hashOfIdentical(const PlistCell& cell) noexcept {
    return cell.has(PlistCell::outOfLine) ? hashOutOfLine(cell.bytes()) : hashInPlace(cell);
}

/// Equal scalars have equal hashes; so do canonically equivalent texts, which are hashed in their
/// composed form.
std::uint64_t hashOfEquivalent(const PlistCell& cell) {
    if (cell.type() != PlistType::string || cell.has(PlistCell::ascii) ||
        UnicodeText::isPlainlyComposed(cell.bytes())) {
        return hashOfIdentical(cell);
    }
    return hashOfIdentical(PlistString(UnicodeText::composed(cell.bytes())).cell());
}

unsigned referenceSizeFor(std::size_t objectCount) noexcept {
    if (objectCount < 0x100) {
        return 1;
    }
    return objectCount < 0x10000 ? 2 : 4;
}

/// Whether equal scalars of this type become one object, which has to be looked for.
bool isShared(PlistType type) noexcept {
    return !isContainer(type) && type != PlistType::data && type != PlistType::boolean;
}

/// A key or value that will be written soon.
struct Upcoming {
    const PlistCell* cell = nullptr;
    bool isLookedUp = false;  ///< whether an equal object would do for it
    std::uint64_t hash = 0;
    std::optional<ObjectNumber> likely;  ///< an object that is likely to be equal
};

class Writer {
public:
    Writer(const BinaryObjectOrder::Counts& counts, unsigned referenceSize, EqualTexts equalTexts,
           std::size_t maximumBytes);

    void writeObjects(const PlistValue& root);
    std::size_t objectCount() const noexcept { return objectCount_; }
    PlistBytes finish();

private:
    /// A container whose keys and members are being written.
    struct OpenContainer {
        std::size_t references;  ///< how many of them are left
        std::size_t place;       ///< where the reference to the next one goes
    };

    Upcoming lookAhead(BinaryObjectOrder& order);
    ObjectNumber writeValue(const Upcoming& value);
    ObjectNumber writeContainer(const PlistCell& cell);
    void openContainer(const PlistCell& cell, std::size_t place);
    ObjectNumber writeBoolean(bool truth);
    ObjectNumber writeData(std::string_view bytes);
    ObjectNumber writeUnique(const PlistCell& cell, std::uint64_t hash);
    std::size_t putScalar(const PlistCell& cell);
    std::uint8_t* putText(const PlistCell& cell);
    bool isObject(ObjectNumber number, const PlistCell& cell, std::size_t encodedSize) const;
    std::optional<std::string> textOfObject(ObjectNumber number) const;

    ObjectNumber beginObject();
    void putReference(ObjectNumber number, std::size_t place) noexcept {
        putBytes(number, referenceSize_, bytes_.data() + place);
    }

    PlistBytes bytes_;
    unsigned referenceSize_;
    EqualTexts equalTexts_;
    ZeroedArray<std::uint64_t> offsets_;
    std::size_t objectCount_ = 0;
    std::vector<OpenContainer> open_;
    EqualObjectTable table_;
    KeyListMemory keyReferences_;
    std::array<std::optional<ObjectNumber>, 2> booleans_;

    /// A ring of what comes next. Its length and the distances in it are powers of two that were
    /// found by measuring: far enough for memory to answer, near enough to stay in the cache.
    static constexpr std::size_t ringSize = 64;
    static constexpr std::size_t fetchedAhead = 48;
    static constexpr std::size_t hashedAhead = 32;
    static constexpr std::size_t offsetAhead = 16;
    static constexpr std::size_t objectAhead = 8;
    std::array<Upcoming, ringSize> ring_{};
    std::size_t ringEnd_ = 0;
};

Writer::Writer(const BinaryObjectOrder::Counts& counts, unsigned referenceSize,
               EqualTexts equalTexts, std::size_t maximumBytes)
    : referenceSize_(referenceSize),
      equalTexts_(equalTexts),
      offsets_(counts.objects()),
      table_(counts.scalars) {
    bytes_.limitTo(maximumBytes);
    bytes_.append(magic);
}

void Writer::writeObjects(const PlistValue& root) {
    BinaryObjectOrder order(root);
    for (std::size_t i = 0; i < fetchedAhead; ++i) {
        lookAhead(order);
    }
    for (Upcoming next = lookAhead(order); next.cell != nullptr; next = lookAhead(order)) {
        while (!open_.empty() && open_.back().references == 0) {
            open_.pop_back();
        }
        if (open_.empty()) {
            writeValue(next);
            continue;
        }
        OpenContainer& container = open_.back();
        --container.references;
        const std::size_t place = std::exchange(container.place, container.place + referenceSize_);
        putReference(writeValue(next), place);
    }
}

/// Looks at the value that comes after many others and returns the one whose turn it is.
///
/// The table of equal objects and the objects themselves are larger than the processor's caches and
/// are asked in no order, so that waiting for each answer would take most of the time. So a
/// text is fetched, then hashed, and its place in the table fetched, long before its turn; then the
/// offset of the object found there; then that object.
Upcoming Writer::lookAhead(BinaryObjectOrder& order) {
    const auto inRing = [this](std::size_t ahead) -> Upcoming& {
        return ring_[(ringEnd_ - fetchedAhead + ahead) % ringSize];
    };
    const PlistCell* const last = order.next();
    const bool isLookedUp = last != nullptr && isShared(last->type());
    inRing(fetchedAhead) = {last, isLookedUp, 0, std::nullopt};
    if (isLookedUp && last->has(PlistCell::outOfLine)) {
        __builtin_prefetch(last->pointer());
    }
    Upcoming& hashed = inRing(hashedAhead);
    if (hashed.isLookedUp) {
        hashed.hash = equalTexts_ == EqualTexts::identical ? hashOfIdentical(*hashed.cell)
                                                           : hashOfEquivalent(*hashed.cell);
        table_.prefetch(hashed.hash);
    }
    Upcoming& found = inRing(offsetAhead);
    if (found.isLookedUp) {
        found.likely = table_.likely(found.hash);
        if (found.likely) {
            __builtin_prefetch(&offsets_[*found.likely]);
        }
    }
    if (const std::optional<ObjectNumber> soon = inRing(objectAhead).likely) {
        __builtin_prefetch(bytes_.data() + offsets_[*soon]);
    }
    const Upcoming next = inRing(0);
    ++ringEnd_;
    return next;
}

/// Writes a scalar unless an equal one is there, or begins a container. Returns its number.
ObjectNumber Writer::writeValue(const Upcoming& value) {
    const PlistCell& cell = *value.cell;
    switch (cell.type()) {
        case PlistType::dictionary:
        case PlistType::array:
            return writeContainer(cell);
        case PlistType::boolean:
            return writeBoolean(cell.word() != 0);
        case PlistType::data:
            return writeData(cell.bytes());
        default:
            return writeUnique(cell, value.hash);
    }
}

ObjectNumber Writer::beginObject() {
    if (objectCount_ == mostObjects) {
        throw std::bad_alloc();
    }
    offsets_[objectCount_] = bytes_.size();
    return static_cast<ObjectNumber>(objectCount_++);
}

ObjectNumber Writer::writeContainer(const PlistCell& cell) {
    const ObjectNumber number = beginObject();
    const std::span<const PlistValue> values = cell.values();
    const bool isDictionary = cell.type() == PlistType::dictionary;
    const std::size_t sizeOfList = values.size() * referenceSize_;
    const std::size_t sizeOfLists = isDictionary ? 2 * sizeOfList : sizeOfList;
    std::uint8_t* const start = bytes_.reserve(headRoom + sizeOfLists);
    const std::uint8_t* const lists =
        putHead(isDictionary ? dictionaryMarker : arrayMarker, values.size(), start);
    bytes_.advance(static_cast<std::size_t>(lists - start) + sizeOfLists);
    if (!values.empty()) {
        openContainer(cell, bytes_.size() - sizeOfLists);
    }
    return number;
}

/// Has the references of a container written, which begin at `place`. Where the very same list of
/// keys was met before, it does not come again.
void Writer::openContainer(const PlistCell& cell, std::size_t place) {
    const std::size_t count = cell.length();
    if (cell.type() == PlistType::array) {
        open_.push_back({count, place});
        return;
    }
    const std::span<const PlistString> keys = cell.keys();
    const std::optional<std::size_t> before = keyReferences_.find(keys);
    if (!before) {
        keyReferences_.remember(keys, place);
        open_.push_back({2 * count, place});
        return;
    }
    const std::size_t size = count * referenceSize_;
    std::memcpy(bytes_.data() + place, bytes_.data() + *before, size);
    open_.push_back({count, place + size});
}

ObjectNumber Writer::writeBoolean(bool truth) {
    std::optional<ObjectNumber>& known = booleans_[truth ? 1 : 0];
    if (!known) {
        known = beginObject();
        bytes_.append(1, static_cast<char>(truth ? trueMarker : falseMarker));
    }
    return *known;
}

/// Data is never shared, not even equal data.
ObjectNumber Writer::writeData(std::string_view bytes) {
    const ObjectNumber number = beginObject();
    std::uint8_t* const start = bytes_.reserve(headRoom + bytes.size());
    std::uint8_t* const end = putHead(dataMarker, bytes.size(), start);
    bytes_.advance(static_cast<std::size_t>(end - start));
    bytes_.append(bytes);
    return number;
}

/// Puts the object after the file written so far, where it is compared with equal ones, and takes
/// it into the file only if there is none.
ObjectNumber Writer::writeUnique(const PlistCell& cell, std::uint64_t hash) {
    const std::size_t encodedSize = putScalar(cell);
    const auto next = static_cast<ObjectNumber>(objectCount_);
    const std::optional<ObjectNumber> known =
        table_.findOrAdd(hash, next, [this, &cell, encodedSize](ObjectNumber number) {
            return isObject(number, cell, encodedSize);
        });
    if (known) {
        return *known;
    }
    beginObject();
    bytes_.advance(encodedSize);
    return next;
}

/// Writes a scalar after the end of the buffer and returns its size.
std::size_t Writer::putScalar(const PlistCell& cell) {
    std::uint8_t* const start = bytes_.reserve(headRoom);
    std::uint8_t* end = start;
    switch (cell.type()) {
        case PlistType::integer:
            end = putInteger(cell, start);
            break;
        case PlistType::real:
            end = putBytes(cell.word(), 8, putMarker(realMarker, start));
            break;
        case PlistType::date:
            end = putBytes(cell.word(), 8, putMarker(dateMarker, start));
            break;
        case PlistType::uid: {
            const unsigned width = widthOf(cell.word());
            end = putBytes(cell.word(), width, putMarker(uidMarker | (width - 1), start));
            break;
        }
        default:
            end = putText(cell);
            break;
    }
    return static_cast<std::size_t>(end - (bytes_.data() + bytes_.size()));
}

std::uint8_t* Writer::putText(const PlistCell& cell) {
    const std::string_view text = cell.bytes();
    if (!cell.has(PlistCell::ascii)) {
        const std::size_t units = Utf16BigEndian::unitCount(text);
        std::uint8_t* const out = putHead(utf16Marker, units, bytes_.reserve(headRoom + 2 * units));
        Utf16BigEndian::encode(text, reinterpret_cast<char*>(out));
        return out + 2 * units;
    }
    std::uint8_t* const out =
        putHead(asciiMarker, text.size(), bytes_.reserve(headRoom + text.size()));
    if (cell.has(PlistCell::outOfLine)) {
        std::memcpy(out, text.data(), text.size());
    } else {
        std::memcpy(out, text.data(), PlistCell::inPlaceCapacity);
    }
    return out + text.size();
}

/// Whether object `number` equals the scalar `cell`, whose encoded form stands after the end of
/// the buffer.
bool Writer::isObject(ObjectNumber number, const PlistCell& cell, std::size_t encodedSize) const {
    const std::uint8_t* const object = bytes_.data() + offsets_[number];
    const std::uint8_t* const encoded = bytes_.data() + bytes_.size();
    // No encoded object is the beginning of another one, so the end of `object` need not be known;
    // the bytes up to the end of `encoded` can be read in any case.
    if (std::memcmp(object, encoded, encodedSize) == 0) {
        return true;
    }
    if (cell.type() != PlistType::string || equalTexts_ == EqualTexts::identical) {
        return false;
    }
    const std::optional<std::string> text = textOfObject(number);
    return text && UnicodeText::equal(*text, cell.bytes());
}

/// The text of object `number`, if it is a string.
std::optional<std::string> Writer::textOfObject(ObjectNumber number) const {
    const char* place = reinterpret_cast<const char*>(bytes_.data() + offsets_[number]);
    const unsigned marker = static_cast<std::uint8_t>(*place);
    const unsigned type = marker & 0xF0;
    if (type != asciiMarker && type != utf16Marker) {
        return std::nullopt;
    }
    const std::size_t count = takeCount(place);
    if (type == asciiMarker) {
        return std::string(place, count);
    }
    std::string text(Utf16BigEndian::mostBytesPerUnit * count, '\0');
    const char* const end = Utf16BigEndian::decode({place, 2 * count}, text.data());
    text.resize(static_cast<std::size_t>(end - text.data()));
    return text;
}

/// Adds the table of offsets and the trailer, and gives the file away.
PlistBytes Writer::finish() {
    const std::size_t tableStart = bytes_.size();
    const unsigned offsetSize = widthOf(tableStart);
    const std::size_t size = objectCount_ * offsetSize + trailerSize;
    std::uint8_t* out = bytes_.reserve(size);
    for (std::size_t i = 0; i < objectCount_; ++i) {
        out = putBytes(offsets_[i], offsetSize, out);
    }
    std::memset(out, 0, 6);
    out[6] = static_cast<std::uint8_t>(offsetSize);
    out[7] = static_cast<std::uint8_t>(referenceSize_);
    const std::uint64_t rootNumber = 0;
    out = putBytes(objectCount_, 8, out + 8);
    out = putBytes(rootNumber, 8, out);
    putBytes(tableStart, 8, out);
    bytes_.advance(size);
    return std::move(bytes_);
}

}  // namespace

namespace BinaryPlistSerializer {

PlistBytes serialize(const PlistValue& value, EqualTexts equalTexts, std::size_t maximumBytes) {
    const BinaryObjectOrder::Counts counts = BinaryObjectOrder::count(value);
    Writer writer(counts, referenceSizeFor(counts.objects()), equalTexts, maximumBytes);
    writer.writeObjects(value);
    const unsigned referenceSize = referenceSizeFor(writer.objectCount());
    if (referenceSize == referenceSizeFor(counts.objects())) {
        return writer.finish();
    }
    Writer narrower(counts, referenceSize, equalTexts, maximumBytes);
    narrower.writeObjects(value);
    return narrower.finish();
}

}  // namespace BinaryPlistSerializer

}  // namespace plist::detail
