#include "app/model/search/MatchedNodes.h"

#include <limits>
#include <utility>

#include "app/model/search/MatchResolver.h"

MatchedNodes MatchedNodes::resolve(PlistNode& root, PlistMatches found, std::int64_t limit) {
    MatchResolver resolver(root, std::move(found), limit);
    while (!resolver.resolve(std::numeric_limits<std::uint32_t>::max())) {
    }
    return resolver.take();
}
