#include "app/ui/text/DataText.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>

#include "app/ui/text/OwnDirection.h"

namespace {

struct Unit {
    const char* name;
    double size;
    int decimals;
};

constexpr std::array<Unit, 6> units = {{
    {QT_TRANSLATE_NOOP("DataText", "kB"), 1e3, 0},
    {QT_TRANSLATE_NOOP("DataText", "MB"), 1e6, 1},
    {QT_TRANSLATE_NOOP("DataText", "GB"), 1e9, 2},
    {QT_TRANSLATE_NOOP("DataText", "TB"), 1e12, 2},
    {QT_TRANSLATE_NOOP("DataText", "PB"), 1e15, 2},
    {QT_TRANSLATE_NOOP("DataText", "EB"), 1e18, 2},
}};

double roundedTo(double number, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return std::round(number * scale) / scale;
}

QString decimalText(double number, int decimals) {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    for (; decimals > 0 && number == roundedTo(number, decimals - 1); --decimals) {
    }
    return locale.toString(number, 'f', decimals);
}

QString inUnits(double count) {
    const auto fits = [count](const Unit& unit) {
        return roundedTo(count / unit.size, unit.decimals) < 1000;
    };
    const auto found = std::find_if(units.begin(), units.end(), fits);
    const Unit& unit = found == units.end() ? units.back() : *found;
    const double number = roundedTo(count / unit.size, unit.decimals);
    return QStringLiteral("%1 %2").arg(decimalText(number, unit.decimals),
                                       QCoreApplication::translate("DataText", unit.name));
}

constexpr std::size_t shownBytes = 8;
constexpr std::size_t groupSize = 4;
constexpr std::array<char16_t, 16> digits = {u'0', u'1', u'2', u'3', u'4', u'5', u'6', u'7',
                                             u'8', u'9', u'A', u'B', u'C', u'D', u'E', u'F'};

constexpr std::size_t lineSize = 16;

/// Two upper-case digits for each byte, with a space between groups of four bytes.
QString hexadecimal(std::span<const std::uint8_t> bytes) {
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

}  // namespace

QString DataText::size(qint64 count) {
    if (count <= 0) {
        return QCoreApplication::translate("DataText", "Zero kB");
    }
    if (count < 1000) {
        // lupdate overlooks a text that is followed by a cast with angle brackets.
        const auto number = static_cast<int>(count);
        return QCoreApplication::translate("DataText", "%n byte(s)", nullptr, number);
    }
    return inUnits(static_cast<double>(count));
}

QString DataText::summary(std::span<const std::uint8_t> bytes) {
    QString text = size(static_cast<qint64>(bytes.size()));
    if (bytes.empty()) {
        return text;
    }
    text += QStringLiteral(" \u00B7 ");
    QString content = hexadecimal(bytes.first(std::min(bytes.size(), shownBytes)));
    if (bytes.size() > shownBytes) {
        content += u'\u2026';
    }
    return text + OwnDirection::isolated(content);
}

QString DataText::dump(std::span<const std::uint8_t> bytes) {
    const std::span<const std::uint8_t> shown = bytes.first(std::min(bytes.size(), dumpLimit));
    QStringList lines;
    for (std::size_t at = 0; at < shown.size(); at += lineSize) {
        const auto line = shown.subspan(at, std::min(lineSize, shown.size() - at));
        lines +=
            QStringLiteral("%1  ").arg(at, 8, 16, QLatin1Char('0')).toUpper() + hexadecimal(line);
    }
    return lines.join(u'\n');
}

QString DataText::dumpNote(std::span<const std::uint8_t> bytes) {
    return bytes.size() > dumpLimit
               ? QCoreApplication::translate("DataText", "Showing the first %1.")
                     .arg(size(static_cast<qint64>(dumpLimit)))
               : QString();
}
