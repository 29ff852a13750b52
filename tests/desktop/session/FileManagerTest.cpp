#include <QDBusContext>
#include <QDBusPendingCallWatcher>
#include <QDBusServer>
#include <QTest>

#include "app/desktop/session/FileManager.h"
#include "tests/support/TestProgram.h"

namespace {

const QString clientName = QStringLiteral("client of the file manager");

/// A file manager, on a connection of its own without a bus.
class MockFileManager : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    MockFileManager() {
        server_.setAnonymousAuthenticationAllowed(true);
        connect(&server_, &QDBusServer::newConnection, this, [this](QDBusConnection connection) {
            connection.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), this,
                                      QDBusConnection::ExportAllSlots);
        });
    }

    ~MockFileManager() override { QDBusConnection::disconnectFromPeer(clientName); }

    QDBusConnection connection() {
        return QDBusConnection::connectToPeer(server_.address(), clientName);
    }

    bool refuses = false;
    QStringList shown;

public Q_SLOTS:
    // The name is that of the interface.
    void ShowItems(const QStringList& uris, const QString& /*startupId*/) {  // NOLINT
        shown = uris;
        if (refuses) {
            sendErrorReply(QDBusError::Failed, QStringLiteral("not today"));
        }
    }

private:
    QDBusServer server_;
};

}  // namespace

class FileManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsAFile() {
        MockFileManager manager;
        bool hasFailed = false;
        FileManager::show(
            QStringLiteral("/a folder/é.plist"), *this, [&hasFailed] { hasFailed = true; },
            manager.connection());
        QTRY_COMPARE(manager.shown, QStringList{QStringLiteral("file:///a%20folder/%C3%A9.plist")});
        // The answer has come.
        QTRY_VERIFY(findChildren<QDBusPendingCallWatcher*>().isEmpty());
        QVERIFY(!hasFailed);
    }

    void tellsThatItIsRefused() {
        MockFileManager manager;
        manager.refuses = true;
        bool hasFailed = false;
        FileManager::show(
            QStringLiteral("/a"), *this, [&hasFailed] { hasFailed = true; }, manager.connection());
        QTRY_VERIFY(hasFailed);
    }

    void tellsThatThereIsNoBus() {
        bool hasFailed = false;
        FileManager::show(
            QStringLiteral("/a"), *this, [&hasFailed] { hasFailed = true; },
            QDBusConnection(QStringLiteral("no such connection")));
        QVERIFY(!hasFailed);
        QTRY_VERIFY(hasFailed);
    }
};

const RegisteredTest<FileManagerTest> registered;
#include "FileManagerTest.moc"
