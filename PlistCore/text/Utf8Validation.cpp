#include "PlistCore/text/Utf8Validation.h"

#if defined(__x86_64__)

#include <tmmintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace plist::detail {

namespace {

constexpr std::size_t blockSize = 16;

/// What can be wrong with a byte and the one before it; a bit each.
enum Fault : unsigned {
    tooShort = 1,            ///< a lead byte is followed by something else than a continuation
    tooLong = 2,             ///< a continuation follows ASCII
    overlong3 = 4,           ///< E0 80-9F
    tooLarge = 8,            ///< F4 90-BF, F5 and above
    surrogate = 16,          ///< ED A0-BF
    overlong2 = 32,          ///< C0 and C1
    overlong4 = 64,          ///< F0 80-8F
    tooLargeAtAll = 64,      ///< F5 80-8F and above: shares a bit, its lead bytes differ
    twoContinuations = 128,  ///< no fault after the lead byte of three or four bytes
};
constexpr unsigned anyLow = tooShort | tooLong | twoContinuations;

struct Table {
    alignas(blockSize) std::uint8_t entries[blockSize];
};

constexpr Table table(const unsigned (&faults)[blockSize]) {
    Table result{};
    for (std::size_t index = 0; index < blockSize; ++index) {
        result.entries[index] = static_cast<std::uint8_t>(faults[index]);
    }
    return result;
}

constexpr unsigned largeLow = anyLow | tooLarge | tooLargeAtAll;
constexpr unsigned continuation = tooLong | overlong2 | twoContinuations;

/// By the high half of the first byte.
constexpr Table firstHigh = table({
    tooLong,
    tooLong,
    tooLong,
    tooLong,
    tooLong,
    tooLong,
    tooLong,
    tooLong,
    twoContinuations,
    twoContinuations,
    twoContinuations,
    twoContinuations,
    tooShort | overlong2,
    tooShort,
    tooShort | overlong3 | surrogate,
    tooShort | tooLarge | tooLargeAtAll | overlong4,
});

/// By the low half of the first byte.
constexpr Table firstLow = table({
    anyLow | overlong3 | overlong2 | overlong4,
    anyLow | overlong2,
    anyLow,
    anyLow,
    anyLow | tooLarge,
    largeLow,
    largeLow,
    largeLow,
    largeLow,
    largeLow,
    largeLow,
    largeLow,
    largeLow,
    largeLow | surrogate,
    largeLow,
    largeLow,
});

/// By the high half of the second byte.
constexpr Table secondHigh = table({
    tooShort,
    tooShort,
    tooShort,
    tooShort,
    tooShort,
    tooShort,
    tooShort,
    tooShort,
    continuation | overlong3 | tooLargeAtAll | overlong4,
    continuation | overlong3 | tooLarge,
    continuation | surrogate | tooLarge,
    continuation | surrogate | tooLarge,
    tooShort,
    tooShort,
    tooShort,
    tooShort,
});

/// The greatest bytes with which a block may end without a sequence running over its end.
constexpr Table lastComplete =
    table({255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 0xEF, 0xDF, 0xBF});

__attribute__((target("ssse3"))) inline __m128i load(const void* place) {
    return _mm_loadu_si128(static_cast<const __m128i*>(place));
}

__attribute__((target("ssse3"))) inline __m128i lookUp(const Table& table, __m128i halves) {
    return _mm_shuffle_epi8(load(table.entries), halves);
}

__attribute__((target("ssse3"))) inline __m128i highHalves(__m128i bytes) {
    return _mm_and_si128(_mm_srli_epi16(bytes, 4), _mm_set1_epi8(0x0F));
}

/// The faults of a block, given the block before it: nonzero where there is one.
__attribute__((target("ssse3"))) inline __m128i faultsOf(__m128i block, __m128i before) {
    const __m128i first = _mm_alignr_epi8(block, before, 15);
    const __m128i pairs =
        _mm_and_si128(_mm_and_si128(lookUp(firstHigh, highHalves(first)),
                                    lookUp(firstLow, _mm_and_si128(first, _mm_set1_epi8(0x0F)))),
                      lookUp(secondHigh, highHalves(block)));
    const __m128i third = _mm_subs_epu8(_mm_alignr_epi8(block, before, 14),
                                        _mm_set1_epi8(static_cast<char>(0xE0 - 0x80)));
    const __m128i fourth = _mm_subs_epu8(_mm_alignr_epi8(block, before, 13),
                                         _mm_set1_epi8(static_cast<char>(0xF0 - 0x80)));
    const __m128i needed =
        _mm_and_si128(_mm_or_si128(third, fourth), _mm_set1_epi8(static_cast<char>(0x80)));
    return _mm_xor_si128(needed, pairs);
}

/// Goes through a text block by block and collects the faults.
class Validator {
public:
    __attribute__((target("ssse3"))) Validator()
        : before_(_mm_setzero_si128()), open_(_mm_setzero_si128()), faults_(_mm_setzero_si128()) {}

    __attribute__((target("ssse3"))) void take(__m128i block) {
        if (_mm_movemask_epi8(block) == 0) {
            faults_ = _mm_or_si128(faults_, open_);
            open_ = _mm_setzero_si128();
        } else {
            faults_ = _mm_or_si128(faults_, faultsOf(block, before_));
            open_ = _mm_subs_epu8(block, load(lastComplete.entries));
        }
        before_ = block;
    }

    __attribute__((target("ssse3"))) bool isValid() const {
        const __m128i all = _mm_or_si128(faults_, open_);
        return _mm_movemask_epi8(_mm_cmpeq_epi8(all, _mm_setzero_si128())) == 0xFFFF;
    }

private:
    __m128i before_;
    __m128i open_;
    __m128i faults_;
};

}  // namespace

bool Utf8Validation::isAvailable() noexcept {
    static const bool hasInstructions = __builtin_cpu_supports("ssse3") != 0;
    return hasInstructions;
}

__attribute__((target("ssse3"))) bool Utf8Validation::isValid(std::string_view bytes) noexcept {
    Validator validator;
    std::size_t at = 0;
    for (; at + blockSize <= bytes.size(); at += blockSize) {
        validator.take(load(bytes.data() + at));
    }
    if (at < bytes.size()) {
        std::uint8_t rest[blockSize] = {};
        std::memcpy(rest, bytes.data() + at, bytes.size() - at);
        validator.take(load(rest));
    }
    return validator.isValid();
}

}  // namespace plist::detail

#else

namespace plist::detail {

bool Utf8Validation::isAvailable() noexcept {
    return false;
}

bool Utf8Validation::isValid(std::string_view) noexcept {
    return false;
}

}  // namespace plist::detail

#endif
