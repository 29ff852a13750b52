#include <PlistCore/PlistCore.h>

// What is refused elsewhere, done right: shows that the others fail for their one mistake.

using plist::PlistValue;

std::size_t rightUses(std::string_view bytes) {
    const plist::PlistFile file = plist::PlistCodec::read(bytes);
    std::size_t count = file.root.text().size() + file.root.dataValue().size();
    for (const PlistValue& child : file.root.children()) {
        count += child.childCount();
    }
    for (const auto& [key, value] : file.root.entries()) {
        count += key.view().size() + value.childCount();
    }
    const PlistValue* found = file.root.find({"items", 0});
    return found != nullptr ? count : file.root["items"].keys().size();
}

PlistValue rightValues() {
    return PlistValue::array({PlistValue::boolean(true), PlistValue::integer(3),
                              PlistValue::real(0.5), PlistValue::real(1), PlistValue::uid(7),
                              PlistValue::date(0), "text", 5, 0.25, false});
}
