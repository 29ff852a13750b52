#include "PlistCore/PlistDate.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "PlistCore/text/Ascii.h"

namespace plist {

namespace PlistDate {
namespace {

constexpr std::int64_t secondsPerDay = 86400;

/// A day of the proleptic Gregorian calendar.
struct CivilDay {
    std::int64_t year = 1;
    std::int64_t month = 1;
    std::int64_t day = 1;
};

struct QuotientAndRest {
    std::int64_t quotient = 0;
    std::int64_t rest = 0;
};

/// Division whose rest is never negative; `divisor` is positive.
QuotientAndRest floorDivided(std::int64_t number, std::int64_t divisor) noexcept {
    QuotientAndRest result{number / divisor, number % divisor};
    if (result.rest < 0) {
        result.rest += divisor;
        --result.quotient;
    }
    return result;
}

// The calendar repeats after an era of 400 years. Counting years from 1 March puts the leap day at
// their end, so that the days before each month follow one formula: Howard Hinnant,
// "chrono-Compatible Low-Level Date Algorithms". Day 0 of the first era is 0000-03-01.
constexpr std::int64_t yearsPerEra = 400;
constexpr std::int64_t daysPerEra = 146097;
constexpr std::int64_t daysFromFirstEraTo1970 = 719468;

CivilDay civilFromDays(std::int64_t days) noexcept {
    const auto [era, dayOfEra] = floorDivided(days + daysFromFirstEraTo1970, daysPerEra);
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const std::int64_t day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    const std::int64_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    return {yearOfEra + era * yearsPerEra + (month <= 2 ? 1 : 0), month, day};
}

std::int64_t daysFromCivil(const CivilDay& civil) noexcept {
    const std::int64_t yearFromMarch = civil.year - (civil.month <= 2 ? 1 : 0);
    const auto [era, yearOfEra] = floorDivided(yearFromMarch, yearsPerEra);
    const std::int64_t monthFromMarch = civil.month > 2 ? civil.month - 3 : civil.month + 9;
    const std::int64_t dayOfYear = (153 * monthFromMarch + 2) / 5 + civil.day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * daysPerEra + dayOfEra - daysFromFirstEraTo1970;
}

/// Seconds since 1970, rounded down. Binary files may hold any double as a date: NaN counts as 0,
/// and what does not fit is clamped.
std::int64_t wholeSecondsSince1970(double seconds) noexcept {
    constexpr double limit = 0x1p63;
    const double rounded = std::floor(seconds + referenceSince1970);
    if (std::isnan(rounded)) {
        return 0;
    }
    if (rounded < -limit) {
        return std::numeric_limits<std::int64_t>::min();
    }
    if (rounded >= limit) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return static_cast<std::int64_t>(rounded);
}

/// Writes a number with as many zeros as bring it, its sign included, to `width` characters;
/// returns where it ends.
char* writePadded(char* place, std::int64_t number, std::size_t width) noexcept {
    std::array<char, 20> buffer = {};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    std::string_view digits(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data()));
    const std::size_t zeros = width > digits.size() ? width - digits.size() : 0;
    if (number < 0) {
        *place++ = '-';
        digits.remove_prefix(1);
    }
    return std::copy(digits.begin(), digits.end(), std::fill_n(place, zeros, '0'));
}

/// Reads the parts of a date off the front of a text.
class DateScanner {
public:
    explicit DateScanner(std::string_view text) : rest_(text) {}

    bool isAtEnd() const { return rest_.empty(); }

    /// Takes `byte` if it is next.
    bool take(char byte) {
        if (rest_.empty() || rest_.front() != byte) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    /// Takes one to `mostDigits` digits, or nothing.
    std::optional<std::int64_t> takeNumber(std::size_t mostDigits) {
        std::int64_t number = 0;
        std::size_t count = 0;
        while (count < mostDigits && count < rest_.size() && detail::Ascii::isDigit(rest_[count])) {
            number = number * 10 + (rest_[count] - '0');
            ++count;
        }
        rest_.remove_prefix(count);
        return count == 0 ? std::nullopt : std::optional(number);
    }

private:
    std::string_view rest_;
};

}  // namespace

std::string formatDate(double seconds) {
    std::array<char, longestDateText> buffer = {};
    return std::string(formatDate(seconds, buffer));
}

std::string_view formatDate(double seconds, std::span<char, longestDateText> buffer) noexcept {
    const auto [days, secondOfDay] = floorDivided(wholeSecondsSince1970(seconds), secondsPerDay);
    const CivilDay civil = civilFromDays(days);
    char* end = writePadded(buffer.data(), civil.year, 4);
    *end++ = '-';
    end = writePadded(end, civil.month, 2);
    *end++ = '-';
    end = writePadded(end, civil.day, 2);
    *end++ = 'T';
    end = writePadded(end, secondOfDay / 3600, 2);
    *end++ = ':';
    end = writePadded(end, secondOfDay / 60 % 60, 2);
    *end++ = ':';
    end = writePadded(end, secondOfDay % 60, 2);
    *end++ = 'Z';
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

std::optional<double> parseDate(std::string_view text) {
    // The parts after the year. From the first one that is missing on, all keep their defaults.
    struct Part {
        char separator;
        std::int64_t least;
        std::int64_t greatest;
        std::int64_t value;
    };
    std::array<Part, 5> parts = {
        {{'-', 1, 12, 1}, {'-', 1, 31, 1}, {'T', 0, 23, 0}, {':', 0, 59, 0}, {':', 0, 59, 0}}};

    DateScanner scanner(text);
    const bool isNegative = scanner.take('-');
    const std::optional<std::int64_t> year = scanner.takeNumber(9);
    if (!year) {
        return std::nullopt;
    }
    for (Part& part : parts) {
        if (!scanner.take(part.separator)) {
            break;
        }
        const std::optional<std::int64_t> number = scanner.takeNumber(2);
        if (!number || *number < part.least || *number > part.greatest) {
            return std::nullopt;
        }
        part.value = *number;
    }
    scanner.take('Z');
    if (!scanner.isAtEnd()) {
        return std::nullopt;
    }
    const auto& [month, day, hour, minute, second] = parts;
    const std::int64_t days = daysFromCivil({isNegative ? -*year : *year, month.value, day.value});
    const std::int64_t seconds =
        days * secondsPerDay + hour.value * 3600 + minute.value * 60 + second.value;
    return static_cast<double>(seconds - static_cast<std::int64_t>(referenceSince1970));
}

}  // namespace PlistDate

}  // namespace plist
