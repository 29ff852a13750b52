#include <QSignalSpy>
#include <QTest>
#include <memory>

#include "app/desktop/session/ColorScheme.h"
#include "tests/desktop/support/PrivateBus.h"
#include "tests/desktop/support/SettingsPortal.h"
#include "tests/support/TestProgram.h"

using Preference = ColorScheme::Preference;

namespace {

const QString group = QStringLiteral("org.freedesktop.appearance");
const QString key = QStringLiteral("color-scheme");

}  // namespace

class ColorSchemeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        bus_ = std::make_unique<PrivateBus>();
        if (!bus_->isRunning()) {
            QSKIP("The program dbus-daemon is not installed, so there is no bus to test with.");
        }
    }

    void cleanup() { bus_.reset(); }

    /// The first, while no message of any other has made its types known in this process.
    void followsChanges() {
        SettingsPortal portal(*bus_, 0);
        const ColorScheme scheme(bus_->connect());
        QSignalSpy changed(&scheme, &ColorScheme::preferenceChanged);
        portal.set(group, key, 1);
        QVERIFY(changed.wait());
        QCOMPARE(scheme.preference(), Preference::dark);
        portal.set(group, key, 2);
        QVERIFY(changed.wait());
        QCOMPARE(scheme.preference(), Preference::light);
        portal.set(group, key, 0);
        QVERIFY(changed.wait());
        QCOMPARE(scheme.preference(), Preference::none);
    }

    void hasNoPreferenceWithoutBus() {
        const ColorScheme scheme{QDBusConnection(QStringLiteral("no such connection"))};
        QCOMPARE(scheme.preference(), Preference::none);
    }

    void hasNoPreferenceWithoutPortal() {
        const ColorScheme scheme(bus_->connect());
        QSignalSpy changed(&scheme, &ColorScheme::preferenceChanged);
        QVERIFY(!changed.wait(100));
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
        const SettingsPortal portal(*bus_, answer);
        const ColorScheme scheme(bus_->connect());
        QSignalSpy changed(&scheme, &ColorScheme::preferenceChanged);
        QVERIFY(changed.wait());
        QCOMPARE(scheme.preference(), preference);
    }

    void heedsNothingElse() {
        SettingsPortal portal(*bus_, 2);
        const ColorScheme scheme(bus_->connect());
        QSignalSpy changed(&scheme, &ColorScheme::preferenceChanged);
        QVERIFY(changed.wait());
        // Neither another setting nor a value that stands for nothing changes anything.
        portal.set(QStringLiteral("org.freedesktop.other"), key, 1);
        portal.set(group, QStringLiteral("accent-color"), 1);
        portal.set(group, key, 7);
        QVERIFY(changed.wait());
        QCOMPARE(changed.count(), 2);
        QCOMPARE(scheme.preference(), Preference::none);
    }

private:
    std::unique_ptr<PrivateBus> bus_;
};

const RegisteredTest<ColorSchemeTest> registered;

#include "ColorSchemeTest.moc"
