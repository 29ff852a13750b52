#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "PlistCore/PlistInteger.h"
#include "PlistCore/PlistType.h"

#pragma GCC visibility push(default)

namespace plist {
class PlistString;
class PlistValue;
}  // namespace plist

namespace plist::detail {

/// The 16 bytes behind every `PlistValue` and every `PlistString`.
///
/// Touching fresh memory costs more than parsing, so a value is as small as it can be: a type, a
/// byte of flags, and 14 bytes that hold a short text or short data in place, or a 48-bit length
/// and eight bytes for a number or a pointer.
///
///     byte 0     type
///     byte 1     flags; the high nibble is the length of a text or data in place
///     bytes 2-15 the text or data in place; or
///     bytes 2-7  the length (bytes, items or entries) of what lies out of line
///     bytes 8-15 the number, or the pointer to what lies out of line
///
/// What lies out of line is immutable and belongs either to a counted block of its own
/// (`PlistBlock`, values made by edits) or to the arena of a whole document (`PlistArena`, values
/// that were read). A cell that owns a share of it counts there: copying costs one atomic
/// increment, wherever it lies and however large it is. Cells inside an arena own no share; the
/// arena outlives them.
///
/// Out of line lie: the bytes of a text or of data; the items of an array (`PlistValue[length]`);
/// for a dictionary a pointer to its keys (`PlistString[length]`) followed by its values
/// (`PlistValue[length]`), so that dictionaries with the same keys share one list of them.
class PlistCell {
public:
    /// The most bytes of a text or of data that are kept in place.
    static constexpr std::size_t inPlaceCapacity = 14;

    /// Bits of the flag byte.
    enum Flag : std::uint8_t {
        outOfLine = 1,  ///< the cell holds a length and a pointer
        inArena = 2,    ///< what lies out of line belongs to an arena, else to a counted block
        ascii = 4,      ///< every byte of the text is below 0x80
        holdsNaN = 8,   ///< a NaN stands here or below: the value is unequal to itself
        unsignedNumber = 16,  ///< an integer above the signed 64-bit range
    };

    /// An empty dictionary.
    constexpr PlistCell() noexcept = default;

    /// A cell that holds a number or nothing.
    constexpr PlistCell(PlistType type, std::uint8_t flags, std::uint64_t word) noexcept
        : head_(headOf(type, flags, 0)), word_(word) {}

    /// Cells of numbers. `ofInteger` takes only numbers in the valid range.
    static PlistCell ofInteger(PlistInteger number) noexcept {
        const std::uint8_t flags = number > INT64_MAX ? unsignedNumber : 0;
        return {PlistType::integer, flags, static_cast<std::uint64_t>(number)};
    }
    static PlistCell ofReal(double number) noexcept { return ofDouble(PlistType::real, number); }
    static PlistCell ofDate(double seconds) noexcept { return ofDouble(PlistType::date, seconds); }
    static PlistCell ofBoolean(bool truth) noexcept {
        return {PlistType::boolean, 0, truth ? std::uint64_t{1} : std::uint64_t{0}};
    }
    static PlistCell ofUid(std::uint64_t number) noexcept { return {PlistType::uid, 0, number}; }

    /// A text or data of at most `inPlaceCapacity` bytes.
    static PlistCell inPlace(PlistType type, std::uint8_t flags, const void* bytes,
                             std::size_t length) noexcept {
        PlistCell cell(type, withInPlaceLength(flags, length), 0);
        if (length != 0) {
            std::memcpy(reinterpret_cast<char*>(&cell) + inPlaceOffset, bytes, length);
        }
        return cell;
    }

    /// The same for `bytes` of which 16 are readable: much faster, for where every text passes. The
    /// cell is put together in registers, because a load after smaller stores would wait for them.
    static PlistCell inPlaceFromBlock(PlistType type, std::uint8_t flags, const void* bytes,
                                      std::size_t length) noexcept {
        if constexpr (std::endian::native != std::endian::little) {
            return inPlace(type, flags, bytes, length);
        }
        constexpr std::size_t headBytes = sizeof(std::uint64_t) - inPlaceOffset;
        std::uint64_t first = 0;
        std::uint64_t second = 0;
        std::memcpy(&first, bytes, sizeof first);
        std::memcpy(&second, static_cast<const char*>(bytes) + headBytes, sizeof second);
        const std::size_t inHead = length < headBytes ? length : headBytes;
        PlistCell cell(type, withInPlaceLength(flags, length), lowBytes(second, length - inHead));
        cell.head_ |= lowBytes(first, inHead) << lengthShift;
        return cell;
    }

    /// A cell for `length` bytes, items or entries at `pointer`.
    static PlistCell elsewhere(PlistType type, std::uint8_t flags, const void* pointer,
                               std::size_t length) noexcept {
        PlistCell cell;
        cell.head_ = headOf(type, static_cast<std::uint8_t>(flags | outOfLine), length);
        cell.word_ = reinterpret_cast<std::uintptr_t>(pointer);
        return cell;
    }

    PlistType type() const noexcept { return static_cast<PlistType>(head_ >> typeShift & 0xFF); }
    std::uint8_t flags() const noexcept { return static_cast<std::uint8_t>(head_ >> flagShift); }
    bool has(Flag flag) const noexcept { return (flags() & flag) != 0; }

    /// The number of an integer, real, boolean, date or uid, as its 64 bits.
    std::uint64_t word() const noexcept { return word_; }

    /// The length out of line; 0 for an empty container.
    std::size_t length() const noexcept { return head_ >> lengthShift & lengthMask; }

    const void* pointer() const noexcept { return reinterpret_cast<const void*>(word_); }

    /// The bytes of a text or of data, in place or out of line. Valid while this very cell stays
    /// where it is and unchanged.
    std::string_view bytes() const noexcept {
        if (has(outOfLine)) {
            return {static_cast<const char*>(pointer()), length()};
        }
        return {reinterpret_cast<const char*>(this) + inPlaceOffset,
                static_cast<std::size_t>(flags() >> 4)};
    }

    /// The items of an array or the values of a dictionary.
    std::span<const PlistValue> values() const noexcept;

    /// The keys of a dictionary.
    std::span<const PlistString> keys() const noexcept;

    /// Takes, or gives back, one share of what lies out of line. Giving back the last share of a
    /// block frees what hangs on it, of any depth, without recursion.
    void retain() const noexcept {
        if (has(outOfLine)) {
            retainShare();
        }
    }
    void release() const noexcept {
        if (has(outOfLine)) {
            releaseShare();
        }
    }

private:
    static constexpr bool isLittleEndian = std::endian::native == std::endian::little;

    /// Where the fields stand in the first eight bytes, so that they are where the class comment
    /// says on every machine.
    static constexpr int typeShift = isLittleEndian ? 0 : 56;
    static constexpr int flagShift = isLittleEndian ? 8 : 48;
    static constexpr int lengthShift = isLittleEndian ? 16 : 0;
    static constexpr std::uint64_t lengthMask = (std::uint64_t{1} << 48) - 1;
    static constexpr std::size_t inPlaceOffset = 2;

    static constexpr std::uint64_t headOf(PlistType type, std::uint8_t flags,
                                          std::uint64_t length) noexcept {
        return static_cast<std::uint64_t>(type) << typeShift | std::uint64_t{flags} << flagShift |
               length << lengthShift;
    }
    static constexpr std::uint8_t withInPlaceLength(std::uint8_t flags,
                                                    std::size_t length) noexcept {
        return static_cast<std::uint8_t>(flags | (length << 4));
    }
    static constexpr std::uint64_t lowBytes(std::uint64_t word, std::size_t count) noexcept {
        return count == 0 ? 0 : word & UINT64_MAX >> (64 - 8 * count);
    }
    static PlistCell ofDouble(PlistType type, double number) noexcept {
        const std::uint8_t flags = number != number ? holdsNaN : 0;
        return {type, flags, std::bit_cast<std::uint64_t>(number)};
    }
    void retainShare() const noexcept;
    void releaseShare() const noexcept;

    std::uint64_t head_ = headOf(PlistType::dictionary, 0, 0);
    std::uint64_t word_ = 0;
};

static_assert(sizeof(PlistCell) == 16);

}  // namespace plist::detail

#pragma GCC visibility pop
