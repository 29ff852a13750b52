#include "app/ui/text/DataSummary.h"

#include <algorithm>
#include <array>

#include "app/ui/text/ByteCount.h"

namespace {

constexpr std::size_t shownBytes = 8;
constexpr std::size_t groupSize = 4;
constexpr std::array<char16_t, 16> digits = {u'0', u'1', u'2', u'3', u'4', u'5', u'6', u'7',
                                             u'8', u'9', u'A', u'B', u'C', u'D', u'E', u'F'};

}  // namespace

QString DataSummary::hexadecimal(std::span<const std::uint8_t> bytes) {
    QString text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0 && i % groupSize == 0) {
            text += u' ';
        }
        text += QChar(digits[bytes[i] >> 4]);
        text += QChar(digits[bytes[i] & 0xF]);
    }
    return text;
}

QString DataSummary::text(std::span<const std::uint8_t> bytes) {
    QString summary = ByteCount::text(static_cast<qint64>(bytes.size()));
    if (bytes.empty()) {
        return summary;
    }
    summary += QStringLiteral(" \u00B7 ");
    summary += hexadecimal(bytes.first(std::min(bytes.size(), shownBytes)));
    if (bytes.size() > shownBytes) {
        summary += u'\u2026';
    }
    return summary;
}
