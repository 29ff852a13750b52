#include "app/ui/text/ByteCount.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct Unit {
    const char* name;
    double size;
    int decimals;
};

constexpr std::array<Unit, 6> units = {{
    {QT_TRANSLATE_NOOP("ByteCount", "kB"), 1e3, 0},
    {QT_TRANSLATE_NOOP("ByteCount", "MB"), 1e6, 1},
    {QT_TRANSLATE_NOOP("ByteCount", "GB"), 1e9, 2},
    {QT_TRANSLATE_NOOP("ByteCount", "TB"), 1e12, 2},
    {QT_TRANSLATE_NOOP("ByteCount", "PB"), 1e15, 2},
    {QT_TRANSLATE_NOOP("ByteCount", "EB"), 1e18, 2},
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
                                       QCoreApplication::translate("ByteCount", unit.name));
}

}  // namespace

QString ByteCount::text(qint64 count) {
    if (count <= 0) {
        return QCoreApplication::translate("ByteCount", "Zero kB");
    }
    if (count < 1000) {
        return QCoreApplication::translate("ByteCount", "%n byte(s)", nullptr,
                                           static_cast<int>(count));
    }
    return inUnits(static_cast<double>(count));
}
