#include <QCoreApplication>
#include <QTest>

#include "app/desktop/files/FilePath.h"
#include "app/desktop/session/RestartCommand.h"
#include "tests/support/TestProgram.h"

class RestartCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void namesTheProgramAndItsSession() {
        QCOMPARE(RestartCommand::showing({}, QStringLiteral("10ab_7")),
                 (QStringList{QCoreApplication::applicationFilePath(), QStringLiteral("-session"),
                              QStringLiteral("10ab_7")}));
    }

    void namesFilesByTheirAddresses() {
        const QString odd = FilePath::decoded("/a/caf\xE9 %25.plist");
        const QStringList files =
            RestartCommand::showing({QStringLiteral("/a/--help"), odd}, {}).mid(3);
        QCOMPARE(files, (QStringList{QStringLiteral("file:///a/--help"),
                                     QStringLiteral("file:///a/caf%E9%20%2525.plist")}));
        // As the command line takes them.
        QCOMPARE(FilePath::fromInput(files.at(1)), odd);
    }
};

const RegisteredTest<RestartCommandTest> registered;
#include "RestartCommandTest.moc"
