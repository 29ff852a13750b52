#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include "app/desktop/files/FilePath.h"
#include "tests/support/TestProgram.h"

namespace {

const QByteArray latin1 = "/caf\xE9/na\xEFve.plist";

}  // namespace

class FilePathTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void decodes_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        const auto escapes = [](std::initializer_list<char16_t> units) {
            return QString(reinterpret_cast<const QChar*>(units.begin()),
                           static_cast<qsizetype>(units.size()));
        };
        QTest::newRow("empty") << QByteArray() << QString();
        QTest::newRow("ASCII") << QByteArray("/a b.plist") << QStringLiteral("/a b.plist");
        QTest::newRow("UTF-8") << QByteArray("/\u00FC\u6E2F\U0001F30A")
                               << QStringLiteral("/\u00FC\u6E2F\U0001F30A");
        QTest::newRow("Latin-1") << QByteArray("a\xE9z") << escapes({u'a', 0xDCE9, u'z'});
        QTest::newRow("beside UTF-8")
            << QByteArray("\xFF\xC3\xBC\x80") << escapes({0xDCFF, 0xFC, 0xDC80});
        QTest::newRow("cut") << QByteArray("\xE6\xB8") << escapes({0xDCE6, 0xDCB8});
        QTest::newRow("overlong") << QByteArray("\xC0\xAF") << escapes({0xDCC0, 0xDCAF});
        QTest::newRow("surrogate")
            << QByteArray("\xED\xB2\x80") << escapes({0xDCED, 0xDCB2, 0xDC80});
        QTest::newRow("too large")
            << QByteArray("\xF4\x90\x80\x80") << escapes({0xDCF4, 0xDC90, 0xDC80, 0xDC80});
        QTest::newRow("behind a pair")
            << QByteArray("\U0001F30A\xFE") << escapes({0xD83C, 0xDF0A, 0xDCFE});
    }

    void decodes() {
        QFETCH(const QByteArray, bytes);
        QTEST(FilePath::decoded(bytes), "text");
        QCOMPARE(FilePath::encoded(FilePath::decoded(bytes)), bytes);
    }

    void givesAnyBytesBack() {
        // Of a few kinds, so that whole and broken characters of all sizes come up.
        const QByteArray kinds = "a/\x7F\x80\x8F\x90\x9F\xA0\xBF\xC2\xDF\xE0\xED\xEF\xF0\xF4\xFF";
        QRandomGenerator random(7);
        for (int i = 0; i < 20'000; ++i) {
            QByteArray bytes;
            for (quint32 size = random.bounded(12U); size > 0; --size) {
                bytes += kinds[static_cast<qsizetype>(
                    random.bounded(static_cast<quint32>(kinds.size())))];
            }
            QCOMPARE(FilePath::encoded(FilePath::decoded(bytes)), bytes);
            const QUrl uri = QUrl::fromEncoded(FilePath::toUri(FilePath::decoded('/' + bytes)));
            QCOMPARE(FilePath::fromUri(uri), FilePath::decoded('/' + bytes));
        }
    }

    void encodesTextsThatPeopleWrote() {
        // U+10C80 has a second half among the escapes.
        const QString text = QStringLiteral("/\u00E9\U00010C80");
        QCOMPARE(FilePath::encoded(text), text.toUtf8());
        QCOMPARE(FilePath::shown(text), text);
    }

    void showsReplacementMarks() {
        const QString path = FilePath::decoded(latin1);
        QCOMPARE(FilePath::shown(path), QStringLiteral("/caf\uFFFD/na\uFFFDve.plist"));
        QCOMPARE(FilePath::shownName(path), QStringLiteral("na\uFFFDve.plist"));
        QCOMPARE(FilePath::shownName(QStringLiteral("a.plist")), QStringLiteral("a.plist"));
        QCOMPARE(FilePath::encoded(FilePath::folder(path)), QByteArray("/caf\xE9"));
        QCOMPARE(FilePath::folder(QStringLiteral("/a")), QStringLiteral("/"));
    }

    void makesPathsAbsolute() {
        const QTemporaryDir temporary;
        const QByteArray folder = QFile::encodeName(temporary.path()) + "/\xE9 x";
        QCOMPARE(::mkdir(folder.constData(), 0700), 0);
        const QString before = QDir::currentPath();
        QCOMPARE(::chdir(folder.constData()), 0);
        const QString relative = FilePath::absolute(QStringLiteral("./a//b/../c"));
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(::rmdir(folder.constData()), 0);
        QCOMPARE(FilePath::encoded(relative), folder + "/a/c");
        QCOMPARE(FilePath::absolute(QStringLiteral("/../a/../../b")), QStringLiteral("/b"));
        QCOMPARE(FilePath::absolute(QStringLiteral("/./a/")), QStringLiteral("/a"));
        QCOMPARE(FilePath::absolute(QStringLiteral("/")), QStringLiteral("/"));
    }

    void leavesWhatFollowsLinks() {
        const QTemporaryDir temporary;
        const QString link = temporary.filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(QStringLiteral("/usr/share"), link));
        QCOMPARE(FilePath::absolute(link + QStringLiteral("/../../a")),
                 link + QStringLiteral("/../../a"));
        QCOMPARE(FilePath::absolute(link + QStringLiteral("/x/../a")), link + QStringLiteral("/a"));
    }

    void findsFilesByTheirBytes() {
        const QTemporaryDir folder;
        const QString path =
            FilePath::decoded(QFile::encodeName(folder.path()) + "/\xE9\xC3\xA9.plist");
        QVERIFY(!FilePath::exists(path));
        const int file = ::open(FilePath::encoded(path).constData(), O_CREAT | O_WRONLY, 0600);
        QVERIFY(file >= 0);
        ::close(file);
        QVERIFY(FilePath::exists(path));
        QCOMPARE(::unlink(FilePath::encoded(path).constData()), 0);
    }

    void namesFilesByAddress() {
        QCOMPARE(FilePath::toUri(FilePath::decoded("/a b%#?\xE9\xC3\xA9")),
                 QByteArray("file:///a%20b%25%23%3F%E9%C3%A9"));
    }

    void takesOnlyAddressesOfLocalFiles_data() {
        QTest::addColumn<QByteArray>("uri");
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("plain") << QByteArray("file:///a.plist") << QByteArray("/a.plist");
        QTest::newRow("this machine") << QByteArray("file://localhost/a") << QByteArray("/a");
        QTest::newRow("short") << QByteArray("file:/a") << QByteArray("/a");
        QTest::newRow("bytes") << QByteArray("file:///%e9%25e9") << QByteArray("/\xE9%e9");
        QTest::newRow("characters")
            << QByteArray("file:///\u00FC;a=b") << QByteArray("/\u00FC;a=b");
        QTest::newRow("another machine") << QByteArray("file://other/a") << QByteArray();
        QTest::newRow("web") << QByteArray("https://example.org/a") << QByteArray();
        QTest::newRow("NUL") << QByteArray("file:///a%00b") << QByteArray();
        QTest::newRow("none") << QByteArray() << QByteArray();
    }

    void takesOnlyAddressesOfLocalFiles() {
        QFETCH(const QByteArray, uri);
        const std::optional<QString> path = FilePath::fromUri(QUrl::fromEncoded(uri));
        QTEST(path ? FilePath::encoded(*path) : QByteArray(), "path");
    }

    void takesPathsAndAddresses_data() {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("path") << QByteArray("a/b c%20.plist") << QByteArray("a/b c%20.plist");
        QTest::newRow("colon") << QByteArray("12:30.plist") << QByteArray("12:30.plist");
        QTest::newRow("word and colon") << QByteArray("note: a") << QByteArray("note: a");
        QTest::newRow("bytes") << latin1 << latin1;
        QTest::newRow("address") << QByteArray("file:///a%20b") << QByteArray("/a b");
        QTest::newRow("capitals") << QByteArray("FILE:/a") << QByteArray("/a");
        QTest::newRow("address with bytes") << QByteArray("file:///\xE9") << QByteArray("/\xE9");
        QTest::newRow("another machine") << QByteArray("file://other/a") << QByteArray();
        QTest::newRow("web") << QByteArray("https://example.org/a") << QByteArray();
        QTest::newRow("no path") << QByteArray("file:a") << QByteArray();
    }

    void takesPathsAndAddresses() {
        QFETCH(const QByteArray, input);
        const std::optional<QString> path = FilePath::fromInput(FilePath::decoded(input));
        QTEST(path ? FilePath::encoded(*path) : QByteArray(), "path");
    }

    void takesAFileWhoseNameLooksLikeAnAddress() {
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder_.path()));
        make("file:a");
        const std::optional<QString> path = FilePath::fromInput(QStringLiteral("file:a"));
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(path, std::optional(QStringLiteral("file:a")));
    }

    void followsLinksOfBothKinds() {
        make("a");
        QVERIFY(QFile::link(path("a"), path("soft")));
        QCOMPARE(::link(QFile::encodeName(path("a")).constData(),
                        QFile::encodeName(path("hard")).constData()),
                 0);
        QVERIFY(FilePath::isSameFile(path("a"), path("soft")));
        QVERIFY(FilePath::isSameFile(path("hard"), path("soft")));
        QVERIFY(FilePath::isSameFile(path("a"), folder_.path() + QStringLiteral("/./a")));
    }

    void tellsFilesApart() {
        make("b");
        make("c");
        QVERIFY(!FilePath::isSameFile(path("b"), path("c")));
        QVERIFY(!FilePath::isSameFile(path("b"), path("none")));
        QVERIFY(!FilePath::isSameFile(path("none"), path("b")));
    }

    void goesByThePathWhereNothingIs() {
        QVERIFY(FilePath::isSameFile(path("none"), path("none")));
        QVERIFY(!FilePath::isSameFile(path("none"), path("nothing")));
        QVERIFY(FilePath::isSameFile(path("none"), QDir::current().relativeFilePath(path("none"))));
    }

    void followsLinksToTheirEnd() {
        const auto system = [this](const char* name) { return QFile::encodeName(path(name)); };
        QCOMPARE(::symlink("second", system("first").constData()), 0);
        QCOMPARE(::symlink(system("end").constData(), system("second").constData()), 0);
        QCOMPARE(FilePath::followed(system("first")),
                 (QByteArrayList{system("first"), system("second"), system("end")}));
        QCOMPARE(FilePath::followed("/"), QByteArrayList{"/"});
    }

    void doesNotFollowLinksForEver() {
        const QByteArray circle = QFile::encodeName(path("circle"));
        QCOMPARE(::symlink("circle", circle.constData()), 0);
        QCOMPARE(FilePath::followed(circle).size(), 41);
    }

private:
    QString path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
    void make(const char* name) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir folder_;
};

const RegisteredTest<FilePathTest> registered;
#include "FilePathTest.moc"
