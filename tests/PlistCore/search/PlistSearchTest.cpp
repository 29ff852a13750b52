#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "PlistCore/PlistCodec.h"
#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistSearch.h"
#include "PlistCore/PlistText.h"
#include "PlistCore/PlistValue.h"

namespace plist {

namespace {

using Outcome = PlistMatches::Outcome;

std::string pathText(const std::vector<std::int64_t>& path) {
    std::string text = "[";
    for (const std::int64_t position : path) {
        text += text.size() > 1 ? "," : "";
        text += std::to_string(position);
    }
    return text + "]";
}

std::string pathsText(const PlistMatches& matches) {
    std::string text;
    for (std::size_t i = 0; i < matches.size(); ++i) {
        text += text.empty() ? "" : " ";
        text += pathText(matches.path(i));
    }
    return text;
}

/// All paths found, "[0] [1,0]".
std::string search(const PlistValue& root, std::string_view query) {
    const PlistMatches matches = PlistSearch::matches(root, query);
    EXPECT_EQ(matches.outcome(), Outcome::complete);
    return pathsText(matches);
}

PlistValue string(std::string_view text) {
    return PlistValue::string(text);
}

/// Whether a search for `query` finds a string of `text`.
bool finds(std::string_view text, std::string_view query) {
    return search(string(text), query) == "[]";
}

PlistValue valueFromXml(std::string_view content) {
    return PlistCodec::read("<plist>" + std::string(content) + "</plist>").root;
}

TEST(PlistSearchTest, findsNumbersByTheirDigits) {
    const PlistValue root = valueFromXml(
        "<dict><key>a</key><integer>10</integer>"
        "<key>b</key><array><integer>1</integer><integer>2</integer></array></dict>");
    EXPECT_EQ(search(root, "1"), "[0] [1,0]");
}

TEST(PlistSearchTest, findsNothingForAQueryOfSpacesAndTabs) {
    const PlistValue root = PlistValue::dictionary({{" \t ", string("a b\tc")}, {"", string("")}});
    EXPECT_EQ(search(root, ""), "");
    EXPECT_EQ(search(root, " "), "");
    EXPECT_EQ(search(root, " \t  \t"), "");
}

TEST(PlistSearchTest, takesOnlySpacesAndTabsOffTheQuery) {
    const PlistValue root = PlistValue::array({string("ab"), string("a b"), string("x\nab")});
    EXPECT_EQ(search(root, " \tab\t "), "[0] [2]");
    EXPECT_EQ(search(root, "a b"), "[1]");
    EXPECT_EQ(search(root, "\nab"), "[2]");
    EXPECT_EQ(search(root, "ab\n"), "");
    EXPECT_EQ(search(root, "\u00A0ab"), "");
}

TEST(PlistSearchTest, findsNothingForAQueryOfMarks) {
    const PlistValue root = PlistValue::array({string("\u0301"), string("e\u0301"), string("")});
    EXPECT_EQ(search(root, "\u0301"), "");
    EXPECT_EQ(search(root, " \u0301\u0308 "), "");
}

TEST(PlistSearchTest, findsNothingForAQueryThatIsNoText) {
    EXPECT_EQ(search(string("\u00FF"), "\xFF"), "");
    EXPECT_EQ(search(string("a"), "a\xC3"), "");
}

TEST(PlistSearchTest, givesNoTextToBooleansDataAndContainers) {
    const PlistValue root = PlistValue::dictionary(
        {{"flag", PlistValue::boolean(true)},
         {"true", PlistValue::boolean(false)},
         {"text", string("untrue")},
         {"bytes", PlistValue::data(std::vector<std::uint8_t>{'t', 'r', 'u', 'e'})},
         {"array", PlistValue::array()},
         {"dictionary", PlistValue::dictionary()}});
    EXPECT_EQ(search(root, "true"), "[1] [2]");
    EXPECT_EQ(search(root, "dHJ1ZQ"), "");
    EXPECT_EQ(search(PlistValue::boolean(true), "true"), "");
}

TEST(PlistSearchTest, testsTheRootByItsTextAlone) {
    EXPECT_EQ(search(string("root"), "OO"), "[]");
    EXPECT_EQ(search(PlistValue::integer(42), "2"), "[]");
    EXPECT_EQ(search(PlistValue::array({string("a")}), "a"), "[0]");
    EXPECT_EQ(search(PlistValue::dictionary(), "a"), "");
}

TEST(PlistSearchTest, givesEachPlaceOnceParentsFirst) {
    const PlistValue root = PlistValue::dictionary(
        {{"name", string("my name")},
         {"names", PlistValue::array({string("Name"), string("other"),
                                      PlistValue::dictionary({{"x", string("name")}})})},
         {"rest", PlistValue::dictionary({{"NAME", PlistValue::array()}})},
         {"name", PlistValue::integer(1)}});
    EXPECT_EQ(search(root, "name"), "[0] [1] [1,0] [1,2,0] [2,0] [3]");
}

TEST(PlistSearchTest, ignoresCaseAndDiacritics) {
    EXPECT_TRUE(finds("Café", "cafe"));
    EXPECT_TRUE(finds("Cafe\u0301", "cafe"));
    EXPECT_TRUE(finds("CAFE", "café"));
    EXPECT_TRUE(finds("cafe", "CAFE\u0301"));
    EXPECT_TRUE(finds("ÉCOLE", "ecole"));
    EXPECT_TRUE(finds("Straße", "STRASSE"));
    EXPECT_TRUE(finds("STRASSE", "straße"));
    EXPECT_TRUE(finds("Ὀδυσσεύς", "οδυσσευσ"));
    EXPECT_TRUE(finds("İstanbul", "istanbul"));
    EXPECT_TRUE(finds("300 \u212A", "k"));
    EXPECT_TRUE(finds("한국", "한"));
    EXPECT_TRUE(finds("日本語の文", "語の"));
    EXPECT_TRUE(finds("ﬁle", "FILE"));
    EXPECT_TRUE(finds("😀 smile", "😀 S"));
}

TEST(PlistSearchTest, tellsLettersApart) {
    EXPECT_FALSE(finds("Æsir", "aesir"));
    EXPECT_FALSE(finds("Søren", "soren"));
    EXPECT_FALSE(finds("dız", "diz"));
    EXPECT_FALSE(finds("abc", "abd"));
    EXPECT_FALSE(finds("ab", "abc"));
    EXPECT_FALSE(finds("", "a"));
    EXPECT_FALSE(finds("plain text only", "é!"));
    EXPECT_FALSE(finds("日本", "本日"));
    EXPECT_FALSE(finds("a\u00B2", "2"));
}

TEST(PlistSearchTest, findsAcrossNulCharacters) {
    const std::string text("one\0two", 7);
    EXPECT_TRUE(finds(text, std::string_view("E\0T", 3)));
    EXPECT_TRUE(finds(text, "two"));
    EXPECT_FALSE(finds(text, "onetwo"));
}

/// What a number shows as, and which queries find it.
TEST(PlistSearchTest, searchesTheTextsOfNumbers) {
    struct Case {
        PlistValue value;
        std::string_view query;
        bool isFound;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Case> cases = {
        {PlistValue::integer(-9223372036854775807 - 1), "-9223372036854775808", true},
        {PlistValue::integer(greatestPlistInteger), "18446744073709551615", true},
        {PlistValue::integer(greatestPlistInteger), "184467440737095516150", false},
        {PlistValue::integer(-15), "-1", true},
        {PlistValue::integer(-15), "-", true},
        {PlistValue::integer(15), "-", false},
        {PlistValue::integer(15), "1-", false},
        {PlistValue::integer(15), "15.0", false},
        {PlistValue::integer(15), "+15", false},
        {PlistValue::integer(255), "ff", false},
        {PlistValue::uid(18446744073709551615U), "8446", true},
        {PlistValue::uid(5), "-", false},
        {PlistValue::real(15), "5.0", true},
        {PlistValue::real(0.1), "0.1", true},
        {PlistValue::real(1e16), "1E+16", true},
        {PlistValue::real(1e-5), "e-0", true},
        {PlistValue::real(-0.0), "-0.0", true},
        {PlistValue::real(infinity), "INF", true},
        {PlistValue::real(-infinity), "-in", true},
        {PlistValue::real(infinity), "-", false},
        {PlistValue::real(notANumber), "an", true},
        {PlistValue::real(notANumber), "inf", false},
        {PlistValue::real(1.5), "1,5", false},
        {PlistValue::real(1.5), "ina", false},
        {PlistValue::date(0), "2001-01-01t00:00:00z", true},
        {PlistValue::date(0), "1T0", true},
        {PlistValue::date(0), "2001-01-01 ", true},
        {PlistValue::date(0), "2001-01-02", false},
        {PlistValue::date(0), "01.01", false},
        {PlistValue::date(0), "jan", false},
        {PlistValue::date(-1e13), "-", true},
        {PlistValue::date(notANumber), "1970", true},
        {PlistValue::date(infinity), "292277026596-12-04T15:30:07Z", true},
    };
    for (const Case& test : cases) {
        EXPECT_EQ(search(test.value, test.query), test.isFound ? "[]" : "")
            << PlistText::displayText(test.value) << " / " << test.query;
    }
}

TEST(PlistSearchTest, findsInLongTextsOfAnyKind) {
    // Longer than the pieces in which long texts are searched, with the match at every border.
    constexpr std::size_t piece = std::size_t{1} << 16;
    for (const std::string_view letter : {"a", "é", "語"}) {
        std::string text;
        while (text.size() < 3 * piece) {
            text += letter;
        }
        EXPECT_FALSE(finds(text, "needle"));
        for (std::size_t place = piece - 12; place <= piece + 12; ++place) {
            std::string changed = text;
            changed.replace(place / letter.size() * letter.size(), 6 * letter.size(), "Néedle");
            EXPECT_TRUE(finds(changed, "needle")) << letter << " at " << place;
        }
        // The same where all is ASCII, which is searched without being folded.
        for (std::size_t place = piece - 12; place <= piece + 12; ++place) {
            std::string changed(text.size(), 'a');
            changed.replace(place, 6, "Needle");
            EXPECT_TRUE(finds(changed, "needle")) << place;
        }
        EXPECT_TRUE(finds(text + "needle", "needle"));
        EXPECT_TRUE(finds(text, text));
        EXPECT_FALSE(finds(text, text + "x"));
    }
}

TEST(PlistSearchTest, searchesListsOfKeysOfEveryLength) {
    for (const std::size_t count : {1U, 2U, 63U, 64U, 65U, 200U}) {
        std::vector<PlistString> keys;
        for (std::size_t i = 0; i < count; ++i) {
            keys.emplace_back("key " + std::to_string(i));
        }
        const PlistValue first =
            PlistValue::dictionary(keys, std::vector<PlistValue>(count, PlistValue::boolean(true)));
        // The second one shares the list of keys, the third one has a list of its own.
        const PlistValue second =
            PlistValue::dictionaryWithKeysOf(first, std::vector<PlistValue>(count, string("x")));
        const PlistValue third = PlistValue::dictionary({{"x", string("y")}});
        const PlistValue root = PlistValue::array({first, third, second});
        const std::string last = std::to_string(count - 1);
        EXPECT_EQ(search(root, "key " + last), "[0," + last + "] [2," + last + "]");
    }
}

TEST(PlistSearchTest, findsInDeepValues) {
    constexpr int depth = 1'000'000;
    PlistValue root = PlistValue::array({string("deep")});
    for (int i = 1; i < depth; ++i) {
        root = PlistValue::array({root});
    }
    const PlistMatches matches = PlistSearch::matches(root, "deep");
    ASSERT_EQ(matches.size(), 1U);
    EXPECT_EQ(matches.path(0), std::vector<std::int64_t>(depth, 0));
    EXPECT_EQ(matches.outcome(), Outcome::complete);
}

/// Each level of the chain is found by its key, so that the paths together have 5 * 10^9 steps.
TEST(PlistSearchTest, keepsThePathsOfADeepValueTogether) {
    constexpr std::size_t depth = 100'000;
    PlistValue root = string("end");
    for (std::size_t i = 0; i < depth; ++i) {
        root = PlistValue::dictionary({{"level", root}});
    }
    const PlistMatches matches = PlistSearch::matches(root, "level");
    EXPECT_EQ(matches.size(), depth);
    EXPECT_EQ(matches.places().size(), depth + 1);
    EXPECT_EQ(matches.path(2), (std::vector<std::int64_t>{0, 0, 0}));
}

PlistValue doubled(PlistValue leaf, int times) {
    for (int i = 0; i < times; ++i) {
        leaf = PlistValue::array({leaf, leaf});
    }
    return leaf;
}

TEST(PlistSearchTest, passesOverSharedContainersWithoutMatches) {
    const PlistValue root = PlistValue::array({doubled(string("leaf"), 40), string("last")});
    EXPECT_EQ(search(root, "last"), "[1]");
    EXPECT_EQ(search(root, "nothing"), "");
}

TEST(PlistSearchTest, findsEveryMatchInSharedContainers) {
    const PlistValue leaves = PlistValue::array(std::vector<PlistValue>(100, string("leaf")));
    const PlistValue mixed = PlistValue::array({leaves, string("match"), leaves});
    const PlistValue root = PlistValue::array({leaves, mixed, leaves, mixed});
    EXPECT_EQ(search(root, "match"), "[1,1] [3,1]");
    EXPECT_EQ(PlistSearch::matches(root, "leaf").size(), 600U);
}

TEST(PlistSearchTest, keepsALimitedNumberOfMatches) {
    const PlistMatches matches = PlistSearch::matches(doubled(string("leaf"), 40), "leaf");
    EXPECT_EQ(matches.outcome(), Outcome::limitReached);
    EXPECT_EQ(matches.size(), PlistMatches::matchLimit);
    EXPECT_LE(matches.places().size(), PlistMatches::placeLimit);
    EXPECT_EQ(matches.path(0), std::vector<std::int64_t>(40, 0));
}

TEST(PlistSearchTest, reachesTheLimitOnlyWithOneMatchMore) {
    std::vector<PlistValue> items(PlistMatches::matchLimit, PlistValue::integer(7));
    EXPECT_EQ(PlistSearch::matches(PlistValue::array(items), "7").outcome(), Outcome::complete);
    items.push_back(PlistValue::integer(8));
    EXPECT_EQ(PlistSearch::matches(PlistValue::array(items), "7").outcome(), Outcome::complete);
    items.push_back(PlistValue::integer(7));
    const PlistMatches matches = PlistSearch::matches(PlistValue::array(items), "7");
    EXPECT_EQ(matches.outcome(), Outcome::limitReached);
    EXPECT_EQ(matches.size(), PlistMatches::matchLimit);
}

TEST(PlistSearchTest, keepsALimitedNumberOfPlaces) {
    // A thousand containers around each match.
    PlistValue chain = string("leaf");
    for (int i = 0; i < 1000; ++i) {
        chain = PlistValue::array({chain});
    }
    const PlistMatches matches =
        PlistSearch::matches(PlistValue::array(std::vector<PlistValue>(10'000, chain)), "leaf");
    EXPECT_EQ(matches.outcome(), Outcome::limitReached);
    EXPECT_LE(matches.places().size(), PlistMatches::placeLimit);
    EXPECT_GE(matches.size(), 3990U);
}

TEST(PlistSearchTest, stopsAtOnceWhenToldBefore) {
    std::stop_source source;
    source.request_stop();
    const PlistMatches matches =
        PlistSearch::matches(PlistValue::array({string("a")}), "a", source.get_token());
    EXPECT_EQ(matches.outcome(), Outcome::cancelled);
    EXPECT_TRUE(matches.isEmpty());
}

/// An endless search, as far as anybody can tell, ends when it is told to.
TEST(PlistSearchTest, stopsInTheMiddle) {
    // Something is found everywhere, but rarely, so that neither limit nor memory ends the walk.
    std::vector<PlistValue> items(100'000, string("leaf"));
    items.push_back(string("match"));
    PlistValue root = PlistValue::array(items);
    root = PlistValue::array(std::vector<PlistValue>(100'000, root));
    std::stop_source source;
    std::atomic<bool> hasStarted = false;
    PlistMatches matches;
    std::thread searcher([&] {
        hasStarted = true;
        hasStarted.notify_one();
        matches = PlistSearch::matches(root, "match", source.get_token());
    });
    hasStarted.wait(false);
    source.request_stop();
    searcher.join();
    EXPECT_EQ(matches.outcome(), Outcome::cancelled);
    EXPECT_LT(matches.size(), 100'000U);
}

/// What stands at the end of a long text is not found any more.
TEST(PlistSearchTest, stopsWithinALongText) {
    std::stop_source source;
    source.request_stop();
    const std::string ascii(1'000'000, 'a');
    std::string other;
    for (int i = 0; i < 1'000'000; ++i) {
        other += "é";
    }
    for (const std::string& text : {ascii, other}) {
        const PlistValue value = string(text + "b");
        EXPECT_EQ(search(value, "b"), "[]");
        const PlistMatches matches = PlistSearch::matches(value, "b", source.get_token());
        EXPECT_EQ(matches.outcome(), Outcome::cancelled);
        EXPECT_TRUE(matches.isEmpty());
    }
}

// --- Against a plain and slow search ---

struct Letter {
    std::string_view text;
    std::string_view folded;
};

constexpr std::array<Letter, 16> letters = {{{"a", "a"},
                                             {"A", "a"},
                                             {"b", "b"},
                                             {"B", "b"},
                                             {"é", "e"},
                                             {"e\u0301", "e"},
                                             {"E", "e"},
                                             {"ß", "ss"},
                                             {"s", "s"},
                                             {"Ж", "ж"},
                                             {"ж", "ж"},
                                             {"\u0308", ""},
                                             {"1", "1"},
                                             {"-", "-"},
                                             {"字", "字"},
                                             {" ", " "}}};

/// A text together with what it must fold to, put together from the table alone.
struct KnownText {
    std::string text;
    std::string folded;
};

class Plain {
public:
    explicit Plain(unsigned seed) : random_(seed) {}

    KnownText text(int mostLetters) {
        KnownText result;
        for (int i = below(mostLetters + 1); i > 0; --i) {
            const Letter& letter = letters[static_cast<std::size_t>(below(letters.size()))];
            result.text += letter.text;
            result.folded += letter.folded;
        }
        return result;
    }

    /// A random value; `expected` gets the paths where `query` must be found.
    PlistValue value(const std::string& query, const std::string& path, int depth, bool keyMatches,
                     std::string& expected) {
        const int kind = below(depth < 4 ? 12 : 8);
        if (kind < 8) {
            const auto [scalar, folded] = scalarOf(kind);
            note(keyMatches || contains(folded, query), path, expected);
            return scalar;
        }
        note(keyMatches, path, expected);
        std::vector<PlistEntry> entries;
        std::vector<PlistValue> items;
        const bool isDictionary = kind % 2 == 0;
        const int count = below(100) == 0 ? 80 : below(6);
        for (int i = 0; i < count; ++i) {
            const KnownText key = isDictionary ? text(20) : KnownText();
            const std::string place = path + (path.empty() ? "" : ",") + std::to_string(i);
            PlistValue item = value(query, place, depth + 1, contains(key.folded, query), expected);
            entries.push_back({key.text, item});
            items.push_back(std::move(item));
        }
        return isDictionary ? PlistValue::dictionary(std::move(entries))
                            : PlistValue::array(std::move(items));
    }

private:
    static bool contains(const std::string& folded, const std::string& query) {
        return !query.empty() && folded.find(query) != std::string::npos;
    }

    static void note(bool matches, const std::string& path, std::string& expected) {
        if (matches) {
            expected += (expected.empty() ? "[" : " [") + path + "]";
        }
    }

    template <typename Bound>
    int below(Bound bound) {
        return std::uniform_int_distribution<int>(0, static_cast<int>(bound) - 1)(random_);
    }

    std::pair<PlistValue, std::string> scalarOf(int kind) {
        const int number = below(300) - 150;
        const KnownText known = text(kind == 0 ? 60 : 12);
        switch (kind) {
            case 1:
                return {PlistValue::integer(number), std::to_string(number)};
            case 2:
                return {PlistValue::real(number), std::to_string(number) + ".0"};
            case 3:
                return {PlistValue::uid(11), "11"};
            case 4:
                return {PlistValue::date(number * 86400.0 * 365), "?"};
            case 5:
                return {PlistValue::boolean(number > 0), ""};
            default:
                return {PlistValue::string(known.text), known.folded};
        }
    }

    std::mt19937 random_;
};

std::string withoutBlanks(const std::string& text) {
    const std::size_t start = text.find_first_not_of(' ');
    return start == std::string::npos ? std::string()
                                      : text.substr(start, text.find_last_not_of(' ') + 1 - start);
}

TEST(PlistSearchTest, agreesWithAPlainSearch) {
    std::size_t matchCount = 0;
    for (unsigned seed = 0; seed < 20000; ++seed) {
        Plain plain(seed);
        const KnownText query = plain.text(3);
        // Dates hold digits and "-" in ways that the table does not tell.
        if (query.folded.find_first_not_of(" 1-") == std::string::npos) {
            continue;
        }
        // Marks beside spaces keep them from being trimmed, but leave spaces when folded.
        if (query.text.find("\u0308") != std::string::npos) {
            continue;
        }
        std::string expected;
        const PlistValue root = plain.value(withoutBlanks(query.folded), "", 0, false, expected);
        const PlistMatches matches = PlistSearch::matches(root, query.text);
        ASSERT_EQ(pathsText(matches), expected) << "seed " << seed << ", query " << query.text;
        matchCount += matches.size();
    }
    EXPECT_GT(matchCount, 10000U);
}

}  // namespace

}  // namespace plist
