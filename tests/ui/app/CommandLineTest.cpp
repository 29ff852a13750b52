#include <QByteArrayList>
#include <QTest>
#include <array>
#include <vector>

#include "app/desktop/files/FilePath.h"
#include "app/ui/app/CommandLine.h"

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
        QVERIFY(line.picturePath.isEmpty());
    }

    void takesFilesThatLookLikeOptions() {
        const CommandLine line = parsed({"tabulet", "--", "--help"});
        QCOMPARE(line.paths, QStringList{QStringLiteral("--help")});
    }

    void takesFilesWhoseNamesAreNoTexts() {
        const CommandLine line = parsed({"tabulet", "\xE9\xC3\xA9 .plist"});
        QCOMPARE(FilePath::encoded(line.paths.first()), QByteArray("\xE9\xC3\xA9 .plist"));
    }

    void takesPicture() {
        const CommandLine line = parsed({"tabulet", "--picture", "p.png", "a.plist"});
        QCOMPARE(line.picturePath, QStringLiteral("p.png"));
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
        QTEST(CommandLine::asksForText(first), "isText");
        const std::array<char*, 3> behind = {program.data(), end.data(), argument.data()};
        QVERIFY(!CommandLine::asksForText(behind));
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
