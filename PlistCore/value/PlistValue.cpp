#include "PlistCore/PlistValue.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

#include "PlistCore/PlistCheck.h"
#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistExpansion.h"
#include "PlistCore/memory/ByteView.h"
#include "PlistCore/memory/PlistArena.h"
#include "PlistCore/value/PlistBlock.h"
#include "PlistCore/value/PlistEquality.h"

namespace plist {

namespace {

/// The most that `expandedCount` says.
constexpr std::uint64_t countLimit = INT64_MAX;

/// `flag` if `condition` holds, else no flag.
constexpr std::uint8_t flagIf(bool condition, detail::PlistCell::Flag flag) {
    return condition ? std::uint8_t{flag} : std::uint8_t{0};
}

/// What a container takes over from its children.
struct Summary {
    bool holdsNaN = false;
    std::uint64_t expandedCount = 1;

    void include(const PlistValue& child) {
        holdsNaN = holdsNaN || child.cell().has(detail::PlistCell::holdsNaN);
        const std::uint64_t count = detail::PlistBlock::knownCount(child.cell());
        const bool isKnown = expandedCount != detail::PlistBlock::notCounted &&
                             count != detail::PlistBlock::notCounted;
        expandedCount =
            isKnown ? std::min(countLimit, expandedCount + count) : detail::PlistBlock::notCounted;
    }

    std::uint8_t flags() const { return flagIf(holdsNaN, detail::PlistCell::holdsNaN); }
};

/// Moves the items of `source` to `place`, which thereby owns their shares.
template <typename Item>
void moveCells(std::vector<Item>& source, char* place) {
    std::uninitialized_move(source.begin(), source.end(), reinterpret_cast<Item*>(place));
}

/// A block of values after `prefix` bytes, and the summary of them.
detail::PlistBlock* blockOfValues(std::vector<PlistValue>& values, std::size_t prefix,
                                  Summary& summary) {
    detail::PlistBlock* block =
        detail::PlistBlock::make(prefix + values.size() * sizeof(PlistValue));
    for (const PlistValue& value : values) {
        summary.include(value);
    }
    moveCells(values, block->payload() + prefix);
    block->expandedCount = summary.expandedCount;
    block->ownedCellCount = values.size();
    return block;
}

/// An array cell that owns a new list of keys.
detail::PlistCell keyList(std::vector<PlistString>& keys) {
    detail::PlistBlock* block = detail::PlistBlock::make(keys.size() * sizeof(PlistString));
    block->ownedCellCount = keys.size();
    moveCells(keys, block->payload());
    return detail::PlistCell::elsewhere(PlistType::array, 0, block->payload(), keys.size());
}

/// An array cell, without a share of its own, of the keys of a dictionary that is not empty. They
/// may lie in an arena while the dictionary has a block, if it took them over from another one.
detail::PlistCell keysCellOf(const detail::PlistCell& dictionary) {
    if (!dictionary.has(detail::PlistCell::inArena)) {
        return detail::PlistBlock::of(dictionary.pointer())->keys;
    }
    const auto keys = dictionary.keys();
    return detail::PlistCell::elsewhere(PlistType::array, detail::PlistCell::inArena, keys.data(),
                                        keys.size());
}

/// A dictionary whose keys `keys`, an array cell, owns. Takes over that share.
PlistValue dictionaryOf(detail::PlistCell keys, std::vector<PlistValue>& values) {
    Summary summary;
    detail::PlistBlock* block = nullptr;
    try {
        block = blockOfValues(values, sizeof(void*), summary);
    } catch (...) {
        keys.release();
        throw;
    }
    block->keys = keys;
    const void* list = keys.pointer();
    std::memcpy(block->payload(), &list, sizeof list);
    return PlistValue::adopting(detail::PlistCell::elsewhere(PlistType::dictionary, summary.flags(),
                                                             block->payload(), values.size()));
}

}  // namespace

PlistValue PlistValue::dictionary(std::vector<PlistEntry> entries) {
    std::vector<PlistString> keys;
    std::vector<PlistValue> values;
    keys.reserve(entries.size());
    values.reserve(entries.size());
    for (PlistEntry& entry : entries) {
        keys.push_back(std::move(entry.key));
        values.push_back(std::move(entry.value));
    }
    return dictionary(std::move(keys), std::move(values));
}

PlistValue PlistValue::dictionary(std::vector<PlistString> keys, std::vector<PlistValue> values) {
    plistCheck(keys.size() == values.size(), "a dictionary needs as many keys as values");
    if (keys.empty()) {
        return {};
    }
    return dictionaryOf(keyList(keys), values);
}

PlistValue PlistValue::dictionaryWithKeysOf(const PlistValue& other,
                                            std::vector<PlistValue> values) {
    plistCheck(other.keys().size() == values.size(), "a dictionary needs as many keys as values");
    if (values.empty()) {
        return {};
    }
    const detail::PlistCell keys = keysCellOf(other.cell_);
    keys.retain();
    return dictionaryOf(keys, values);
}

PlistValue PlistValue::array(std::vector<PlistValue> items) {
    if (items.empty()) {
        return adopting({PlistType::array, 0, 0});
    }
    Summary summary;
    detail::PlistBlock* block = blockOfValues(items, 0, summary);
    return adopting(detail::PlistCell::elsewhere(PlistType::array, summary.flags(),
                                                 block->payload(), items.size()));
}

PlistValue PlistValue::string(const PlistString& text) noexcept {
    text.cell().retain();
    return adopting(text.cell());
}

PlistValue PlistValue::integer(PlistInteger number) {
    plistCheck(isValidPlistInteger(number), "an integer outside the valid range");
    return adopting(detail::PlistCell::ofInteger(number));
}

PlistValue PlistValue::real(double number) noexcept {
    return adopting(detail::PlistCell::ofReal(number));
}

PlistValue PlistValue::boolean(bool truth) noexcept {
    return adopting(detail::PlistCell::ofBoolean(truth));
}

PlistValue PlistValue::date(double seconds) noexcept {
    return adopting(detail::PlistCell::ofDate(seconds));
}

PlistValue PlistValue::data(std::span<const std::uint8_t> bytes) {
    return adopting(
        detail::PlistBlock::cellOfBytes(PlistType::data, 0, detail::charactersOf(bytes)));
}

PlistValue PlistValue::uid(std::uint64_t number) noexcept {
    return adopting(detail::PlistCell::ofUid(number));
}

PlistValue PlistValue::defaultValue(PlistType type) noexcept {
    return adopting(
        detail::PlistCell(type, flagIf(type == PlistType::string, detail::PlistCell::ascii), 0));
}

PlistString PlistValue::stringValue() const {
    plistCheck(type() == PlistType::string, "not a string");
    cell_.retain();
    return PlistString::adopting(cell_);
}

std::string_view PlistValue::text() const& {
    plistCheck(type() == PlistType::string, "not a string");
    return cell_.bytes();
}

PlistInteger PlistValue::integerValue() const {
    plistCheck(type() == PlistType::integer, "not an integer");
    if (cell_.has(detail::PlistCell::unsignedNumber)) {
        return cell_.word();
    }
    return static_cast<std::int64_t>(cell_.word());
}

double PlistValue::realValue() const {
    plistCheck(type() == PlistType::real, "not a real");
    return std::bit_cast<double>(cell_.word());
}

bool PlistValue::booleanValue() const {
    plistCheck(type() == PlistType::boolean, "not a boolean");
    return cell_.word() != 0;
}

double PlistValue::dateValue() const {
    plistCheck(type() == PlistType::date, "not a date");
    return std::bit_cast<double>(cell_.word());
}

std::span<const std::uint8_t> PlistValue::dataValue() const& {
    plistCheck(type() == PlistType::data, "not data");
    return detail::bytesOf(cell_.bytes());
}

std::uint64_t PlistValue::uidValue() const {
    plistCheck(type() == PlistType::uid, "not a uid");
    return cell_.word();
}

std::optional<PlistValue> PlistValue::value(std::span<const std::int64_t> path) const {
    const PlistValue* current = this;
    for (const std::int64_t position : path) {
        const std::span<const PlistValue> children = current->children();
        if (position < 0 || static_cast<std::uint64_t>(position) >= children.size()) {
            return std::nullopt;
        }
        current = &children[static_cast<std::size_t>(position)];
    }
    return *current;
}

std::uint64_t PlistValue::expandedCount() const {
    if (childCount() != 0 && cell_.has(detail::PlistCell::inArena)) {
        const detail::PlistArena* arena = detail::PlistArena::of(cell_.pointer());
        if (!arena->sharesContainers()) {
            return arena->valueBound();
        }
    }
    return PlistExpansion::count(*this, countLimit);
}

bool PlistValue::isIdenticalTo(const PlistValue& other) const noexcept {
    return std::memcmp(&cell_, &other.cell_, sizeof cell_) == 0;
}

bool PlistValue::operator==(const PlistValue& other) const {
    return detail::PlistEquality::equal(*this, other);
}

}  // namespace plist
