#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace plist::detail {

/// Sixteen bytes that are compared and copied at once. Every x86-64 processor does this in one
/// instruction; elsewhere plain loops give the same answers.
///
/// Masks have bit i set where byte i answers the question.
class ByteBlock {
public:
    static constexpr std::size_t size = 16;

    /// The 16 bytes at `place`, of any alignment; all of them must be readable.
    static ByteBlock load(const void* place) noexcept {
        ByteBlock block;
#if defined(__SSE2__)
        block.bytes_ = _mm_loadu_si128(static_cast<const __m128i*>(place));
#else
        std::memcpy(block.bytes_, place, size);
#endif
        return block;
    }

    /// Writes all 16 bytes to `place`, of any alignment.
    void store(void* place) const noexcept {
#if defined(__SSE2__)
        _mm_storeu_si128(static_cast<__m128i*>(place), bytes_);
#else
        std::memcpy(place, bytes_, size);
#endif
    }

    /// The bytes from the third one on, followed by two zeros: the text of a value that lies in
    /// place begins at the third byte of its cell.
    ByteBlock withoutFirstTwo() const noexcept {
        ByteBlock block;
#if defined(__SSE2__)
        block.bytes_ = _mm_srli_si128(bytes_, 2);
#else
        std::memcpy(block.bytes_, bytes_ + 2, size - 2);
        std::memset(block.bytes_ + size - 2, 0, 2);
#endif
        return block;
    }

    /// Where "&", "<" and ">" stand.
    unsigned markup() const noexcept {
#if defined(__SSE2__)
        // "<" and ">" differ in one bit.
        const __m128i angles =
            _mm_cmpeq_epi8(_mm_or_si128(bytes_, _mm_set1_epi8(2)), _mm_set1_epi8('>'));
        const __m128i ampersands = _mm_cmpeq_epi8(bytes_, _mm_set1_epi8('&'));
        return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(angles, ampersands)));
#else
        unsigned mask = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const bool found = bytes_[i] == '&' || bytes_[i] == '<' || bytes_[i] == '>';
            mask |= static_cast<unsigned>(found) << i;
        }
        return mask;
#endif
    }

    /// Where "&" and "<" stand, with which markup starts.
    unsigned markupStarts() const noexcept {
#if defined(__SSE2__)
        const __m128i angles = _mm_cmpeq_epi8(bytes_, _mm_set1_epi8('<'));
        const __m128i ampersands = _mm_cmpeq_epi8(bytes_, _mm_set1_epi8('&'));
        return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(angles, ampersands)));
#else
        unsigned mask = 0;
        for (std::size_t i = 0; i < size; ++i) {
            mask |= static_cast<unsigned>(bytes_[i] == '&' || bytes_[i] == '<') << i;
        }
        return mask;
#endif
    }

    /// Where spaces, tabs, line feeds and carriage returns stand.
    unsigned whitespace() const noexcept {
#if defined(__SSE2__)
        const __m128i spaces = _mm_cmpeq_epi8(bytes_, _mm_set1_epi8(' '));
        const __m128i tabs = _mm_cmpeq_epi8(bytes_, _mm_set1_epi8('\t'));
        const __m128i feeds = _mm_cmpeq_epi8(bytes_, _mm_set1_epi8('\n'));
        const __m128i returns = _mm_cmpeq_epi8(bytes_, _mm_set1_epi8('\r'));
        return static_cast<unsigned>(_mm_movemask_epi8(
            _mm_or_si128(_mm_or_si128(spaces, tabs), _mm_or_si128(feeds, returns))));
#else
        unsigned mask = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const bool found =
                bytes_[i] == ' ' || bytes_[i] == '\t' || bytes_[i] == '\n' || bytes_[i] == '\r';
            mask |= static_cast<unsigned>(found) << i;
        }
        return mask;
#endif
    }

    /// Which bytes lie from `least` to `greatest`, both included, as unsigned numbers.
    unsigned between(std::uint8_t least, std::uint8_t greatest) const noexcept {
#if defined(__SSE2__)
        const __m128i distances = _mm_sub_epi8(bytes_, _mm_set1_epi8(static_cast<char>(least)));
        const __m128i range = _mm_set1_epi8(static_cast<char>(greatest - least));
        return static_cast<unsigned>(
            _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_min_epu8(distances, range), distances)));
#else
        unsigned mask = 0;
        for (std::size_t i = 0; i < size; ++i) {
            mask |= static_cast<unsigned>(bytes_[i] >= least && bytes_[i] <= greatest) << i;
        }
        return mask;
#endif
    }

    /// Which bytes are 0x80 or above.
    unsigned highBits() const noexcept {
#if defined(__SSE2__)
        return static_cast<unsigned>(_mm_movemask_epi8(bytes_));
#else
        unsigned mask = 0;
        for (std::size_t i = 0; i < size; ++i) {
            mask |= static_cast<unsigned>(bytes_[i] >> 7) << i;
        }
        return mask;
#endif
    }

    /// Which bytes are `wanted` once the bits of `ignored` are set in them.
    unsigned equals(std::uint8_t wanted, std::uint8_t ignored) const noexcept {
#if defined(__SSE2__)
        const __m128i bytes = _mm_or_si128(bytes_, _mm_set1_epi8(static_cast<char>(ignored)));
        return static_cast<unsigned>(
            _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(wanted)))));
#else
        unsigned mask = 0;
        for (std::size_t i = 0; i < size; ++i) {
            mask |= static_cast<unsigned>((bytes_[i] | ignored) == wanted) << i;
        }
        return mask;
#endif
    }

    /// Writes each byte as a big-endian unit of two bytes: 32 bytes.
    void storeWidened(void* place) const noexcept {
#if defined(__SSE2__)
        auto* units = static_cast<__m128i*>(place);
        _mm_storeu_si128(units, _mm_unpacklo_epi8(_mm_setzero_si128(), bytes_));
        _mm_storeu_si128(units + 1, _mm_unpackhi_epi8(_mm_setzero_si128(), bytes_));
#else
        auto* units = static_cast<std::uint8_t*>(place);
        for (std::size_t i = 0; i < size; ++i) {
            units[2 * i] = 0;
            units[2 * i + 1] = bytes_[i];
        }
#endif
    }

    /// Whether the block is eight big-endian units of two bytes that are all below 0x80.
    bool holdsAsciiUnits() const noexcept {
#if defined(__SSE2__)
        const __m128i others = _mm_and_si128(bytes_, _mm_set1_epi16(static_cast<short>(0x80FF)));
        return _mm_movemask_epi8(_mm_cmpeq_epi8(others, _mm_setzero_si128())) == 0xFFFF;
#else
        unsigned others = 0;
        for (std::size_t i = 0; i < size; i += 2) {
            others |= bytes_[i] | (bytes_[i + 1] & 0x80U);
        }
        return others == 0;
#endif
    }

    /// Writes the lower bytes of eight big-endian units of two bytes: 8 bytes.
    void storeNarrowed(void* place) const noexcept {
#if defined(__SSE2__)
        const __m128i lower = _mm_srli_epi16(bytes_, 8);
        _mm_storel_epi64(static_cast<__m128i*>(place), _mm_packus_epi16(lower, lower));
#else
        auto* narrow = static_cast<std::uint8_t*>(place);
        for (std::size_t i = 0; i < size; i += 2) {
            narrow[i / 2] = bytes_[i + 1];
        }
#endif
    }

private:
    ByteBlock() noexcept = default;

#if defined(__SSE2__)
    __m128i bytes_;
#else
    std::uint8_t bytes_[size];
#endif
};

}  // namespace plist::detail
