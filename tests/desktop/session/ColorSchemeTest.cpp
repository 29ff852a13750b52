#include <QSignalSpy>
#include <QTest>

#include "app/desktop/session/ColorScheme.h"
#include "tests/desktop/support/SettingsPortal.h"

using Preference = ColorScheme::Preference;

namespace {

const QString group = QStringLiteral("org.freedesktop.appearance");
const QString key = QStringLiteral("color-scheme");

}  // namespace

class ColorSchemeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasNoPreferenceWithoutBus() {
        const ColorScheme scheme{QDBusConnection(QStringLiteral("no such connection"))};
        QCOMPARE(scheme.preference(), Preference::none);
    }

    void asksThePortal_data() {
        QTest::addColumn<uint>("answer");
        QTest::addColumn<Preference>("preference");
        QTest::newRow("dark") << 1U << Preference::dark;
        QTest::newRow("light") << 2U << Preference::light;
    }

    void asksThePortal() {
        QFETCH(uint, answer);
        QFETCH(Preference, preference);
        SettingsPortal portal(answer);
        const ColorScheme scheme(portal.connection());
        QSignalSpy changed(&scheme, &ColorScheme::preferenceChanged);
        QVERIFY(changed.wait());
        QCOMPARE(scheme.preference(), preference);
    }

    void followsChanges() {
        SettingsPortal portal(1);
        const ColorScheme scheme(portal.connection());
        QSignalSpy changed(&scheme, &ColorScheme::preferenceChanged);
        QVERIFY(changed.wait());
        portal.set(group, key, 0);
        QVERIFY(changed.wait());
        QCOMPARE(scheme.preference(), Preference::none);
        // Neither another setting nor a value that stands for nothing changes anything.
        portal.set(QStringLiteral("org.freedesktop.other"), key, 1);
        portal.set(group, QStringLiteral("accent-color"), 1);
        portal.set(group, key, 7);
        portal.set(group, key, 2);
        QVERIFY(changed.wait());
        QCOMPARE(changed.count(), 3);
        QCOMPARE(scheme.preference(), Preference::light);
    }
};

QTEST_GUILESS_MAIN(ColorSchemeTest)
#include "ColorSchemeTest.moc"
