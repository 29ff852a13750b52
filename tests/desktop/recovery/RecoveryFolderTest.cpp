#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cerrno>

#include "app/desktop/recovery/RecoveryFolder.h"
#include "tests/support/TestProgram.h"

class RecoveryFolderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { place_.emplace(); }

    void isForTheUserAloneFromTheStart() {
        const mode_t before = ::umask(0);
        RecoveryFolder folder(path("state/recovery/one"));
        QCOMPARE(folder.create(), 0);
        QCOMPARE(folder.write("a.plist", QByteArray("secret")), 0);
        ::umask(before);
        for (const char* made : {"state", "state/recovery", "state/recovery/one"}) {
            QCOMPARE(modeOf(path(made)), mode_t{0700});
        }
        for (const char* made : {"state/recovery/one/lock", "state/recovery/one/a.plist"}) {
            QCOMPARE(modeOf(path(made)), mode_t{0600});
        }
    }

    void keepsWhatWasWrittenLast() {
        RecoveryFolder folder(path("one"));
        QCOMPARE(folder.create(), 0);
        QCOMPARE(folder.write("a.plist", QByteArray("old and long")), 0);
        QCOMPARE(folder.write("a.plist", QByteArray("new")), 0);
        QCOMPARE(folder.read("a.plist"), std::optional<QByteArray>("new"));
        QCOMPARE(folder.names(), QByteArrayList{"a.plist"});
        folder.remove("a.plist");
        QCOMPARE(folder.read("a.plist"), std::nullopt);
        folder.remove("a.plist");
    }

    void cannotBeClaimedWhileItIsUsed() {
        RecoveryFolder used(path("one"));
        QCOMPARE(used.create(), 0);
        RecoveryFolder other(path("one"));
        QCOMPARE(other.claim(), EWOULDBLOCK);
        QVERIFY(!other.isLocked());
        QCOMPARE(other.create(), EEXIST);
    }

    void isClaimedWithWhatItHoldsWhenItIsLeft() {
        {
            RecoveryFolder left(path("one"));
            QCOMPARE(left.create(), 0);
            QCOMPARE(left.write("a.plist", QByteArray("kept")), 0);
        }
        RecoveryFolder folder(path("one"));
        QCOMPARE(folder.claim(), 0);
        QCOMPARE(folder.read("a.plist"), std::optional<QByteArray>("kept"));
    }

    void goesWhenNothingIsInIt() {
        {
            RecoveryFolder folder(path("one"));
            QCOMPARE(folder.create(), 0);
            QCOMPARE(folder.write("a.plist", QByteArray("kept")), 0);
            folder.remove("a.plist");
        }
        QVERIFY(!QFile::exists(place_->filePath(QStringLiteral("one"))));
    }

    void doesNotCountFilesThatWereNeverFinished() {
        {
            RecoveryFolder folder(path("one"));
            QCOMPARE(folder.create(), 0);
            QFile part(place_->filePath(QStringLiteral("one/.tabulet-000000000000")));
            QVERIFY(part.open(QIODevice::WriteOnly));
            QCOMPARE(folder.names(), QByteArrayList{});
        }
        QVERIFY(!QFile::exists(place_->filePath(QStringLiteral("one"))));
    }

    void followsNoLinks() {
        {
            RecoveryFolder elsewhere(path("elsewhere"));
            QCOMPARE(elsewhere.create(), 0);
            QCOMPARE(elsewhere.write("b", QByteArray("other")), 0);
        }
        QCOMPARE(::symlink(path("elsewhere").constData(), path("link").constData()), 0);
        RecoveryFolder link(path("link"));
        QCOMPARE(link.claim(), ENOTDIR);
        QCOMPARE(link.create(), EEXIST);

        RecoveryFolder folder(path("one"));
        QCOMPARE(folder.create(), 0);
        QCOMPARE(::symlink(path("elsewhere/b").constData(), path("one/a").constData()), 0);
        QCOMPARE(folder.read("a"), std::nullopt);
        QCOMPARE(folder.write("a", QByteArray("mine")), 0);
        QFile other(place_->filePath(QStringLiteral("elsewhere/b")));
        QVERIFY(other.open(QIODevice::ReadOnly));
        QCOMPARE(other.readAll(), QByteArray("other"));
    }

    void saysWhyItCannotBeMade() {
        QFile file(place_->filePath(QStringLiteral("file")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        RecoveryFolder folder(path("file/one"));
        QCOMPARE(folder.create(), ENOTDIR);
        RecoveryFolder none(path("none"));
        QCOMPARE(none.claim(), ENOENT);
    }

private:
    QByteArray path(const char* name) const {
        return QFile::encodeName(place_->filePath(QString::fromLatin1(name)));
    }

    static mode_t modeOf(const QByteArray& path) {
        struct stat status {};
        return ::lstat(path.constData(), &status) == 0 ? status.st_mode & 0777U : 0;
    }

    std::optional<QTemporaryDir> place_;
};

const RegisteredTest<RecoveryFolderTest> registered;
#include "RecoveryFolderTest.moc"
