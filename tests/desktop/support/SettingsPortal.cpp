#include "tests/desktop/support/SettingsPortal.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <array>
#include <iostream>

#include "tests/desktop/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

namespace {

const QString connectionName = QStringLiteral("settings portal");
const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

}  // namespace

/// What is on the bus.
class PortalObject : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit PortalObject(uint colorScheme) : colorScheme_(colorScheme) {}

    void set(const QString& group, const QString& key, uint value) {
        if (isColorScheme(group, key)) {
            colorScheme_ = value;
        }
        Q_EMIT SettingChanged(group, key, QDBusVariant(value));
    }

public Q_SLOTS:
    // The names are those of the interface.
    QDBusVariant Read(const QString& group, const QString& key) const {  // NOLINT
        // The first version of the portal wraps the value twice.
        return isColorScheme(group, key)
                   ? QDBusVariant(QVariant::fromValue(QDBusVariant(colorScheme_)))
                   : QDBusVariant(QString());
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key,  // NOLINT
                        const QDBusVariant& value);

private:
    static bool isColorScheme(const QString& group, const QString& key) {
        return group == QStringLiteral("org.freedesktop.appearance") &&
               key == QStringLiteral("color-scheme");
    }

    uint colorScheme_;
};

SettingsPortal::SettingsPortal(const PrivateBus& bus, uint colorScheme) {
    process_.start(QCoreApplication::applicationFilePath(),
                   {QLatin1String(PortalObject::staticMetaObject.className()), bus.address(),
                    QString::number(colorScheme)});
    process_.waitForReadyRead();
}

SettingsPortal::~SettingsPortal() {
    process_.closeWriteChannel();
    process_.waitForFinished();
}

void SettingsPortal::set(const QString& group, const QString& key, uint value) {
    process_.write(QStringLiteral("%1 %2 %3\n").arg(group, key).arg(value).toUtf8());
    process_.waitForBytesWritten();
}

namespace {

/// The other process, to its end.
int serve(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    qDBusRegisterMetaType<QDBusVariant>();
    QDBusConnection bus = QDBusConnection::connectToBus(arguments[1], connectionName);
    PortalObject portal(arguments[2].toUInt());
    bus.registerObject(path, &portal,
                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    bus.registerService(service);
    std::cout << "ready" << std::endl;
    // Messages are answered on the main thread, so that reading must not hold it up.
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &portal, [&portal] {
        std::array<char, 1024> buffer;
        const ssize_t size = ::read(0, buffer.data(), buffer.size());
        if (size <= 0) {
            QCoreApplication::quit();
            return;
        }
        const QString text = QString::fromUtf8(buffer.data(), size);
        for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList words = line.split(u' ');
            portal.set(words[0], words[1], words[2].toUInt());
        }
    });
    return QCoreApplication::exec();
}

const RegisteredTest<PortalObject, serve> registered;

}  // namespace

#include "SettingsPortal.moc"
