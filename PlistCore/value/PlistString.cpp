#include "PlistCore/PlistString.h"

#include "PlistCore/text/UnicodeText.h"
#include "PlistCore/value/PlistBlock.h"

namespace plist {

PlistString::PlistString(std::string_view utf8) {
    const std::uint8_t flags = detail::UnicodeText::isAscii(utf8) ? detail::PlistCell::ascii : 0;
    cell_ = detail::PlistBlock::cellOfBytes(PlistType::string, flags, utf8);
}

int PlistString::compare(const PlistString& other) const {
    return detail::UnicodeText::compare(view(), other.view());
}

bool PlistString::equalsCanonically(const PlistString& left, const PlistString& right) {
    if (left.isAscii() && right.isAscii()) {
        return false;
    }
    return detail::UnicodeText::equal(left.view(), right.view());
}

}  // namespace plist

std::size_t std::hash<plist::PlistString>::operator()(const plist::PlistString& text) const {
    return plist::detail::UnicodeText::hash(text.view());
}
