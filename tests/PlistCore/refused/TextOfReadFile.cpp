#include <PlistCore/PlistCore.h>

std::size_t sizeOf(std::string_view bytes) {
    return plist::PlistCodec::read(bytes).root.text().size();
}
