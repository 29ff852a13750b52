#include <QByteArrayList>
#include <QTest>
#include <array>
#include <vector>

#include "app/desktop/files/FilePath.h"
#include "app/ui/app/CommandLine.h"
#include "tests/support/TestProgram.h"

namespace {

CommandLine parsed(QByteArrayList arguments) {
    std::vector<char*> pointers;
    for (QByteArray& argument : arguments) {
        pointers.push_back(argument.data());
    }
    return CommandLine::parse(pointers);
}

}  // namespace

class CommandLineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesFiles() {
        const CommandLine line = parsed({"tabulet", "a.plist", "b c.plist"});
        QCOMPARE(line.paths, (QStringList{QStringLiteral("a.plist"), QStringLiteral("b c.plist")}));
        QVERIFY(line.screenshotPath.isEmpty());
    }

    void takesFilesThatLookLikeOptions() {
        const CommandLine line = parsed({"tabulet", "--", "--help"});
        QCOMPARE(line.paths, QStringList{QStringLiteral("--help")});
    }

    void takesFilesWhoseNamesAreNotUtf8() {
        const CommandLine line = parsed({"tabulet", "\xE9\xC3\xA9 .plist"});
        QCOMPARE(FilePath::encoded(line.paths.first()), QByteArray("\xE9\xC3\xA9 .plist"));
    }

    void takesAddressesOfFiles() {
        const CommandLine line = parsed({"tabulet", "file:///a%20b.plist", "c.plist"});
        QCOMPARE(line.paths,
                 (QStringList{QStringLiteral("/a b.plist"), QStringLiteral("c.plist")}));
    }

    void isStartedByTheBus() {
        QVERIFY(parsed({"tabulet", "--service"}).isService);
        QVERIFY(!parsed({"tabulet"}).isService);
    }

    void findsADisplay_data() {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QByteArray>("argument");
        QTest::addColumn<bool>("hasDisplay");
        QTest::newRow("none") << QByteArray() << QByteArray() << false;
        QTest::newRow("X11") << QByteArray("DISPLAY") << QByteArray() << true;
        QTest::newRow("Wayland") << QByteArray("WAYLAND_DISPLAY") << QByteArray() << true;
        QTest::newRow("platform") << QByteArray("QT_QPA_PLATFORM") << QByteArray() << true;
        QTest::newRow("option") << QByteArray() << QByteArray("-platform") << true;
        QTest::newRow("two dashes") << QByteArray() << QByteArray("--platform=vnc") << true;
        QTest::newRow("file") << QByteArray() << QByteArray("platform") << false;
    }

    void findsADisplay() {
        QFETCH(const QByteArray, variable);
        QFETCH(QByteArray, argument);
        const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
        for (const char* each : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            qunsetenv(each);
        }
        if (!variable.isEmpty()) {
            qputenv(variable.constData(), "x");
        }
        QByteArray program = "tabulet";
        QByteArray end = "--";
        const std::array<char*, 2> first = {program.data(), argument.data()};
        const std::array<char*, 3> behind = {program.data(), end.data(), argument.data()};
        const bool found = CommandLine::hasDisplay(first);
        const bool foundBehind = CommandLine::hasDisplay(behind);
        qunsetenv(variable.constData());
        qputenv("QT_QPA_PLATFORM", chosen);
        QTEST(found, "hasDisplay");
        QCOMPARE(foundBehind, !variable.isEmpty());
    }

    void takesScreenshot() {
        const CommandLine line = parsed({"tabulet", "--picture", "p.png", "a.plist"});
        QCOMPARE(line.screenshotPath, QStringLiteral("p.png"));
        QCOMPARE(line.paths, QStringList{QStringLiteral("a.plist")});
    }

    void knowsWhatNeedsNoDisplay_data() {
        QTest::addColumn<QByteArray>("argument");
        QTest::addColumn<bool>("isText");
        QTest::newRow("help") << QByteArray("--help") << true;
        QTest::newRow("h") << QByteArray("-h") << true;
        QTest::newRow("version") << QByteArray("--version") << true;
        QTest::newRow("file") << QByteArray("version") << false;
        QTest::newRow("picture") << QByteArray("--picture") << false;
    }

    void knowsWhatNeedsNoDisplay() {
        QFETCH(QByteArray, argument);
        QByteArray program = "tabulet";
        QByteArray end = "--";
        const std::array<char*, 2> first = {program.data(), argument.data()};
        QTEST(CommandLine::onlyPrints(first), "isText");
        const std::array<char*, 3> behind = {program.data(), end.data(), argument.data()};
        QVERIFY(!CommandLine::onlyPrints(behind));
    }
};

const RegisteredTest<CommandLineTest> registered;
#include "CommandLineTest.moc"
