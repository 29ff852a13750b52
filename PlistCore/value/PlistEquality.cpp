#include "PlistCore/value/PlistEquality.h"

#include <cstddef>
#include <functional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "PlistCore/PlistString.h"
#include "PlistCore/PlistValue.h"

namespace plist::detail {

namespace {

/// From this many containers on, pairs that were seen are remembered. Below it nothing is worth
/// remembering.
constexpr std::size_t memoryThreshold = 100000;

/// Walks two values at once and in any order, which `PlistWalk` does not.
class Comparison {
public:
    bool equal(const PlistValue& left, const PlistValue& right) {
        if (!admit(left, right)) {
            return false;
        }
        while (!pending_.empty()) {
            const auto [a, b] = pending_.back();
            pending_.pop_back();
            if (!childrenEqual(*a, *b)) {
                return false;
            }
        }
        return true;
    }

private:
    using Pair = std::pair<const PlistValue*, const PlistValue*>;
    using Places = std::pair<const void*, const void*>;
    struct PlacesHash {
        std::size_t operator()(const Places& places) const noexcept {
            const std::hash<const void*> hash;
            return hash(places.first) * 0x9E3779B97F4A7C15U + hash(places.second);
        }
    };

    /// Compares scalars and counts at once; puts off the children of containers. An inequality
    /// found anywhere ends the whole comparison, so a pair of containers that was put off before
    /// need not be looked at again.
    bool admit(const PlistValue& left, const PlistValue& right) {
        if (left.type() != right.type()) {
            return false;
        }
        if (!left.isContainer()) {
            return scalarsEqual(left, right);
        }
        if (left.childCount() != right.childCount()) {
            return false;
        }
        if (left.childCount() == 0 || isSameWithoutNaN(left, right) || isKnown(left, right)) {
            return true;
        }
        pending_.emplace_back(&left, &right);
        return true;
    }

    bool childrenEqual(const PlistValue& left, const PlistValue& right) {
        if (!keysEqual(left, right)) {
            return false;
        }
        const auto others = right.children();
        std::size_t index = 0;
        for (const PlistValue& child : left.children()) {
            if (!admit(child, others[index++])) {
                return false;
            }
        }
        return true;
    }

    static bool keysEqual(const PlistValue& left, const PlistValue& right) {
        const auto keys = left.keys();
        const auto others = right.keys();
        if (keys.data() == others.data()) {
            return true;
        }
        for (std::size_t index = 0; index < keys.size(); ++index) {
            if (!(keys[index] == others[index])) {
                return false;
            }
        }
        return true;
    }

    static bool scalarsEqual(const PlistValue& left, const PlistValue& right) {
        switch (left.type()) {
            case PlistType::string:
                return left.cell().bytes() == right.cell().bytes() ||
                       left.stringValue() == right.stringValue();
            case PlistType::data:
                return left.cell().bytes() == right.cell().bytes();
            case PlistType::real:
                return left.realValue() == right.realValue();
            case PlistType::date:
                return left.dateValue() == right.dateValue();
            default:
                return left.isIdenticalTo(right);
        }
    }

    static bool isSameWithoutNaN(const PlistValue& left, const PlistValue& right) {
        return left.cell().pointer() == right.cell().pointer() &&
               !left.cell().has(PlistCell::holdsNaN);
    }

    bool isKnown(const PlistValue& left, const PlistValue& right) {
        if (++containers_ < memoryThreshold) {
            return false;
        }
        return !known_.emplace(left.cell().pointer(), right.cell().pointer()).second;
    }

    std::vector<Pair> pending_;
    std::unordered_set<Places, PlacesHash> known_;
    std::size_t containers_ = 0;
};

}  // namespace

bool PlistEquality::equal(const PlistValue& left, const PlistValue& right) {
    return Comparison().equal(left, right);
}

}  // namespace plist::detail
