#include <PlistCore/PlistCore.h>

std::size_t countOf(std::string_view bytes) {
    std::size_t count = 0;
    for (const plist::PlistValue& child : plist::PlistCodec::read(bytes).root.children()) {
        count += child.childCount();
    }
    return count;
}
