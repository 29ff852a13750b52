#include <utility>

#include "PlistCore/PlistCheck.h"
#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistStep.h"
#include "PlistCore/PlistValue.h"

namespace plist {

namespace {

std::vector<PlistValue> childrenOf(const PlistValue& value, std::size_t roomFor = 0) {
    std::vector<PlistValue> children;
    children.reserve(value.childCount() + roomFor);
    children.insert(children.end(), value.children().begin(), value.children().end());
    return children;
}

PlistValue withEntry(const PlistValue& dictionary, std::string_view key, PlistValue child) {
    std::vector<PlistString> keys(dictionary.keys().begin(), dictionary.keys().end());
    std::vector<PlistValue> children = childrenOf(dictionary, 1);
    keys.emplace_back(key);
    children.push_back(std::move(child));
    return PlistValue::dictionary(std::move(keys), std::move(children));
}

PlistValue withoutKey(const PlistValue& dictionary, const PlistString& key) {
    std::vector<PlistEntry> rest;
    for (const auto& [otherKey, child] : dictionary.entries()) {
        if (otherKey != key) {
            rest.push_back({otherKey, child});
        }
    }
    return PlistValue::dictionary(std::move(rest));
}

}  // namespace

PlistValue PlistValue::with(const PlistStep& step, PlistValue child) const {
    const PlistValue* replaced = find(step);
    if (replaced == nullptr) {
        plistCheck(step.isKey() && type() == PlistType::dictionary, "no such key or position");
        return withEntry(*this, step.key(), std::move(child));
    }
    std::vector<PlistValue> changed = childrenOf(*this);
    changed[static_cast<std::size_t>(replaced - children().data())] = std::move(child);
    return type() == PlistType::dictionary ? dictionaryWithKeysOf(*this, std::move(changed))
                                           : array(std::move(changed));
}

PlistValue PlistValue::withAppended(PlistValue item) const {
    plistCheck(type() == PlistType::array, "not an array");
    std::vector<PlistValue> items = childrenOf(*this, 1);
    items.push_back(std::move(item));
    return array(std::move(items));
}

PlistValue PlistValue::without(const PlistStep& step) const {
    const PlistValue* removed = find(step);
    if (removed == nullptr) {
        return *this;
    }
    if (step.isKey()) {
        return withoutKey(*this, step.key());
    }
    const auto position = static_cast<std::ptrdiff_t>(step.position());
    std::vector<PlistValue> rest = childrenOf(*this);
    rest.erase(rest.begin() + position);
    if (type() == PlistType::array) {
        return array(std::move(rest));
    }
    std::vector<PlistString> otherKeys(keys().begin(), keys().end());
    otherKeys.erase(otherKeys.begin() + position);
    return dictionary(std::move(otherKeys), std::move(rest));
}

}  // namespace plist
