#include "PlistCore/PlistSearch.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <unordered_set>
#include <utility>
#include <vector>

#include "PlistCore/PlistDate.h"
#include "PlistCore/PlistInteger.h"
#include "PlistCore/PlistString.h"
#include "PlistCore/PlistText.h"
#include "PlistCore/PlistType.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/search/TextQuery.h"
#include "PlistCore/value/KeyListMemory.h"

namespace plist {

namespace {

/// Whether a folded query holds nothing but these characters.
bool holdsOnly(std::string_view query, std::string_view characters) {
    return query.find_first_not_of(characters) == std::string_view::npos;
}

/// Tests values, and formats none that cannot match: most queries hold letters that no number has.
class ValueTest {
public:
    /// `query` is not empty.
    explicit ValueTest(detail::TextQuery& query) : query_(query) {
        constexpr std::string_view digits = "0123456789";
        const std::string_view text = query.folded();
        uidsMatch_ = holdsOnly(text, digits);
        integersMatch_ = uidsMatch_ || (text.front() == '-' && holdsOnly(text.substr(1), digits));
        datesMatch_ = holdsOnly(text, "0123456789-:tz");
        realsMatch_ =
            holdsOnly(text, "0123456789.+-e") || occursIn(text, "-inf") || occursIn(text, "nan");
    }

    bool matches(const PlistValue& value) {
        switch (value.type()) {
            case PlistType::string:
                return query_.matches(value.cell());
            case PlistType::integer:
                return integersMatch_ && query_.matchesAscii(decimal(value.integerValue()));
            case PlistType::uid:
                return uidsMatch_ && query_.matchesAscii(decimal(value.uidValue()));
            case PlistType::real:
                return realsMatch_ && query_.matchesAscii(real(value.realValue()));
            case PlistType::date:
                return datesMatch_ && query_.matchesAscii(date(value.dateValue()));
            default:
                return false;
        }
    }

private:
    static bool occursIn(std::string_view part, std::string_view text) {
        return text.find(part) != std::string_view::npos;
    }

    std::string_view decimal(PlistInteger number) {
        return decimalText(number, std::span(buffer_).first<longestDecimalText>());
    }
    std::string_view real(double number) {
        return PlistText::realText(number, std::span(buffer_).first<PlistText::longestRealText>());
    }
    std::string_view date(double seconds) {
        return PlistDate::formatDate(seconds,
                                     std::span(buffer_).first<PlistDate::longestDateText>());
    }

    detail::TextQuery& query_;
    std::array<char, 32> buffer_ = {};  ///< room for every text of a number
    bool integersMatch_ = false;
    bool uidsMatch_ = false;
    bool realsMatch_ = false;
    bool datesMatch_ = false;
};

/// Tests the keys of dictionaries. Many dictionaries share one list of keys: what was found in a
/// list is remembered as long as no other list needs its place.
class KeyTest {
public:
    /// Only lists of up to this many keys are remembered. Longer ones are rarely shared.
    static constexpr std::size_t longestList = 64;

    /// `query` is not empty.
    explicit KeyTest(detail::TextQuery& query) : query_(query) {}

    bool matches(const PlistString& key) { return query_.matches(key.cell()); }

    /// Bit i says whether key i matches; there are 1 to `longestList` keys.
    std::uint64_t matchesOf(std::span<const PlistString> keys) {
        if (const std::optional<std::size_t> known = known_.find(keys)) {
            return *known;
        }
        std::uint64_t found = 0;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            found |= std::uint64_t{matches(keys[i])} << i;
        }
        known_.remember(keys, found);
        return found;
    }

private:
    detail::TextQuery& query_;
    detail::KeyListMemory known_;  ///< what `matchesOf` gave
};

class Search {
public:
    Search(detail::TextQuery& query, const std::stop_token& stop)
        : values_(query), keys_(query), stop_(stop) {}

    PlistMatches run(const PlistValue& root) {
        if (values_.matches(root)) {
            found_.addMatch(0);
        }
        open(root, 0);
        while (!containers_.empty() && !hasEnded_) {
            if (!walk(containers_.back())) {
                close();
            }
        }
        // The test of a long text ends early, with a wrong answer, when the search is to stop.
        if (stop_.stop_requested()) {
            found_.setOutcome(PlistMatches::Outcome::cancelled);
        }
        return std::move(found_);
    }

private:
    /// No place has this number: the container has none yet, because nothing was found in it.
    static constexpr std::uint32_t noPlace = UINT32_MAX;

    /// From this many members on, all below included, a container without matches is remembered.
    static constexpr std::uint64_t manyMembers = 64;

    struct Container {
        const PlistValue* value;
        std::size_t next = 0;          ///< the member to look at next
        std::uint64_t keyMatches = 0;  ///< of a list of keys that is tested as a whole
        std::uint64_t membersBefore;   ///< how many members were visited when it was opened
        std::size_t matchesBefore;     ///< and how many matches were found
        std::uint32_t place;           ///< its number among the places, or `noPlace`
    };

    void open(const PlistValue& value, std::uint32_t place) {
        if (value.childCount() == 0 || isKnownToBeFruitless(value)) {
            return;
        }
        const std::span<const PlistString> keys = value.keys();
        const bool areTestedTogether = !keys.empty() && keys.size() <= KeyTest::longestList;
        containers_.push_back({&value, 0, areTestedTogether ? keys_.matchesOf(keys) : 0,
                               memberCount_, found_.size(), place});
    }

    /// Visits members up to the next one that is to be walked itself, which it opens. False when
    /// there was none.
    bool walk(Container& container) {
        const std::span<const PlistValue> members = container.value->children();
        const std::span<const PlistString> keys = container.value->keys();
        const bool hasLongList = keys.size() > KeyTest::longestList;
        for (std::size_t i = container.next; i < members.size(); ++i) {
            if (stop_.stop_requested()) {
                end(PlistMatches::Outcome::cancelled);
                return true;
            }
            ++memberCount_;
            const bool keyMatches =
                hasLongList ? keys_.matches(keys[i]) : (container.keyMatches >> i % 64 & 1) != 0;
            const PlistValue& member = members[i];
            std::uint32_t place = noPlace;
            if (keyMatches || values_.matches(member)) {
                if (!hasRoom()) {
                    end(PlistMatches::Outcome::limitReached);
                    return true;
                }
                place = addMatch(i);
            }
            if (member.childCount() != 0) {
                container.next = i + 1;
                open(member, place);
                return true;
            }
        }
        return false;
    }

    void close() {
        const Container& container = containers_.back();
        if (found_.size() == container.matchesBefore &&
            memberCount_ - container.membersBefore >= manyMembers) {
            fruitless_.insert(container.value->cell().pointer());
        }
        containers_.pop_back();
    }

    bool isKnownToBeFruitless(const PlistValue& value) const {
        return !fruitless_.empty() && fruitless_.contains(value.cell().pointer());
    }

    bool hasRoom() const {
        return found_.size() < PlistMatches::matchLimit &&
               found_.places().size() + containers_.size() < PlistMatches::placeLimit;
    }

    /// Adds the member at `position` of the innermost container, after the containers around it
    /// that had nothing to show so far.
    std::uint32_t addMatch(std::size_t position) {
        std::size_t first = containers_.size();
        while (containers_[first - 1].place == noPlace) {
            --first;
        }
        for (; first < containers_.size(); ++first) {
            const Container& around = containers_[first - 1];
            containers_[first].place = found_.addPlace(around.place, around.next - 1);
        }
        const std::uint32_t place = found_.addPlace(containers_.back().place, position);
        found_.addMatch(place);
        return place;
    }

    void end(PlistMatches::Outcome outcome) {
        found_.setOutcome(outcome);
        hasEnded_ = true;
    }

    ValueTest values_;
    KeyTest keys_;
    const std::stop_token& stop_;
    PlistMatches found_;
    /// Those around the current member, outermost first. A match gives places to all of them, so
    /// that `PlistWalk`, which shows the innermost one, does not do.
    std::vector<Container> containers_;
    std::unordered_set<const void*> fruitless_;
    std::uint64_t memberCount_ = 0;
    bool hasEnded_ = false;
};

}  // namespace

PlistMatches PlistSearch::matches(const PlistValue& root, std::string_view query,
                                  const std::stop_token& stop) {
    detail::TextQuery textQuery(query, stop);
    return textQuery.isEmpty() ? PlistMatches() : Search(textQuery, stop).run(root);
}

}  // namespace plist
