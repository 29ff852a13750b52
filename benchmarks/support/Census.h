#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>

#include "PlistCore/PlistType.h"
#include "PlistCore/PlistValue.h"

/// What a document holds, in numbers: a benchmark compares it with what the generator put in, so
/// that nothing fast and wrong is measured.
struct Census {
    std::array<std::uint64_t, plist::allPlistTypes.size()> counts = {};  ///< values of each type
    std::uint64_t keys = 0;
    std::uint64_t keyBytes = 0;     ///< UTF-8
    std::uint64_t stringBytes = 0;  ///< UTF-8
    std::uint64_t dataBytes = 0;
    std::uint64_t numbers = 0;  ///< the 64 bits of all numbers and dates, folded in their order

    std::uint64_t& operator[](plist::PlistType type) {
        return counts[static_cast<std::size_t>(type)];
    }
    std::uint64_t operator[](plist::PlistType type) const {
        return counts[static_cast<std::size_t>(type)];
    }

    /// All values, containers included and keys not.
    std::uint64_t values() const;

    /// The elements of the XML form: a uid is written as a dictionary with one key, and everything
    /// stands in one root element.
    std::uint64_t elements() const;

    /// Folds one more number into `numbers`; the order counts.
    void addNumber(std::uint64_t bits) { numbers = numbers * 31 + bits; }

    friend bool operator==(const Census&, const Census&) = default;
};

/// Counts what stands in `root`; shared values count each time.
Census takeCensus(const plist::PlistValue& root);

/// A census as one line of numbers.
std::ostream& operator<<(std::ostream& stream, const Census& census);
std::istream& operator>>(std::istream& stream, Census& census);
