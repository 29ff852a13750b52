#include "app/model/editing/UniqueKeys.h"

#include <string>

#include "app/model/tree/PlistNode.h"

namespace {

constexpr std::uint64_t firstNumber = 2;

}  // namespace

UniqueKeys::UniqueKeys(std::span<const PlistNodePtr> siblings) {
    taken_.reserve(siblings.size());
    for (const PlistNodePtr& sibling : siblings) {
        taken_.insert(sibling->key());
    }
}

PlistString UniqueKeys::take(const PlistString& wanted) {
    if (taken_.insert(wanted).second) {
        return wanted;
    }
    std::uint64_t& number = nextNumbers_.try_emplace(wanted, firstNumber).first->second;
    for (;;) {
        PlistString key(std::string(wanted.view()) + ' ' + std::to_string(number++));
        if (taken_.insert(key).second) {
            return key;
        }
    }
}
