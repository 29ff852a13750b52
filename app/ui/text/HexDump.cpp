#include "app/ui/text/HexDump.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

#include "app/ui/text/ByteCount.h"
#include "app/ui/text/DataSummary.h"

namespace {

constexpr std::size_t lineSize = 16;

}  // namespace

QString HexDump::text(std::span<const std::uint8_t> bytes) {
    const std::span<const std::uint8_t> shown = bytes.first(std::min(bytes.size(), limit));
    QStringList lines;
    for (std::size_t at = 0; at < shown.size(); at += lineSize) {
        const auto line = shown.subspan(at, std::min(lineSize, shown.size() - at));
        lines += QStringLiteral("%1  ").arg(at, 8, 16, QLatin1Char('0')).toUpper() +
                 DataSummary::hexadecimal(line);
    }
    return lines.join(u'\n');
}

QString HexDump::note(std::span<const std::uint8_t> bytes) {
    return bytes.size() > limit ? QCoreApplication::translate("HexDump", "Showing the first %1.")
                                      .arg(ByteCount::text(static_cast<qint64>(limit)))
                                : QString();
}
