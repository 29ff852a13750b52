#include "PlistCore/PlistString.h"

#include "PlistCore/PlistCheck.h"
#include "PlistCore/text/UnicodeText.h"
#include "PlistCore/value/PlistBlock.h"

namespace plist {

PlistString::PlistString(std::string_view utf8) {
    const bool isAscii = detail::UnicodeText::isAscii(utf8);
    plistCheck(isAscii || detail::UnicodeText::isValidUtf8(utf8), "a text that is not UTF-8");
    const std::uint8_t flags = isAscii ? detail::PlistCell::ascii : 0;
    cell_ = detail::PlistBlock::cellOfBytes(PlistType::string, flags, utf8);
}

std::optional<PlistString> PlistString::fromUtf8(std::string_view bytes) {
    if (!detail::UnicodeText::isValidUtf8(bytes)) {
        return std::nullopt;
    }
    return PlistString(bytes);
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

std::size_t PlistString::hash() const {
    return detail::UnicodeText::hash(view());
}

}  // namespace plist
