#pragma once

#include <QLocale>
#include <QString>

/// Dates for people: in the user's locale and time zone, an abbreviated date and a time with
/// seconds ("Apr 18, 2026, 9:30:00 AM").
namespace DateText {

/// The date `seconds` after 2001-01-01T00:00:00Z. Years outside 1 to 9999, for which calendars and
/// time zones mean nothing, are shown in the form "YYYY-MM-DDTHH:MM:SSZ" of the file format.
QString text(double seconds, const QLocale& locale = QLocale());

/// The locale's long form of a date, without the weekday and with the short name of the month: Qt
/// offers a long and a short form only.
QString abbreviatedDateFormat(const QLocale& locale);

/// The locale's long form of a time without the name of the time zone.
QString standardTimeFormat(const QLocale& locale);

}  // namespace DateText
