#include <QCalendarWidget>
#include <QDateTime>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTest>
#include <QTextFormat>
#include <QToolButton>
#include <ctime>
#include <limits>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/ui/editors/DateValueEditor.h"
#include "app/ui/look/Colors.h"
#include "tests/ui/support/UiTest.h"

namespace {

double secondsAt(const char* text) {
    return *PlistDate::parseDate(text);
}

/// A window with a field, and a button beside it.
struct Window {
    explicit Window(double seconds) : button(new QPushButton(&widget)) {
        button->setGeometry(0, 50, 100, 30);
        field = new DateValueEditor(
            seconds, [this](double chosen) { changes.push_back(chosen); }, &widget);
        field->setGeometry(0, 0, 250, 30);
        widget.resize(300, 100);
        widget.show();
        QVERIFY(QTest::qWaitForWindowActive(&widget));
        field->setFocus();
    }

    QWidget widget;
    QPushButton* button;
    DateValueEditor* field = nullptr;
    std::vector<double> changes;
};

/// Where the style puts the arrow that opens the calendar.
QRect calendarButton(const DateValueEditor& field) {
    QStyleOptionComboBox option;
    option.initFrom(&field);
    option.editable = true;
    return field.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow,
                                         &field);
}

}  // namespace

class DateValueEditorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsDateHoursAndMinutes() {
        const Window window(secondsAt("2026-04-18T09:30:45Z"));
        QCOMPARE(window.field->accessibleName(), QStringLiteral("Date"));
        QCOMPARE(window.field->displayedSections(),
                 QDateTimeEdit::YearSection | QDateTimeEdit::MonthSection |
                     QDateTimeEdit::DaySection | QDateTimeEdit::HourSection |
                     QDateTimeEdit::MinuteSection);
        QVERIFY(window.field->text().contains(QStringLiteral("2026")));
        QVERIFY(window.field->text().contains(QStringLiteral("30")));
        QVERIFY(window.changes.empty());
    }

    /// The arrow of the button stands behind the name, in every month.
    void theCalendarHasRoomForEachMonth() {
        constexpr int arrow = 12;
        const Window window(secondsAt("2026-09-18T09:30:45Z"));
        const QCalendarWidget& calendar = *window.field->calendarWidget();
        const auto* button =
            calendar.findChild<QToolButton*>(QStringLiteral("qt_calendar_monthbutton"));
        QVERIFY(button != nullptr);
        for (int month = 1; month <= 12; ++month) {
            const QString name = calendar.locale().standaloneMonthName(month);
            const int free = button->minimumWidth() - button->fontMetrics().horizontalAdvance(name);
            QVERIFY2(free / 2 >= arrow, qPrintable(name));
        }
    }

    void followsLocaleAndTimeZone() {
        qputenv("TZ", "America/New_York");
        tzset();
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const Window window(secondsAt("2026-04-18T02:30:00Z"));
        const QString text = window.field->text();
        window.field->setSelectedSection(QDateTimeEdit::HourSection);
        QTest::keyClick(window.field, Qt::Key_Up);
        qputenv("TZ", "UTC");
        tzset();
        QLocale::setDefault(QLocale::c());
        QVERIFY2(text.startsWith(QStringLiteral("17.04.2026 22:30")), qPrintable(text));
        QCOMPARE(window.changes, std::vector<double>{secondsAt("2026-04-18T03:30:00Z")});
    }

    void changesNothingByItself() {
        Window window(secondsAt("2026-04-18T09:30:00Z") + 0.75);
        QTest::keyClick(window.field, Qt::Key_Right);
        QTest::keyClick(window.field, Qt::Key_Return);
        QVERIFY(window.changes.empty());
        Window other(-0.5);
        other.button->setFocus(Qt::MouseFocusReason);
        QVERIFY(other.changes.empty());
    }

    void keepsSecondsAndDropsFractions() {
        Window window(secondsAt("2026-04-18T09:30:45Z") + 0.75);
        window.field->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClick(window.field, Qt::Key_Up);
        QCOMPARE(window.changes, std::vector<double>{secondsAt("2026-04-18T09:31:45Z")});
    }

    void roundsDownBeforeTheReferenceDate() {
        Window window(-0.5);
        window.field->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClick(window.field, Qt::Key_Down);
        QCOMPARE(window.changes, std::vector<double>{-61.0});
    }

    void escapeEnds() {
        const Window window(0);
        const QSignalSpy finished(window.field, &DateValueEditor::finished);
        QTest::keyClick(window.field, Qt::Key_Escape);
        QCOMPARE(finished.count(), 1);
        window.button->setFocus(Qt::MouseFocusReason);
        QCOMPARE(finished.count(), 1);
        QVERIFY(window.changes.empty());
    }

    void losingTheFocusEnds() {
        const Window window(0);
        const QSignalSpy finished(window.field, &DateValueEditor::finished);
        QFocusEvent popup(QEvent::FocusOut, Qt::PopupFocusReason);
        QCoreApplication::sendEvent(window.field, &popup);
        QCOMPARE(finished.count(), 0);
        window.button->setFocus(Qt::MouseFocusReason);
        QCOMPARE(finished.count(), 1);
    }

    void theCalendarIsReadable() {
        const Window window(0);
        const QCalendarWidget& calendar = *window.field->calendarWidget();
        for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
            QVERIFY(!calendar.weekdayTextFormat(day).hasProperty(QTextFormat::ForegroundBrush));
        }
        QCOMPARE(calendar.contentsMargins(), QMargins(1, 1, 1, 1));
        QVERIFY(calendar.autoFillBackground());
        const QPalette colors = calendar.palette();
        QVERIFY(Colors::contrast(colors.color(QPalette::Window), colors.color(QPalette::Base)) >=
                3);
    }

    void theCalendarReachesAsFarAsTheField() {
        const Window window(secondsAt("0100-01-02T00:00:00Z"));
        QTest::mouseClick(window.field, Qt::LeftButton, {}, calendarButton(*window.field).center());
        const QCalendarWidget& calendar = *window.field->calendarWidget();
        QTRY_VERIFY(calendar.isVisible());
        QCOMPARE(calendar.minimumDate(), QDate(100, 1, 1));
        QCOMPARE(calendar.maximumDate(), QDate(9999, 12, 31));
        QVERIFY(window.changes.empty());
    }

    void knowsItsRange() {
        QVERIFY(DateValueEditor::canEdit(0));
        QVERIFY(DateValueEditor::canEdit(secondsAt("0100-01-02T00:00:00Z")));
        QVERIFY(!DateValueEditor::canEdit(secondsAt("0099-12-30T00:00:00Z")));
        QVERIFY(DateValueEditor::canEdit(secondsAt("9999-12-30T00:00:00Z")));
        QVERIFY(!DateValueEditor::canEdit(secondsAt("9999-12-31T23:59:59Z") + 200'000));
        QVERIFY(!DateValueEditor::canEdit(1e300));
        QVERIFY(!DateValueEditor::canEdit(-std::numeric_limits<double>::infinity()));
        QVERIFY(!DateValueEditor::canEdit(std::numeric_limits<double>::quiet_NaN()));
        const Window early(secondsAt("0100-01-02T00:00:00Z"));
        QVERIFY(early.field->text().contains(QStringLiteral("100")));
    }
};

const RegisteredUiTest<DateValueEditorTest> registered;
#include "DateValueEditorTest.moc"
