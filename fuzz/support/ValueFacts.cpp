#include "fuzz/support/ValueFacts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace plist {

namespace {

constexpr std::uint64_t hugeCount = 1 << 16;

/// Whole seconds within this distance are exact, whichever instant they are counted from.
constexpr double exactSeconds = 4e15;

bool readsAsUid(const PlistValue& value) {
    return value.type() == PlistType::dictionary && value.childCount() == 1 &&
           value.keys().front().view() == "CF$UID" &&
           value.children().front().type() == PlistType::integer &&
           value.children().front().integerValue() >= 0;
}

void addDateFacts(ValueFacts& facts, double seconds) {
    if (std::isnan(seconds)) {
        facts.holdsNaN = true;
    } else if (std::abs(seconds) > exactSeconds) {
        facts.holdsFarDate = true;
    } else if (seconds != std::floor(seconds)) {
        facts.losesInXml = true;
    }
}

void addFacts(ValueFacts& facts, const PlistValue& value) {
    switch (value.type()) {
        case PlistType::dictionary:
            facts.losesInXml = facts.losesInXml || readsAsUid(value);
            break;
        case PlistType::real:
            facts.holdsNaN = facts.holdsNaN || std::isnan(value.realValue());
            break;
        case PlistType::date:
            addDateFacts(facts, value.dateValue());
            break;
        default:
            break;
    }
}

struct Visit {
    const PlistValue* value;
    std::size_t depth;
};

}  // namespace

ValueFacts factsOf(const PlistValue& root) {
    ValueFacts facts;
    if (root.expandedCount() > hugeCount) {
        facts.isHuge = true;
        return facts;
    }
    std::vector<Visit> pending = {{&root, 0}};
    while (!pending.empty()) {
        const Visit visit = pending.back();
        pending.pop_back();
        addFacts(facts, *visit.value);
        const std::size_t depth = visit.depth + (visit.value->isContainer() ? 1 : 0);
        facts.depth = std::max(facts.depth, depth);
        for (const PlistValue& child : visit.value->children()) {
            pending.push_back({&child, depth});
        }
    }
    return facts;
}

}  // namespace plist
