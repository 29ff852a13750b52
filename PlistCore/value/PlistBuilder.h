#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

#include "PlistCore/PlistString.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/memory/PlistArena.h"
#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

/// Makes the values of one document inside one new arena; for readers.
///
/// The cells it hands out own no share of the arena. They stand on the reader's own stacks until a
/// container takes copies of them, and all end in the root that `finish` turns into a value.
/// Every operation that makes something may throw `std::bad_alloc`.
class PlistBuilder {
public:
    /// `expectedSize` is a guess of the bytes that the values and texts will take.
    explicit PlistBuilder(std::size_t expectedSize) : arena_(PlistArena::make(expectedSize)) {}
    PlistBuilder(const PlistBuilder&) = delete;
    PlistBuilder& operator=(const PlistBuilder&) = delete;
    ~PlistBuilder() { arena_->release(); }

    /// A string of these bytes, which must be valid UTF-8. `flags` is `PlistCell::ascii` or 0.
    PlistCell string(std::string_view bytes, std::uint8_t flags) {
        return bytesCell(PlistType::string, flags, bytes);
    }

    /// The same for `bytes` that can be read up to the sixteenth even where there are fewer.
    PlistCell stringFromBlock(std::string_view bytes, std::uint8_t flags) {
        return bytes.size() <= PlistCell::inPlaceCapacity
                   ? PlistCell::inPlaceFromBlock(PlistType::string, flags, bytes.data(),
                                                 bytes.size())
                   : string(bytes, flags);
    }

    PlistCell data(std::string_view bytes) { return bytesCell(PlistType::data, 0, bytes); }

    /// Data of at most `capacity` bytes that `fill` writes to the place it is given; it returns
    /// their number, or nothing to make no data.
    template <typename Fill>
    std::optional<PlistCell> data(std::size_t capacity, const Fill& fill) {
        auto* place = static_cast<std::uint8_t*>(arena_->allocate(wholeWords(capacity)));
        const std::optional<std::size_t> size = fill(place);
        std::optional<PlistCell> cell;
        std::size_t kept = 0;
        if (size && *size <= PlistCell::inPlaceCapacity) {
            cell = PlistCell::inPlace(PlistType::data, 0, place, *size);
        } else if (size) {
            cell = PlistCell::elsewhere(PlistType::data, PlistCell::inArena, place, *size);
            kept = wholeWords(*size);
        }
        arena_->shrinkLast(place, wholeWords(capacity), kept);
        return cell;
    }

    /// A list of keys, each a string cell made here. Dictionaries may share it. Not for no keys.
    const PlistString* keyList(std::span<const PlistCell> keys);

    /// A dictionary of `keys[i]` and `values[i]`. `keys` is null when there are no entries.
    PlistCell dictionary(const PlistString* keys, std::span<const PlistCell> values);

    PlistCell array(std::span<const PlistCell> items);

    /// Room for the children of a container whose number is known before they are: `count` cells,
    /// which the caller fills before `arrayOf` or `dictionaryOf` makes the container of them. Keys
    /// for `roomForEntries` may lie in `roomForItems`.
    PlistCell* roomForItems(std::size_t count) {
        return static_cast<PlistCell*>(arena_->allocate(count * sizeof(PlistCell)));
    }
    PlistCell* roomForEntries(const PlistString* keys, std::size_t count);

    /// The container of `count` children in such room. `flags` are those of the children together.
    static PlistCell arrayOf(const PlistCell* items, std::size_t count,
                             std::uint8_t flags) noexcept {
        return PlistCell::elsewhere(PlistType::array, containerFlags(flags), items, count);
    }
    static PlistCell dictionaryOf(const PlistCell* values, std::size_t count,
                                  std::uint8_t flags) noexcept {
        const auto* place = reinterpret_cast<const char*>(values) - sizeof(const PlistString*);
        return PlistCell::elsewhere(PlistType::dictionary, containerFlags(flags), place, count);
    }

    PlistArena& arena() noexcept { return *arena_; }

    /// The root of what was built, as a value that keeps the arena alive. Ends the building.
    PlistValue finish(const PlistCell& root) noexcept;

private:
    static constexpr std::size_t wholeWords(std::size_t size) {
        return (size + 7) & ~std::size_t{7};
    }

    /// The flags of a container in the arena, from those of its children. The length of a text in
    /// place shares the byte with the flags, but not the low bits.
    static std::uint8_t containerFlags(unsigned flags) noexcept {
        return static_cast<std::uint8_t>((flags & PlistCell::holdsNaN) | PlistCell::inArena);
    }

    PlistCell bytesCell(PlistType type, std::uint8_t flags, std::string_view bytes) {
        if (bytes.size() <= PlistCell::inPlaceCapacity) {
            return PlistCell::inPlace(type, flags, bytes.data(), bytes.size());
        }
        char* place = arena_->allocateText(bytes.size());
        std::memcpy(place, bytes.data(), bytes.size());
        return PlistCell::elsewhere(type, static_cast<std::uint8_t>(flags | PlistCell::inArena),
                                    place, bytes.size());
    }

    PlistArena* arena_;
};

}  // namespace plist::detail
