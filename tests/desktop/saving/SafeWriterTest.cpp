#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/saving/SafeWriter.h"
#include "tests/model/support/OrdinaryUser.h"
#include "tests/support/TestProgram.h"

namespace {

const QByteArray oldBytes = QByteArray("the old content ").repeated(5000);
const QByteArray newBytes = QByteArray("new ").repeated(3);
const QByteArray longBytes = QByteArray("a longer content ").repeated(9000);

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void make(const QString& path, const QByteArray& bytes = oldBytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

/// user::rw- user:65534:r-- group::r-- mask::rw- other::---, in the system's own form.
QByteArray listOfRights() {
    return QByteArray::fromHex(
        "02000000"
        "01000600ffffffff"
        "02000400feff0000"
        "04000400ffffffff"
        "10000600ffffffff"
        "20000000ffffffff");
}

struct stat statusOf(const QString& path) {
    struct stat status {};
    ::lstat(QFile::encodeName(path).constData(), &status);
    return status;
}

}  // namespace

/// Saving over files of every kind.
class SafeWriterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
        // For the ordinary user.
        QVERIFY(::chmod(QFile::encodeName(folder_->path()).constData(), 0777) == 0);
    }

    void makesNewFiles() {
        const mode_t mask = ::umask(027);
        write(path(), newBytes);
        ::umask(mask);
        QCOMPARE(read(path()), newBytes);
        QCOMPARE(statusOf(path()).st_mode & 07777, mode_t{0640});
        QCOMPARE(names(), QStringList(QStringLiteral("file")));
    }

    void replacesFiles() {
        make(path());
        const ino_t before = statusOf(path()).st_ino;
        write(path(), newBytes);
        QCOMPARE(read(path()), newBytes);
        QVERIFY(statusOf(path()).st_ino != before);
        write(path(), longBytes);
        QCOMPARE(read(path()), longBytes);
        write(path(), {});
        QCOMPARE(read(path()), QByteArray());
        QCOMPARE(names(), QStringList(QStringLiteral("file")));
    }

    void keepsTheMode() {
        for (const mode_t mode : {mode_t{0600}, mode_t{0664}, mode_t{0444 | 0200}, mode_t{02664}}) {
            make(path());
            QVERIFY(::chmod(QFile::encodeName(path()).constData(), mode) == 0);
            write(path(), newBytes);
            QCOMPARE(statusOf(path()).st_mode & 07777, mode);
            QCOMPARE(read(path()), newBytes);
        }
    }

    void keepsTheOwner() {
        if (::geteuid() != 0) {
            QSKIP("Only the superuser can give files away, and this is an ordinary user.");
        }
        make(path());
        QVERIFY(::chown(QFile::encodeName(path()).constData(), OrdinaryUser::nobody,
                        OrdinaryUser::nobody) == 0);
        write(path(), newBytes);
        QCOMPARE(statusOf(path()).st_uid, OrdinaryUser::nobody);
        QCOMPARE(statusOf(path()).st_gid, gid_t{OrdinaryUser::nobody});
    }

    void keepsAttributes() {
        make(path());
        const QByteArray name = QFile::encodeName(path());
        if (::setxattr(name.constData(), "user.origin", "harbour", 7, 0) != 0) {
            QSKIP("The file system of the temporary folder has no attributes to keep.");
        }
        write(path(), newBytes);
        QByteArray value(7, '\0');
        QCOMPARE(::getxattr(name.constData(), "user.origin", value.data(), 7), ssize_t{7});
        QCOMPARE(value, QByteArray("harbour"));
        QCOMPARE(read(path()), newBytes);
    }

    void keepsAccessControlLists() {
        make(path());
        const QByteArray name = QFile::encodeName(path());
        const QByteArray list = listOfRights();
        const auto size = static_cast<std::size_t>(list.size());
        if (::setxattr(name.constData(), "system.posix_acl_access", list.constData(), size, 0) !=
            0) {
            QSKIP("The file system of the temporary folder has no lists of rights to keep.");
        }
        write(path(), newBytes);
        QByteArray kept(list.size(), '\0');
        QCOMPARE(::getxattr(name.constData(), "system.posix_acl_access", kept.data(), size),
                 static_cast<ssize_t>(size));
        QCOMPARE(kept, list);
    }

    /// A folder may give rights to every file that is made in it; those the old file did not have.
    void takesOverNoRightsFromTheFolder() {
        make(path());
        QVERIFY(::chmod(QFile::encodeName(path()).constData(), 0660) == 0);
        const QByteArray list = listOfRights();
        if (::setxattr(QFile::encodeName(folder_->path()).constData(), "system.posix_acl_default",
                       list.constData(), static_cast<std::size_t>(list.size()), 0) != 0) {
            QSKIP("The file system of the temporary folder has no lists of rights to keep.");
        }
        write(path(), newBytes);
        QCOMPARE(::getxattr(QFile::encodeName(path()).constData(), "system.posix_acl_access",
                            nullptr, 0),
                 ssize_t{-1});
        QCOMPARE(statusOf(path()).st_mode & 07777, mode_t{0660});
        QCOMPARE(read(path()), newBytes);
    }

    void followsLinks() {
        make(path());
        const QString link = path("link");
        const QString second = path("second");
        QVERIFY(QFile::link(QStringLiteral("file"), link));
        QVERIFY(QFile::link(link, second));
        write(second, newBytes);
        QCOMPARE(read(path()), newBytes);
        QVERIFY(QFileInfo(link).isSymLink());
        QVERIFY(QFileInfo(second).isSymLink());
    }

    void makesWhatALinkPromises() {
        QVERIFY(QFile::link(QStringLiteral("file"), path("link")));
        write(path("link"), newBytes);
        QVERIFY(QFileInfo(path("link")).isSymLink());
        QCOMPARE(read(path()), newBytes);
    }

    void keepsHardLinks() {
        make(path());
        QVERIFY(::link(QFile::encodeName(path()).constData(),
                       QFile::encodeName(path("other")).constData()) == 0);
        for (const QByteArray& bytes : {newBytes, longBytes, QByteArray()}) {
            write(path(), bytes);
            QCOMPARE(read(path()), bytes);
            QCOMPARE(read(path("other")), bytes);
        }
        QVERIFY(QDir(safetyFolder()).isEmpty());
        QCOMPARE(statusOf(safetyFolder()).st_mode & 07777, mode_t{0700});
    }

    /// The system takes the bit away when somebody without rights of their own writes to the file.
    void keepsTheModeOfWhatItOverwrites() {
        QVERIFY(OrdinaryUser::does([this] {
            constexpr mode_t mode = 02775;
            const QByteArray name = QFile::encodeName(path());
            make(path());
            return ::link(name.constData(), QFile::encodeName(path("other")).constData()) == 0 &&
                   ::chmod(name.constData(), mode) == 0 && !failureOf(path(), newBytes) &&
                   (statusOf(path()).st_mode & 07777) == mode && read(path("other")) == newBytes;
        }));
    }

    void takesTheLongestNames() {
        const QString longName(255, QLatin1Char('n'));
        write(path(longName), newBytes);
        write(path(longName), longBytes);
        QCOMPARE(read(path(longName)), longBytes);
    }

    void refusesWhatIsNoRegularFile() {
        const QString fifo = path("fifo");
        QVERIFY(::mkfifo(QFile::encodeName(fifo).constData(), 0600) == 0);
        QCOMPARE(reasonFor(fifo), QStringLiteral("It is not a regular file."));
        QVERIFY(S_ISFIFO(statusOf(fifo).st_mode));
        QCOMPARE(reasonFor(QStringLiteral("/dev/null")),
                 QStringLiteral("It is not a regular file."));
        QCOMPARE(reasonFor(folder_->path()), QStringLiteral("Is a directory."));
        QCOMPARE(reasonFor(path("no/such/file")), QStringLiteral("No such file or directory."));
    }

    void refusesReadOnlyFiles() {
        make(path());
        QVERIFY(::chmod(QFile::encodeName(path()).constData(), 0444) == 0);
        QVERIFY(OrdinaryUser::does([this] {
            return reasonFor(path()) == QStringLiteral(
                                            "You don't have permission to write to it. Save under "
                                            "another name, or change the permissions of the file.");
        }));
        QCOMPARE(read(path()), oldBytes);
    }

    void overwritesInReadOnlyFolders() {
        QVERIFY(QDir().mkdir(path("locked")));
        const QString file = path("locked/file");
        make(file);
        QVERIFY(::chmod(QFile::encodeName(file).constData(), 0666) == 0);
        QVERIFY(::chmod(QFile::encodeName(path("locked")).constData(), 0555) == 0);
        QVERIFY(OrdinaryUser::does([this, &file] {
            return !failureOf(file, longBytes) && QDir(safetyFolder()).isEmpty();
        }));
        QCOMPARE(read(file), longBytes);
        QVERIFY(OrdinaryUser::does([this] {
            return reasonFor(path("locked/fresh")) == QStringLiteral("Permission denied.");
        }));
        QVERIFY(::chmod(QFile::encodeName(path("locked")).constData(), 0755) == 0);
    }

    /// There only the owner of a file may put another in its place.
    void overwritesFilesOfOthersInStickyFolders() {
        if (::geteuid() != 0) {
            QSKIP("Takes files of two users, which only the superuser can make.");
        }
        QVERIFY(QDir().mkdir(path("sticky")));
        const QString file = path("sticky/file");
        make(file);
        QVERIFY(::chmod(QFile::encodeName(file).constData(), 0666) == 0);
        QVERIFY(::chmod(QFile::encodeName(path("sticky")).constData(), 01777) == 0);
        QVERIFY(OrdinaryUser::does([this, &file] { return !failureOf(file, newBytes); }));
        QCOMPARE(read(file), newBytes);
        QCOMPARE(statusOf(file).st_uid, uid_t{0});
        QCOMPARE(QDir(path("sticky")).entryList(QDir::Files | QDir::Hidden),
                 QStringList(QStringLiteral("file")));
    }

    /// Where no safety copy can be made, nothing is overwritten.
    void needsItsSafetyFolder() {
        make(path());
        QVERIFY(::link(QFile::encodeName(path()).constData(),
                       QFile::encodeName(path("other")).constData()) == 0);
        QVERIFY(QDir().mkdir(path("state")));
        make(safetyFolder(), "a file in its place");
        QCOMPARE(reasonFor(path()),
                 QStringLiteral("It can only be overwritten in place, and the backup needed in "
                                "case that fails can't be written to “%1”: Not a directory. Allow "
                                "writing there, or free up some space.")
                     .arg(safetyFolder()));
        QCOMPARE(read(path()), oldBytes);
    }

    // --- What somebody else has written ---

    void asksBeforeItReplaces_data() {
        QTest::addColumn<bool>("isLinked");
        QTest::newRow("replaced") << false;
        QTest::newRow("overwritten") << true;
    }

    void asksBeforeItReplaces() {
        QFETCH(bool, isLinked);
        make(path());
        if (isLinked) {
            QVERIFY(::link(QFile::encodeName(path()).constData(),
                           QFile::encodeName(path("other")).constData()) == 0);
        }
        QVERIFY(refusalOf({}));
        QCOMPARE(refusalOf(digestOf(newBytes))->reason,
                 QStringLiteral("It has been left untouched."));
        QCOMPARE(refusalOf(digestOf(newBytes))->code, FileError::Code::changedOnDisk);
        QCOMPARE(read(path()), oldBytes);
        // Neither a finished file nor a safety copy is left over.
        QCOMPARE(names().size(), isLinked ? 2 : 1);
        QCOMPARE(QDir(safetyFolder()).entryList(QDir::Files), QStringList());

        QVERIFY(!refusalOf(digestOf(oldBytes)));
        QCOMPARE(read(path()), newBytes);
    }

    /// What comes while the new file is being written is noticed too.
    void asksWhenTheNewFileIsReady() {
        make(path());
        int fresh = 0;
        SafeWriter::write(path(), spanOf(newBytes), safetyFolder(), [&](const ContentDigest&) {
            fresh = static_cast<int>(names().filter(QStringLiteral(".tabulet-")).size());
            return true;
        });
        QCOMPARE(fresh, 1);
    }

    /// Else the new bytes would go to a file that no name leads to.
    void noticesThatTheFileIsReplacedBeforeItIsOverwritten() {
        make(path());
        QVERIFY(::link(QFile::encodeName(path()).constData(),
                       QFile::encodeName(path("other")).constData()) == 0);
        const QByteArray theirs = "what another program has written";
        const std::optional<Refusal> refusal = refusalWhere([this, &theirs](const ContentDigest&) {
            make(path("fresh"), theirs);
            return ::rename(QFile::encodeName(path("fresh")).constData(),
                            QFile::encodeName(path()).constData()) == 0;
        });
        QVERIFY(refusal);
        QCOMPARE(refusal->code, FileError::Code::writeFailed);
        QCOMPARE(refusal->reason,
                 QStringLiteral("Another program has moved or replaced it in the meantime."));
        QCOMPARE(read(path()), theirs);
        QCOMPARE(read(path("other")), oldBytes);
        QVERIFY(QDir(safetyFolder()).isEmpty());
    }

    void makesWhatHasGoneWithoutAQuestion() {
        QVERIFY(!refusalOf({}));
        QCOMPARE(read(path()), newBytes);
    }

    void doesNotReplaceWhatItCannotRead() {
        make(path());
        QVERIFY(::chmod(QFile::encodeName(path()).constData(), 0222) == 0);
        QVERIFY(OrdinaryUser::does([this] {
            const std::optional<Refusal> refusal = refusalOf(digestOf(oldBytes));
            return refusal && refusal->reason == QStringLiteral("Permission denied.");
        }));
        QCOMPARE(read(path()), oldBytes);
    }

    void trustsDisksOfThisMachine_data() {
        QTest::addColumn<quint32>("type");
        QTest::addColumn<bool>("mayLoseWrites");
        QTest::newRow("ext4") << 0xEF53U << false;
        QTest::newRow("xfs") << 0x58465342U << false;
        QTest::newRow("btrfs") << 0x9123683EU << false;
        QTest::newRow("tmpfs") << 0x01021994U << false;
        QTest::newRow("NFS") << 0x6969U << true;
        QTest::newRow("SMB") << 0x517BU << true;
        QTest::newRow("SMB 2") << 0xFE534D42U << true;
        QTest::newRow("CIFS") << 0xFF534D42U << true;
        QTest::newRow("FUSE") << 0x65735546U << true;
    }

    void trustsDisksOfThisMachine() {
        QFETCH(quint32, type);
        QTEST(SafeWriter::mayLoseWritesOn(type), "mayLoseWrites");
    }

    void asksTheSystemForTheType() {
        // A file system that is there on every Linux, and is no server's.
        QVERIFY(!SafeWriter::mayLoseWritesAt("/proc/self/status"));
        QVERIFY(!SafeWriter::mayLoseWritesAt("/no/such/file"));
    }

    void readsBackSmallFiles() {
        make(path(), "saved");
        QVERIFY(SafeWriter::holds(systemPath(), spanOf("saved")));
        QVERIFY(!SafeWriter::holds(systemPath(), spanOf("other")));
        QVERIFY(!SafeWriter::holds(systemPath(), spanOf("longer")));
        QVERIFY(!SafeWriter::holds(systemPath() + "x", spanOf("saved")));
    }

    void asksForTheSizeOfLargeFiles() {
        const QByteArray largest(SafeWriter::readBackLimit, 'a');
        const QByteArray other(SafeWriter::readBackLimit, 'b');
        make(path(), largest);
        QVERIFY(SafeWriter::holds(systemPath(), spanOf(largest)));
        QVERIFY(!SafeWriter::holds(systemPath(), spanOf(other)));
        make(path(), largest + 'a');
        QVERIFY(SafeWriter::holds(systemPath(), spanOf(other + 'b')));
        QVERIFY(!SafeWriter::holds(systemPath(), spanOf(other + "bb")));
    }

private:
    struct Refusal {
        FileError::Code code;
        QString reason;
    };

    static std::span<const std::uint8_t> spanOf(const QByteArray& bytes) {
        return {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                static_cast<std::size_t>(bytes.size())};
    }

    static ContentDigest digestOf(const QByteArray& bytes) {
        return ContentDigest::of(spanOf(bytes));
    }

    /// Writes where only `known` may be replaced.
    std::optional<Refusal> refusalOf(const std::optional<ContentDigest>& known) const {
        return refusalWhere([&known](const ContentDigest& present) { return present == known; });
    }

    std::optional<Refusal> refusalWhere(const SafeWriter::Consent& mayReplace) const {
        try {
            SafeWriter::write(path(), spanOf(newBytes), safetyFolder(), mayReplace);
            return std::nullopt;
        } catch (const FileError& error) {
            return Refusal{error.code(), error.failureReason()};
        }
    }

    QString path(const QString& name = QStringLiteral("file")) const {
        return folder_->filePath(name);
    }
    QString path(const char* name) const { return path(QString::fromLatin1(name)); }
    QByteArray systemPath() const { return QFile::encodeName(path()); }
    QString safetyFolder() const { return path("state/recovery"); }
    QStringList names() const {
        return QDir(folder_->path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    void write(const QString& to, const QByteArray& bytes) const {
        const std::optional<QString> failure = failureOf(to, bytes);
        QVERIFY2(!failure, qPrintable(failure.value_or(QString())));
    }

    std::optional<QString> failureOf(const QString& to, const QByteArray& bytes) const {
        try {
            SafeWriter::write(to,
                              {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                               static_cast<std::size_t>(bytes.size())},
                              safetyFolder());
        } catch (const FileError& error) {
            return error.failureReason();
        }
        return std::nullopt;
    }

    QString reasonFor(const QString& to) const {
        return failureOf(to, newBytes).value_or(QStringLiteral("none"));
    }

    std::unique_ptr<QTemporaryDir> folder_;
};

const RegisteredTest<SafeWriterTest> registered;
#include "SafeWriterTest.moc"
