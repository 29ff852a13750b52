#include "app/ui/editors/DateValueEditor.h"

#include <QCalendarWidget>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStyle>
#include <QToolButton>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/model/runtime/Plist.h"
#include "app/ui/editors/CellField.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/look/Colors.h"

namespace {

const QDate firstDay(100, 1, 1);
const QDate lastDay(9999, 12, 31);

/// Beyond all years of the field, and well within what QDateTime can hold.
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
        // Two digits leave the century open.
        date.replace(QStringLiteral("yy"), QStringLiteral("yyyy"));
    }
    QString time = locale.timeFormat(QLocale::ShortFormat);
    // The short form of a few locales has seconds.
    static const QRegularExpression seconds(QStringLiteral("[:.]ss?"));
    return date + u' ' + time.remove(seconds);
}

/// The arrow of the button with the month's name would else be drawn over the end of the name.
void makeRoomForArrow(const QCalendarWidget& calendar) {
    constexpr int months = 12;
    auto* button = calendar.findChild<QToolButton*>(QStringLiteral("qt_calendar_monthbutton"));
    if (button == nullptr) {
        return;
    }
    int widest = 0;
    for (int month = 1; month <= months; ++month) {
        const QString name = calendar.locale().standaloneMonthName(month);
        widest = std::max(widest, button->fontMetrics().horizontalAdvance(name));
    }
    // The name stands in the middle.
    const int arrow = button->style()->pixelMetric(QStyle::PM_MenuButtonIndicator);
    button->setMinimumWidth(widest + 3 * arrow);
}

/// Makes a calendar readable and its edge visible over the rows, in light and dark.
void styleCalendar(QCalendarWidget& calendar) {
    // The toolkit's red has too little contrast.
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
        calendar.setWeekdayTextFormat(day, {});
    }
    // The margins around it show the background of the calendar, as a frame.
    QPalette colors;
    colors.setColor(QPalette::Window, Colors::secondary(calendar.palette(), QPalette::Active,
                                                        QPalette::Text, QPalette::Base));
    calendar.setPalette(colors);
    calendar.setAutoFillBackground(true);
    makeRoomForArrow(calendar);
    const QSize size = calendar.sizeHint();
    calendar.setContentsMargins(1, 1, 1, 1);
    calendar.setMinimumSize(size.grownBy(calendar.contentsMargins()));
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
    styleCalendar(*calendarWidget());
    // One change for each number typed, not for each digit.
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
    if (CellField::endsEdit(event->reason())) {
        commit();
    }
    QDateTimeEdit::focusOutEvent(event);
}

/// The date is where the cell shows it, whatever margin the style adds.
void DateValueEditor::resizeEvent(QResizeEvent* event) {
    QDateTimeEdit::resizeEvent(event);
    QLineEdit& line = *lineEdit();
    const int free = layoutDirection() == Qt::RightToLeft ? width() - line.geometry().right() - 1
                                                          : line.geometry().left();
    const int missing =
        std::max(0, CellMetrics(font()).padding() - free - CellField::ownTextMargin);
    // The toolkit does not mirror text margins.
    line.setTextMargins(layoutDirection() == Qt::RightToLeft ? QMargins(0, 0, missing, 0)
                                                             : QMargins(missing, 0, 0, 0));
}

void DateValueEditor::commit() {
    if (!hasEnded_) {
        interpretText();
        end();
    }
}

void DateValueEditor::abandon() {
    hasEnded_ = true;
    // The toolkit interprets what is half typed when the focus leaves; that must not be reported.
    disconnect(this, &QDateTimeEdit::dateTimeChanged, nullptr, nullptr);
}

void DateValueEditor::end() {
    if (!hasEnded_) {
        abandon();
        Q_EMIT finished();
    }
}
