#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistDate.h"

namespace plist {

namespace {

using std::string_view_literals::operator""sv;

constexpr double infinity = std::numeric_limits<double>::infinity();

/// A date given by its seconds since 1970.
double since1970(double seconds) {
    return seconds - PlistDate::referenceSince1970;
}

TEST(PlistDateTest, formats) {
    const std::vector<std::pair<double, std::string_view>> cases = {
        {0, "2001-01-01T00:00:00Z"},
        {-0.0, "2001-01-01T00:00:00Z"},
        {1, "2001-01-01T00:00:01Z"},
        {86399, "2001-01-01T23:59:59Z"},
        {86400, "2001-01-02T00:00:00Z"},
        {-1, "2000-12-31T23:59:59Z"},
        {-0.5, "2000-12-31T23:59:59Z"},
        {0.999, "2001-01-01T00:00:00Z"},
        {since1970(0), "1970-01-01T00:00:00Z"},
        {since1970(-0.5), "1969-12-31T23:59:59Z"},
        {since1970(1.9), "1970-01-01T00:00:01Z"},
        {since1970(951782400), "2000-02-29T00:00:00Z"},
        {since1970(951868800), "2000-03-01T00:00:00Z"},
        {since1970(4107542400), "2100-03-01T00:00:00Z"},
        {since1970(4107542399), "2100-02-28T23:59:59Z"},
        {since1970(1709210096), "2024-02-29T12:34:56Z"},
        {since1970(253402300799), "9999-12-31T23:59:59Z"},
        {since1970(253402300800), "10000-01-01T00:00:00Z"},
        {since1970(324238464000), "12244-09-16T00:00:00Z"},
        {since1970(-61125195560), "0033-01-07T11:00:40Z"},
        {since1970(-62135596800), "0001-01-01T00:00:00Z"},
        {since1970(-62135596801), "0000-12-31T23:59:59Z"},
        {since1970(-62167219200), "0000-01-01T00:00:00Z"},
        {since1970(-62167219201), "-001-12-31T23:59:59Z"},
        {since1970(-62198755200), "-001-01-01T00:00:00Z"},
        {since1970(-62293536000), "-005-12-31T00:00:00Z"},
        {since1970(-93724128000), "-1000-01-01T00:00:00Z"},
    };
    for (const auto& [seconds, expected] : cases) {
        EXPECT_EQ(PlistDate::formatDate(seconds), expected) << seconds;
    }
}

TEST(PlistDateTest, formatsEveryDouble) {
    constexpr std::string_view latest = "292277026596-12-04T15:30:07Z";
    constexpr std::string_view earliest = "-292277022657-01-27T08:29:52Z";
    const std::vector<std::pair<double, std::string_view>> cases = {
        {std::numeric_limits<double>::quiet_NaN(), "1970-01-01T00:00:00Z"},
        {-std::numeric_limits<double>::quiet_NaN(), "1970-01-01T00:00:00Z"},
        {infinity, latest},
        {-infinity, earliest},
        {std::numeric_limits<double>::max(), latest},
        {std::numeric_limits<double>::lowest(), earliest},
        {0x1p63, latest},
        {0x1p64, latest},
        {-0x1p63, "-292277022626-01-27T08:27:44Z"},
        {-0x1p63 - 0x1p31, earliest},
        {0x1.fffffffffffffp62 - 0x1p31, "292277026559-11-17T11:56:48Z"},
        {std::numeric_limits<double>::denorm_min(), "2001-01-01T00:00:00Z"},
    };
    for (const auto& [seconds, expected] : cases) {
        EXPECT_EQ(PlistDate::formatDate(seconds), expected) << seconds;
    }
}

TEST(PlistDateTest, parses) {
    const std::vector<std::pair<std::string_view, double>> cases = {
        {"2001-01-01T00:00:00Z", 0},
        {"2001-01-01T00:00:00", 0},
        {"2001-01-01T00:00Z", 0},
        {"2001-01-01T00Z", 0},
        {"2001-01-01Z", 0},
        {"2001-01Z", 0},
        {"2001Z", 0},
        {"2001", 0},
        {"2001-1-1T0:0:0", 0},
        {"2001-01-01T00:00:01Z", 1},
        {"2001-01-01T23:59:59Z", 86399},
        {"2000-12-31T23:59:59Z", -1},
        {"1970-01-01T00:00:00Z", -978307200},
        {"2024", 725760000},
        {"2024-5-7T8:3", 736761780},
        {"2024-05-07T08:03:00Z", 736761780},
        {"2023-02-31", 699494400},
        {"2023-03-03", 699494400},
        {"2023-04-31", 704592000},
        {"2023-05-01", 704592000},
        {"2024-02-29", 730857600},
        {"1", since1970(-62135596800)},
        {"01", since1970(-62135596800)},
        {"0", since1970(-62167219200)},
        {"-0", since1970(-62167219200)},
        {"000000000", since1970(-62167219200)},
        {"-0001-01-01T00:00:00Z", since1970(-62198755200)},
        {"-1", since1970(-62198755200)},
        {"-005-12-31T00:00:00Z", since1970(-62293536000)},
        {"10000-01-01T00:00:00Z", since1970(253402300800)},
        {"123456789-12-31T23:59:59Z", 3895856850614399},
        {"-123456789-01-01T00:00:00Z", -3895983110044800},
        {"999999999-12-31T23:59:59Z", 31556888854473600},  // one less is no double
        {"-999999999-01-01T00:00:00Z", -31557015113904000},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(PlistDate::parseDate(text), expected) << text;
    }
}

TEST(PlistDateTest, rejects) {
    for (const std::string_view text : {
             ""sv,
             "-"sv,
             "--1"sv,
             "+2001"sv,
             "Z"sv,
             "T"sv,
             " 2001"sv,
             "2001 "sv,
             "2001\n"sv,
             "2001\0"sv,
             "2001-"sv,
             "2001-01-"sv,
             "2001-01-01T"sv,
             "2001-01-01TZ"sv,
             "2001-01-01T00:"sv,
             "2001-01-01T00:00:"sv,
             "2001-01-01T00:00:Z"sv,
             "2001-Z"sv,
             "2001-001"sv,
             "2001-01-001"sv,
             "2001-01-01T000"sv,
             "2001-01-01T00:000"sv,
             "2001-01-01T00:00:000Z"sv,
             "2024-01-01 00:00:00"sv,
             "2024-01-01 00:00:00 +0000"sv,
             "2024-01-01t00:00:00Z"sv,
             "2024-01-01T00:00:00z"sv,
             "2024-01-01T00:00:00ZZ"sv,
             "2024-01-01T00:00:00.5Z"sv,
             "2024-01-01T00:00:00+00:00"sv,
             "2024-01-01T00:00:00:00Z"sv,
             "2024T00:00:00Z"sv,
             "2024-01T00:00:00Z"sv,
             "2024:01"sv,
             "2024-01:01"sv,
             "2024/01/01"sv,
             "20240101T000000Z"sv,
             "2024-00-01"sv,
             "2024-13-01"sv,
             "2024-01-00"sv,
             "2024-01-32"sv,
             "2024-01-01T24:00:00Z"sv,
             "2024-01-01T00:60:00Z"sv,
             "2024-01-01T00:00:60Z"sv,
             "2024--1-01"sv,
             "2024-01--1"sv,
             "2024-01-01T-1:00:00Z"sv,
             "1234567890-01-01"sv,
             "1234567890"sv,
             "0000000001-01-01"sv,
             "-1234567890-01-01"sv,
             "\xD9\xA2\xD9\xA0\xD9\xA2\xD9\xA4"sv,  // Arabic digits
             "now"sv,
         }) {
        EXPECT_EQ(PlistDate::parseDate(text), std::nullopt) << text;
    }
}

TEST(PlistDateTest, knowsTheLeapYears) {
    const std::vector<std::pair<std::string_view, std::string_view>> dayAfter28February = {
        {"2000-02-29", "2000-02-29T00:00:00Z"}, {"1900-02-29", "1900-03-01T00:00:00Z"},
        {"2004-02-29", "2004-02-29T00:00:00Z"}, {"2001-02-29", "2001-03-01T00:00:00Z"},
        {"0-02-29", "0000-02-29T00:00:00Z"},    {"-4-02-29", "-004-02-29T00:00:00Z"},
        {"-1-02-29", "-001-03-01T00:00:00Z"},   {"-100-02-29", "-100-03-01T00:00:00Z"},
        {"-400-02-29", "-400-02-29T00:00:00Z"},
    };
    for (const auto& [text, expected] : dayAfter28February) {
        const std::optional<double> date = PlistDate::parseDate(text);
        ASSERT_TRUE(date) << text;
        EXPECT_EQ(PlistDate::formatDate(*date), expected);
    }
}

/// Every day of two whole cycles of the calendar, by counting on.
TEST(PlistDateTest, countsDaysWithoutGap) {
    const std::optional<double> start = PlistDate::parseDate("-401-01-01");
    ASSERT_TRUE(start);
    double date = *start;
    for (std::int64_t year = -401; year <= 401; ++year) {
        const bool isLeapYear = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        const int lengths[] = {31, isLeapYear ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= lengths[month - 1]; ++day) {
                const std::string text =
                    std::to_string(year) + "-" + std::to_string(month) + "-" + std::to_string(day);
                ASSERT_EQ(PlistDate::parseDate(text), date) << text;
                ASSERT_EQ(PlistDate::parseDate(PlistDate::formatDate(date)), date) << text;
                date += 86400;
            }
        }
    }
}

TEST(PlistDateTest, readsBackWhatItFormats) {
    for (double seconds = 1; seconds < 3e16; seconds = std::floor(seconds * 1.37) + 1) {
        EXPECT_EQ(PlistDate::parseDate(PlistDate::formatDate(seconds)), seconds) << seconds;
        EXPECT_EQ(PlistDate::parseDate(PlistDate::formatDate(-seconds)), -seconds) << seconds;
    }
}

/// Years of more than nine digits can be formatted, but not parsed.
TEST(PlistDateTest, doesNotReadBackYearsOfTenDigits) {
    const std::string text = PlistDate::formatDate(1e17);
    EXPECT_EQ(text, "3168875851-09-07T09:46:40Z");
    EXPECT_EQ(PlistDate::parseDate(text), std::nullopt);
}

}  // namespace

}  // namespace plist
