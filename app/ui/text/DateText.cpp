#include "app/ui/text/DateText.h"

#include <QDateTime>
#include <QRegularExpression>
#include <cmath>
#include <optional>

#include "app/model/runtime/Plist.h"

namespace {

constexpr int lastYear = 9999;
/// More than all years from 1 to 9999, and well within what QDateTime can hold.
constexpr double farAway = 1e12;

/// The point in time in the user's zone, if it has a year that people use.
std::optional<QDateTime> localTime(double seconds) {
    const double sinceEpoch = seconds + PlistDate::referenceSince1970;
    if (!(std::fabs(sinceEpoch) < farAway)) {
        return std::nullopt;
    }
    // Whole seconds, rounded down like everywhere else.
    const auto whole = static_cast<qint64>(std::floor(sinceEpoch));
    const QDateTime time = QDateTime::fromSecsSinceEpoch(whole, Qt::LocalTime);
    const int year = time.date().year();
    if (!time.isValid() || year < 1 || year > lastYear) {
        return std::nullopt;
    }
    return time;
}

QString trimmedSeparators(QString format) {
    static const QRegularExpression atEnds(
        QStringLiteral("^[\\s,\u060C\u3001]+|[\\s,\u060C\u3001]+$"));
    return format.remove(atEnds);
}

}  // namespace

QString DateText::abbreviatedDateFormat(const QLocale& locale) {
    static const QRegularExpression weekday(QStringLiteral("d{3,4}[,\u060C]?\\s*"));
    QString format = locale.dateFormat(QLocale::LongFormat);
    format.remove(weekday);
    format.replace(QStringLiteral("MMMM"), QStringLiteral("MMM"));
    return trimmedSeparators(format);
}

QString DateText::standardTimeFormat(const QLocale& locale) {
    static const QRegularExpression zone(QStringLiteral("\\s*[(\\[]?\\bt+\\b[)\\]]?"));
    QString format = locale.timeFormat(QLocale::LongFormat);
    format.remove(zone);
    return trimmedSeparators(format);
}

QString DateText::text(double seconds, const QLocale& locale) {
    const std::optional<QDateTime> time = localTime(seconds);
    if (!time) {
        return QString::fromStdString(PlistDate::formatDate(seconds));
    }
    return QStringLiteral("%1, %2").arg(
        locale.toString(time->date(), abbreviatedDateFormat(locale)),
        locale.toString(time->time(), standardTimeFormat(locale)));
}
