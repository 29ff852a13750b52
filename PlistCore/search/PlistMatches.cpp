#include "PlistCore/PlistMatches.h"

#include <algorithm>

namespace plist {

std::vector<std::int64_t> PlistMatches::path(std::size_t index) const {
    std::vector<std::int64_t> positions;
    for (std::uint32_t place = matches_[index]; place != 0; place = places_[place].container) {
        positions.push_back(places_[place].position);
    }
    std::ranges::reverse(positions);
    return positions;
}

std::uint32_t PlistMatches::addPlace(std::uint32_t container, std::size_t position) {
    places_.push_back({container, static_cast<std::uint32_t>(position)});
    return static_cast<std::uint32_t>(places_.size() - 1);
}

}  // namespace plist
