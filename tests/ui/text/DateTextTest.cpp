#include <QTest>
#include <limits>

#include "app/ui/text/DateText.h"
#include "tests/support/TestProgram.h"

class DateTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsTheLocale_data() {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("time");
        const auto add = [](const char* name, const char* date, const char* time) {
            QTest::newRow(name) << QLocale(QLatin1String(name)) << QString::fromUtf8(date)
                                << QString::fromUtf8(time);
        };
        add("C", "d MMM yyyy", "HH:mm:ss");
        add("en_US", "MMM d, yyyy", "h:mm:ss AP");
        add("en_GB", "d MMM yyyy", "HH:mm:ss");
        add("de_DE", "d. MMM yyyy", "HH:mm:ss");
        add("fr_FR", "d MMM yyyy", "HH:mm:ss");
        add("ja_JP", "yyyy年M月d日", "H時mm分ss秒");
        add("hu_HU", "yyyy. MMM d.", "H:mm:ss");
    }

    void followsTheLocale() {
        QFETCH(QLocale, locale);
        QTEST(DateText::abbreviatedDateFormat(locale), "date");
        QTEST(DateText::standardTimeFormat(locale), "time");
    }

    /// No locale may be left with the name of a weekday or a time zone, or without a part.
    void suitsAllLocales() {
        const QList<QLocale> locales =
            QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
        QVERIFY(locales.size() > 100);
        for (const QLocale& locale : locales) {
            const QString date = DateText::abbreviatedDateFormat(locale);
            QVERIFY2(!date.contains(QStringLiteral("ddd")), qPrintable(locale.name()));
            QVERIFY2(!date.contains(QStringLiteral("MMMM")), qPrintable(locale.name()));
            QVERIFY2(date.contains(u'd') && date.contains(u'M') && date.contains(u'y'),
                     qPrintable(locale.name() + u' ' + date));
            const QString time = DateText::standardTimeFormat(locale);
            QVERIFY2(time.contains(u's'), qPrintable(locale.name() + u' ' + time));
            QVERIFY2(!time.endsWith(u't'), qPrintable(locale.name() + u' ' + time));
        }
    }

    void showsDateAndTime() {
        const QLocale english(QLocale::English, QLocale::UnitedStates);
        QCOMPARE(DateText::text(0, english), QStringLiteral("Jan 1, 2001, 12:00:00 AM"));
        QCOMPARE(DateText::text(798'197'400, english), QStringLiteral("Apr 18, 2026, 9:30:00 AM"));
    }

    void roundsDown() {
        const QLocale locale = QLocale::c();
        QCOMPARE(DateText::text(0.75, locale), QStringLiteral("1 Jan 2001, 00:00:00"));
        QCOMPARE(DateText::text(-0.5, locale), QStringLiteral("31 Dec 2000, 23:59:59"));
    }

    void fallsBackToTheTextOfTheFile_data() {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("text");
        // 9999-12-31T23:59:59Z and the second after it.
        QTest::newRow("last") << 252'423'993'599.0 << QStringLiteral("31 Dec 9999, 23:59:59");
        QTest::newRow("after") << 252'423'993'600.0 << QStringLiteral("10000-01-01T00:00:00Z");
        QTest::newRow("year 1") << -63'113'904'000.0 << QStringLiteral("1 Jan 0001, 00:00:00");
        QTest::newRow("year 0") << -63'113'904'001.0 << QStringLiteral("0000-12-31T23:59:59Z");
        QTest::newRow("not a number")
            << std::numeric_limits<double>::quiet_NaN() << QStringLiteral("1970-01-01T00:00:00Z");
    }

    void fallsBackToTheTextOfTheFile() {
        QFETCH(double, seconds);
        QTEST(DateText::text(seconds, QLocale::c()), "text");
    }

    void standsInfinity() {
        const double infinity = std::numeric_limits<double>::infinity();
        QVERIFY(DateText::text(infinity).endsWith(u'Z'));
        QVERIFY(DateText::text(-infinity).startsWith(u'-'));
    }
};

const RegisteredTest<DateTextTest> registered;
#include "DateTextTest.moc"
