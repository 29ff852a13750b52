#include "tests/PlistCore/support/DeepValues.h"

#include <utility>
#include <vector>

namespace plist {

PlistValue chainOfArrays(std::size_t depth, const PlistValue& innermost) {
    PlistValue chain = innermost;
    for (std::size_t level = 0; level < depth; ++level) {
        std::vector<PlistValue> items;
        items.push_back(std::move(chain));
        chain = PlistValue::array(std::move(items));
    }
    return chain;
}

PlistValue doubledArrays(int depth, const PlistValue& innermost) {
    PlistValue value = innermost;
    for (int level = 0; level < depth; ++level) {
        value = PlistValue::array({value, value});
    }
    return value;
}

}  // namespace plist
