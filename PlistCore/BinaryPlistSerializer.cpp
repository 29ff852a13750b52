#include "PlistCore/BinaryPlistSerializer.h"

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

#include "PlistCore/BigEndian.h"
#include "PlistCore/EqualObjectTable.h"
#include "PlistCore/FreshArray.h"
#include "PlistCore/PlistCell.h"
#include "PlistCore/PlistString.h"
#include "PlistCore/UnicodeText.h"
#include "PlistCore/Utf16BigEndian.h"

// The file is written in one pass. Objects are numbered in the order in which they stand in the
// file: a container, its keys, then its values with everything below each of them. So a container
// can be written with room for its references as soon as it is reached, and each reference is
// filled in when the number of its object is known. Only the width of references depends on the
// number of objects, which is known at the end; it is chosen from the number of values, and in the
// rare case that so many of them are equal that a narrower one fits, the file is written again.

namespace {

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

/// A marker with a count: in its low nibble up to 14, as an integer object behind it from 15 on.
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

/// A hash of more than 14 bytes.
std::uint64_t hashOutOfLine(std::string_view bytes) noexcept {
    std::uint64_t hash = bytes.size() * firstHashKey;
    const char* place = bytes.data();
    const char* const end = place + bytes.size();
    for (; end - place > 16; place += 16) {
        hash = mixed(wordAt(place) ^ hash, wordAt(place + 8) ^ secondHashKey);
    }
    char last[16] = {};
    std::memcpy(last, place, static_cast<std::size_t>(end - place));
    return mixed(wordAt(last) ^ hash, wordAt(last + 8) ^ firstHashKey);
}

std::uint64_t hashOfComposed(const PlistCell& cell) noexcept {
    return cell.has(PlistCell::outOfLine) ? hashOutOfLine(cell.bytes()) : hashInPlace(cell);
}

/// Equal scalars have equal hashes; so do canonically equivalent texts, which are hashed in their
/// composed form.
std::uint64_t hashOfScalar(const PlistCell& cell) {
    if (cell.type() != PlistType::string || cell.has(PlistCell::ascii) ||
        UnicodeText::isPlainlyComposed(cell.bytes())) {
        return hashOfComposed(cell);
    }
    return hashOfComposed(PlistString(UnicodeText::composed(cell.bytes())).cell());
}

/// Remembers where dictionaries with the same list of keys were met, so that what was found out
/// about the list need not be found out again. Forgets lists when others take their places.
class KeyListMemory {
public:
    /// What was remembered for this list of keys.
    std::optional<std::size_t> find(std::span<const PlistString> keys) const noexcept {
        const Place& place = places_[indexOf(keys)];
        if (place.keys != keys.data() || place.count != keys.size()) {
            return std::nullopt;
        }
        return place.note;
    }

    void remember(std::span<const PlistString> keys, std::size_t note) noexcept {
        places_[indexOf(keys)] = {keys.data(), keys.size(), note};
    }

private:
    struct Place {
        const PlistString* keys = nullptr;
        std::size_t count = 0;
        std::size_t note = 0;
    };
    static constexpr int indexBits = 9;

    static std::size_t indexOf(std::span<const PlistString> keys) noexcept {
        const auto address = static_cast<std::uint64_t>(std::bit_cast<std::uintptr_t>(keys.data()));
        return static_cast<std::size_t>((address * firstHashKey) >> (64 - indexBits));
    }

    std::array<Place, std::size_t{1} << indexBits> places_{};
};

/// What a tree holds, before equal scalars become one object. Lists of keys that several
/// dictionaries share are counted once as far as they are recognised.
struct Counts {
    std::size_t containers = 0;
    std::size_t scalars = 0;

    std::size_t objects() const noexcept { return containers + scalars; }
};

Counts countValues(const PlistValue& root) {
    Counts counts;
    KeyListMemory knownLists;
    std::vector<std::span<const PlistValue>> open{{&root, 1}};
    while (!open.empty()) {
        std::span<const PlistValue>& rest = open.back();
        std::size_t index = 0;
        while (index < rest.size() && rest[index].childCount() == 0) {
            ++index;
        }
        counts.scalars += index;
        if (index == rest.size()) {
            open.pop_back();
            continue;
        }
        const PlistValue& container = rest[index];
        rest = rest.subspan(index + 1);
        ++counts.containers;
        const std::span<const PlistString> keys = container.keys();
        if (!keys.empty() && !knownLists.find(keys)) {
            knownLists.remember(keys, 0);
            counts.scalars += keys.size();
        }
        open.push_back(container.children());
    }
    return counts;
}

unsigned referenceSizeFor(std::size_t objectCount) noexcept {
    if (objectCount < 0x100) {
        return 1;
    }
    return objectCount < 0x10000 ? 2 : 4;
}

/// The cells of keys or values, which are nothing else.
template <typename Item>
std::span<const PlistCell> cellsOf(std::span<const Item> items) noexcept {
    static_assert(sizeof(Item) == sizeof(PlistCell));
    return {reinterpret_cast<const PlistCell*>(items.data()), items.size()};
}

/// Whether equal scalars of this type become one object, which has to be looked for.
bool isShared(PlistType type) noexcept {
    return !isContainer(type) && type != PlistType::data && type != PlistType::boolean;
}

/// So many scalars are prepared at once: enough for their places in memory to be fetched side by
/// side.
constexpr std::size_t batchSize = 16;

class Writer {
public:
    Writer(const Counts& counts, unsigned referenceSize);

    void writeObjects(const PlistValue& root);
    std::size_t objectCount() const noexcept { return objectCount_; }
    PlistBytes finish();

private:
    /// A container whose members are being written.
    struct OpenContainer {
        std::span<const PlistCell> rest;  ///< the members that are not written yet
        std::size_t reference;            ///< where the reference to the first of them goes
    };

    void writeMembers(OpenContainer& container);
    std::size_t prepare(std::span<const PlistCell> cells);
    ObjectNumber writeValue(const PlistCell& cell, std::uint64_t hash);
    ObjectNumber writeContainer(const PlistCell& cell);
    void writeKeys(std::span<const PlistString> keys, std::size_t reference);
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
    FreshArray<std::uint64_t> offsets_;
    std::size_t objectCount_ = 0;
    std::vector<OpenContainer> open_;
    EqualObjectTable table_;
    KeyListMemory keyReferences_;
    std::array<std::optional<ObjectNumber>, 2> booleans_;
    std::array<std::uint64_t, batchSize> hashes_{};  ///< of the cells that were prepared last
};

Writer::Writer(const Counts& counts, unsigned referenceSize)
    : referenceSize_(referenceSize), offsets_(counts.objects()), table_(counts.scalars) {
    bytes_.append(magic);
}

void Writer::writeObjects(const PlistValue& root) {
    prepare({&root.cell(), 1});
    writeValue(root.cell(), hashes_[0]);
    while (!open_.empty()) {
        if (open_.back().rest.empty()) {
            open_.pop_back();
        } else {
            writeMembers(open_.back());
        }
    }
}

/// Writes some members of a container, up to the first one that has members of its own.
void Writer::writeMembers(OpenContainer& container) {
    const std::span<const PlistCell> batch = container.rest.first(prepare(container.rest));
    std::size_t reference = container.reference;
    container.rest = container.rest.subspan(batch.size());
    container.reference += batch.size() * referenceSize_;
    for (std::size_t i = 0; i < batch.size(); ++i) {
        putReference(writeValue(batch[i], hashes_[i]), reference);
        reference += referenceSize_;
    }
}

/// Computes the hashes of the first cells, up to a container or a whole batch, and has everything
/// fetched that looking for equal objects will touch. Returns how many cells that are.
std::size_t Writer::prepare(std::span<const PlistCell> cells) {
    std::size_t count = 0;
    while (count < std::min(cells.size(), batchSize)) {
        const PlistCell& cell = cells[count];
        if (isContainer(cell.type())) {
            ++count;
            break;
        }
        if (isShared(cell.type())) {
            hashes_[count] = hashOfScalar(cell);
            table_.prefetch(hashes_[count]);
        }
        ++count;
    }
    std::array<ObjectNumber, batchSize> likely;
    std::size_t likelyCount = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!isShared(cells[i].type())) {
            continue;
        }
        if (const std::optional<ObjectNumber> number = table_.likely(hashes_[i])) {
            __builtin_prefetch(&offsets_[*number]);
            likely[likelyCount++] = *number;
        }
    }
    for (std::size_t i = 0; i < likelyCount; ++i) {
        __builtin_prefetch(bytes_.data() + offsets_[likely[i]]);
    }
    return count;
}

/// Writes a scalar unless an equal one is there, or begins a container. Returns its number.
ObjectNumber Writer::writeValue(const PlistCell& cell, std::uint64_t hash) {
    switch (cell.type()) {
        case PlistType::dictionary:
        case PlistType::array:
            return writeContainer(cell);
        case PlistType::boolean:
            return writeBoolean(cell.word() != 0);
        case PlistType::data:
            return writeData(cell.bytes());
        default:
            return writeUnique(cell, hash);
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
        const std::size_t reference = bytes_.size() - sizeOfList;
        if (isDictionary) {
            writeKeys(cell.keys(), reference - sizeOfList);
        }
        open_.push_back({cellsOf(values), reference});
    }
    return number;
}

/// Writes the keys of a dictionary and the references to them.
void Writer::writeKeys(std::span<const PlistString> keys, std::size_t reference) {
    const std::optional<std::size_t> before = keyReferences_.find(keys);
    if (before) {
        std::memcpy(bytes_.data() + reference, bytes_.data() + *before,
                    keys.size() * referenceSize_);
        return;
    }
    keyReferences_.remember(keys, reference);
    for (std::span<const PlistCell> rest = cellsOf(keys); !rest.empty();) {
        const std::span<const PlistCell> batch = rest.first(prepare(rest));
        for (std::size_t i = 0; i < batch.size(); ++i) {
            putReference(writeUnique(batch[i], hashes_[i]), reference);
            reference += referenceSize_;
        }
        rest = rest.subspan(batch.size());
    }
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

/// Puts the object behind the file written so far, where it is compared with equal ones, and takes
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

/// Writes a scalar behind the end of the buffer and returns its size.
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

/// Whether object `number` equals the scalar `cell`, whose encoded form stands behind the end of
/// the buffer.
bool Writer::isObject(ObjectNumber number, const PlistCell& cell, std::size_t encodedSize) const {
    const std::uint8_t* const object = bytes_.data() + offsets_[number];
    const std::uint8_t* const encoded = bytes_.data() + bytes_.size();
    // No encoded object is the beginning of another one, so the end of `object` need not be known;
    // the bytes up to the end of `encoded` can be read in any case.
    if (std::memcmp(object, encoded, encodedSize) == 0) {
        return true;
    }
    if (cell.type() != PlistType::string) {
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

PlistBytes serialize(const PlistValue& value) {
    const Counts counts = countValues(value);
    Writer writer(counts, referenceSizeFor(counts.objects()));
    writer.writeObjects(value);
    const unsigned referenceSize = referenceSizeFor(writer.objectCount());
    if (referenceSize == referenceSizeFor(counts.objects())) {
        return writer.finish();
    }
    Writer narrower(counts, referenceSize);
    narrower.writeObjects(value);
    return narrower.finish();
}

}  // namespace BinaryPlistSerializer
