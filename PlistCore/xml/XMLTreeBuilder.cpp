#include "PlistCore/xml/XMLTreeBuilder.h"

namespace plist::detail {

void XMLTreeBuilder::addKey(std::string_view key, std::uint8_t flags) {
    Frame& frame = top();
    frame.awaitsKey = false;
    if (frame.shape != KeyShapes::none) {
        const KeyShapes::Shape next = shapes_.follow(frame.shape, key, flags);
        if (next == KeyShapes::none) {
            shapes_.pushKeys(frame.shape, keys_);
        }
        frame.shape = next;
    }
    if (frame.shape == KeyShapes::none) {
        keys_.push(builder_.string(key, flags));
    }
}

std::string_view XMLTreeBuilder::pendingKey() const noexcept {
    const KeyShapes::Shape shape = top().shape;
    return shape == KeyShapes::none ? keys_.back().bytes() : shapes_.lastKey(shape).bytes();
}

void XMLTreeBuilder::closeDictionary() {
    const Frame& frame = top();
    if (const std::optional<PlistCell> uid = uidOf(frame)) {
        replaceTop(*uid);
        return;
    }
    const auto values = values_.from(frame.firstValue);
    const PlistString* keys = nullptr;
    if (frame.shape == KeyShapes::none) {
        keys = builder_.keyList(keys_.from(frame.firstKey));
    } else if (frame.shape != KeyShapes::root) {
        keys = shapes_.keyList(frame.shape);
    }
    replaceTop(builder_.dictionary(keys, values));
}

void XMLTreeBuilder::closeArray() {
    replaceTop(builder_.array(values_.from(top().firstValue)));
}

/// The archiver's references stand in XML as dictionaries with the one key CF$UID.
std::optional<PlistCell> XMLTreeBuilder::uidOf(const Frame& frame) const noexcept {
    if (values_.size() - frame.firstValue != 1 || pendingKey() != "CF$UID") {
        return std::nullopt;
    }
    const PlistCell& value = values_.back();
    if (value.type() != PlistType::integer) {
        return std::nullopt;
    }
    const bool isNegative =
        !value.has(PlistCell::unsignedNumber) && static_cast<std::int64_t>(value.word()) < 0;
    return isNegative ? std::nullopt : std::optional(PlistCell::ofUid(value.word()));
}

void XMLTreeBuilder::replaceTop(const PlistCell& container) {
    values_.shrink(top().firstValue);
    keys_.shrink(top().firstKey);
    --depth_;
    add(container);
}

}  // namespace plist::detail
