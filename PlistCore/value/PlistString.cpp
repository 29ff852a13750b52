#include "PlistCore/PlistString.h"

#include "PlistCore/text/UnicodeText.h"
#include "PlistCore/value/PlistBlock.h"

PlistString::PlistString(std::string_view utf8) {
    const std::uint8_t flags = UnicodeText::isAscii(utf8) ? PlistCell::ascii : 0;
    cell_ = PlistBlock::cellOfBytes(PlistType::string, flags, utf8);
}

bool PlistString::equalsCanonically(const PlistString& left, const PlistString& right) {
    if (left.isAscii() && right.isAscii()) {
        return false;
    }
    return UnicodeText::equal(left.view(), right.view());
}

std::size_t std::hash<PlistString>::operator()(const PlistString& text) const {
    return UnicodeText::hash(text.view());
}
