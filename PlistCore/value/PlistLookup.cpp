#include <algorithm>
#include <limits>

#include "PlistCore/PlistCheck.h"
#include "PlistCore/PlistStep.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist {

namespace {

/// Bytes that are not valid UTF-8 are not a key.
const PlistValue* childWithKey(const PlistValue& value, std::string_view key) noexcept {
    if (!detail::UnicodeText::isValidUtf8(key)) {
        return nullptr;
    }
    const bool isAscii = detail::UnicodeText::isAscii(key);
    const std::span<const PlistString> keys = value.keys();
    const auto isKey = [key, isAscii](const PlistString& other) {
        return other.view() == key ||
               (!(isAscii && other.isAscii()) && detail::UnicodeText::equal(other.view(), key));
    };
    const auto found = std::ranges::find_if(keys, isKey);
    return found == keys.end() ? nullptr
                               : &value.children()[static_cast<std::size_t>(found - keys.begin())];
}

}  // namespace

const PlistValue* PlistValue::find(const PlistStep& step) const& noexcept {
    if (step.isKey()) {
        return childWithKey(*this, step.key());
    }
    return step.position() < childCount() ? &children()[step.position()] : nullptr;
}

const PlistValue* PlistValue::find(std::initializer_list<PlistStep> path) const& noexcept {
    const PlistValue* current = this;
    for (const PlistStep& step : path) {
        current = current->find(step);
        if (current == nullptr) {
            return nullptr;
        }
    }
    return current;
}

const PlistValue& PlistValue::operator[](const PlistStep& step) const& {
    const PlistValue* child = find(step);
    plistCheck(child != nullptr, "no such key or position");
    return *child;
}

}  // namespace plist
