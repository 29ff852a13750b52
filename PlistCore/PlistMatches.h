#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#pragma GCC visibility push(default)

namespace plist {

/// Where a search found something: places in a value, in the order in which they stand.
///
/// Matches and the containers around them are kept as one list of places, each with a link to the
/// one around it. So common beginnings of paths are stored once, and a match that lies a million
/// arrays deep costs no more than those arrays.
class PlistMatches {
public:
    /// The most matches that are kept, and the most places. By sharing, a small file can describe
    /// more matches than any memory holds; nobody steps through this many.
    static constexpr std::size_t matchLimit = 1'000'000;
    static constexpr std::size_t placeLimit = 4'000'000;

    /// How a search ended.
    enum class Outcome : std::uint8_t {
        complete,      ///< everything was searched
        cancelled,     ///< it was told to stop; the matches so far are here
        limitReached,  ///< the first matches are here; there may be more
    };

    /// A match or a container around one.
    struct Place {
        std::uint32_t container = 0;  ///< which of the places it stands in; unused for the root
        std::uint32_t position = 0;   ///< where in there; unused for the root
        friend bool operator==(const Place&, const Place&) = default;
    };

    /// No matches.
    PlistMatches() : places_(1) {}

    std::size_t size() const noexcept { return matches_.size(); }
    bool isEmpty() const noexcept { return matches_.empty(); }
    Outcome outcome() const noexcept { return outcome_; }

    /// All places. The first one is the root, whether it matches or not; every other one comes
    /// after the container around it, in the order of a walk in depth.
    std::span<const Place> places() const noexcept { return places_; }

    /// Which of the places match, ascending.
    std::span<const std::uint32_t> matches() const noexcept { return matches_; }

    /// The positions that lead from the root to match `index`, which is less than `size()`. Costs
    /// in proportion to the result.
    std::vector<std::int64_t> path(std::size_t index) const;

    /// For the search. Adds a place and returns its number; marks a place, the last one, as a
    /// match. Whether there is room for more is up to the caller.
    std::uint32_t addPlace(std::uint32_t container, std::size_t position);
    void addMatch(std::uint32_t place) { matches_.push_back(place); }
    void setOutcome(Outcome outcome) noexcept { outcome_ = outcome; }

private:
    std::vector<Place> places_;
    std::vector<std::uint32_t> matches_;
    Outcome outcome_ = Outcome::complete;
};

}  // namespace plist

#pragma GCC visibility pop
