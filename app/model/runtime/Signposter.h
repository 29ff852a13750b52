#pragma once

#include <QElapsedTimer>
#include <QLoggingCategory>

/// Marks how long the named steps of the application take, in the logging category
/// "com.ventrel.Tabulet". Off by default; QT_LOGGING_RULES="com.ventrel.Tabulet.debug=true" shows
/// one line for each interval. Usable from any thread.
namespace Signposter {

const QLoggingCategory& category();

/// One interval: from its construction to its destruction. Costs next to nothing while the category
/// is off.
class Interval {
public:
    /// `name` must outlive the interval; a literal.
    explicit Interval(const char* name);
    ~Interval();
    Interval(const Interval&) = delete;
    Interval& operator=(const Interval&) = delete;

private:
    const char* name_;
    QElapsedTimer timer_;
};

}  // namespace Signposter
