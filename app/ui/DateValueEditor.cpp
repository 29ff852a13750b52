#include "app/ui/DateValueEditor.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <cmath>
#include <utility>

#include "PlistCore/PlistDate.h"

namespace {

const QDate firstDay(100, 1, 1);
const QDate lastDay(9999, 12, 31);

/// More than all years of the field, and well within what QDateTime can hold.
constexpr double farAway = 1e12;

/// Whole seconds, rounded down also before the reference date.
QDateTime localTime(double seconds) {
    return QDateTime::fromSecsSinceEpoch(
        static_cast<qint64>(std::floor(seconds + PlistDate::referenceSince1970)), Qt::LocalTime);
}

double secondsOf(const QDateTime& time) {
    return std::floor(static_cast<double>(time.toMSecsSinceEpoch()) / 1000) -
           PlistDate::referenceSince1970;
}

QString formatFor(const QLocale& locale) {
    QString date = locale.dateFormat(QLocale::ShortFormat);
    if (!date.contains(QStringLiteral("yyyy"))) {
        // Two digits do not tell the century.
        date.replace(QStringLiteral("yy"), QStringLiteral("yyyy"));
    }
    return date + u' ' + locale.timeFormat(QLocale::ShortFormat);
}

bool endsEdit(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

}  // namespace

bool DateValueEditor::canEdit(double seconds) {
    if (!(std::fabs(seconds) < farAway)) {
        return false;
    }
    const QDate day = localTime(seconds).date();
    return day >= firstDay && day <= lastDay;
}

DateValueEditor::DateValueEditor(double seconds, std::function<void(double)> change,
                                 QWidget* parent)
    : QDateTimeEdit(parent), change_(std::move(change)) {
    setAccessibleName(tr("Date"));
    setFrame(false);
    setAutoFillBackground(true);
    setCalendarPopup(true);
    setDisplayFormat(formatFor(locale()));
    setDateRange(firstDay, lastDay);
    // One change for a number that is typed, not one for each digit.
    setKeyboardTracking(false);
    setDateTime(localTime(seconds));
    connect(this, &QDateTimeEdit::dateTimeChanged, this,
            [this](const QDateTime& time) { change_(secondsOf(time)); });
}

void DateValueEditor::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            commit();
            break;
        case Qt::Key_Escape:
            end();
            break;
        default:
            QDateTimeEdit::keyPressEvent(event);
    }
}

void DateValueEditor::focusOutEvent(QFocusEvent* event) {
    if (endsEdit(event->reason())) {
        commit();
    }
    QDateTimeEdit::focusOutEvent(event);
}

void DateValueEditor::commit() {
    if (!hasEnded_) {
        interpretText();
        end();
    }
}

void DateValueEditor::abandon() {
    hasEnded_ = true;
    // The toolkit reads what is half typed when the focus leaves; nobody shall hear of it.
    disconnect(this, &QDateTimeEdit::dateTimeChanged, nullptr, nullptr);
}

void DateValueEditor::end() {
    if (!hasEnded_) {
        abandon();
        Q_EMIT finished();
    }
}
