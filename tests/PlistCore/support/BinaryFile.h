#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Bytes from a picture of them: hexadecimal digits, and text as it stands between apostrophes;
/// spaces only separate. "5F 10 0F 'fifteen letters'".
std::vector<std::uint8_t> bytesOf(std::string_view picture);

/// The lowest `width` bytes of `number`, big-endian.
std::vector<std::uint8_t> bigEndian(std::uint64_t number, unsigned width);

/// Appends `bytes` to `target`.
void append(std::vector<std::uint8_t>& target, std::span<const std::uint8_t> bytes);

/// A binary property list put together by hand, right or wrong: the objects, and what the rest of
/// the file says about them, which is the truth unless something else is put there.
struct BinaryFile {
    std::vector<std::vector<std::uint8_t>> objects;
    unsigned offsetSize = 1;
    unsigned referenceSize = 1;
    std::uint64_t root = 0;

    std::map<std::size_t, std::uint64_t> wrongOffsets;
    std::optional<std::uint64_t> claimedObjectCount;
    std::optional<std::uint64_t> claimedOffsetTableStart;
    std::optional<unsigned> claimedOffsetSize;
    std::optional<unsigned> claimedReferenceSize;

    /// A file of the objects in these pictures, the first one being the root.
    static BinaryFile of(std::initializer_list<std::string_view> pictures);

    /// Adds an object and returns its number.
    std::size_t add(std::vector<std::uint8_t> object);

    /// Where object `number` begins.
    std::uint64_t offsetOf(std::size_t number) const;

    std::vector<std::uint8_t> bytes() const;
};
