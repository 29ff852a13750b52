#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "app/desktop/watching/FileChangeDetector.h"
#include "tests/model/support/NoMoreDescriptors.h"
#include "tests/support/TestProgram.h"

namespace {

constexpr std::chrono::milliseconds shortRest{20};
constexpr std::chrono::milliseconds longRest{200};

const QByteArray known = "what is known";

ContentDigest digestOf(const QByteArray& bytes) {
    return ContentDigest::of({reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                              static_cast<std::size_t>(bytes.size())});
}

void append(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::Append));
    QCOMPARE(file.write(bytes), bytes.size());
}

void writeInPlace(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

void replace(const QString& path, const QByteArray& bytes) {
    writeInPlace(path + QStringLiteral(".new"), bytes);
    QCOMPARE(std::rename(QFile::encodeName(path + QStringLiteral(".new")).constData(),
                         QFile::encodeName(path).constData()),
             0);
}

}  // namespace

class FileChangeDetectorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
        writeInPlace(path(), known);
        follow(shortRest);
    }

    void cleanup() { detector_.reset(); }

    void isSilentWhileNothingHappens() {
        QVERIFY(isExamined());
        QCOMPARE(log_, QStringList());
    }

    void tellsOfReplacedFiles() {
        for (const char* bytes : {"one", "two", "three"}) {
            replace(path(), bytes);
            QTRY_COMPARE(log_.value(log_.size() - 1), changeTo(bytes));
        }
        QCOMPARE(log_.size(), 3);
    }

    void tellsOfFilesWrittenInPlace() {
        for (const char* bytes : {"one", "two", "three"}) {
            writeInPlace(path(), bytes);
            QTRY_COMPARE(log_.value(log_.size() - 1), changeTo(bytes));
        }
        QCOMPARE(log_.size(), 3);
    }

    void tellsOfChangesBeforeItListened() {
        detector_->follow(path(), digestOf("read before"));
        QTRY_COMPARE(log_, QStringList(changeTo(known)));
    }

    void tellsWhenTheKnownContentIsBack() {
        writeInPlace(path(), "other");
        QTRY_COMPARE(log_.size(), 1);
        writeInPlace(path(), known);
        QTRY_COMPARE(log_, (QStringList{changeTo("other"), changeTo(known)}));
    }

    // --- What is no change ---

    void isSilentAboutTimesAndRights() {
        QVERIFY(isExamined());
        QVERIFY(::utimensat(AT_FDCWD, QFile::encodeName(path()).constData(), nullptr, 0) == 0);
        QVERIFY(isExamined());
        QVERIFY(::chmod(QFile::encodeName(path()).constData(), 0640) == 0);
        QVERIFY(isExamined());
        QCOMPARE(log_, QStringList());
    }

    void isSilentAboutEqualContent() {
        QVERIFY(isExamined());
        writeInPlace(path(), known);
        QVERIFY(isExamined());
        replace(path(), known);
        QVERIFY(isExamined());
        QCOMPARE(log_, QStringList());
    }

    /// A folder in which much is going on costs nothing.
    void isSilentAboutOtherFiles() {
        QVERIFY(isExamined());
        const QSignalSpy examined(detector_.get(), &FileChangeDetector::examined);
        writeInPlace(folder_->filePath(QStringLiteral("b")), "other");
        QVERIFY(QFile::remove(folder_->filePath(QStringLiteral("b"))));
        writeInPlace(path(), "one");
        QTRY_COMPARE(examined.count(), 1);
        QCOMPARE(log_, QStringList(changeTo("one")));
    }

    void isSilentWhileItPauses() {
        QVERIFY(isExamined());
        detector_->pause();
        writeInPlace(path(), "ours");
        QCoreApplication::processEvents();
        detector_->follow(path(), digestOf("ours"));
        detector_->resume();
        QVERIFY(isExamined());
        QCOMPARE(log_, QStringList());
    }

    void makesUpForWhatItMissed() {
        QVERIFY(isExamined());
        detector_->pause();
        writeInPlace(path(), "theirs");
        QCoreApplication::processEvents();
        detector_->resume();
        QTRY_COMPARE(log_, QStringList(changeTo("theirs")));
    }

    // --- Not yet complete ---

    void waitsForSlowWriters() {
        follow(longRest);
        QVERIFY(isExamined());
        QByteArray whole;
        QTimer writer;
        connect(&writer, &QTimer::timeout, this, [this, &whole, &writer] {
            whole += "piece ";
            append(path(), "piece ");
            if (whole.size() == 20 * 6) {
                writer.stop();
            }
        });
        writer.start(10);
        QTRY_VERIFY(!log_.isEmpty());
        QCOMPARE(log_, QStringList(changeTo(known + whole)));
    }

    /// Some programs delete a file before they write it anew.
    void doesNotSeeAShortAbsence() {
        follow(longRest);
        QVERIFY(isExamined());
        QVERIFY(QFile::remove(path()));
        QCoreApplication::processEvents();
        writeInPlace(path(), "new");
        QTRY_COMPARE(log_, QStringList(changeTo("new")));
    }

    // --- Coming and going ---

    void tellsOfDeletedFiles() {
        QVERIFY(QFile::remove(path()));
        QTRY_COMPARE(log_, QStringList(QStringLiteral("deleted")));
        writeInPlace(path(), known);
        QTRY_COMPARE(log_.size(), 2);
        QCOMPARE(log_.last(), changeTo(known));
        QVERIFY(QFile::rename(path(), path() + u'x'));
        QTRY_COMPARE(log_.size(), 3);
        QCOMPARE(log_.last(), QStringLiteral("deleted"));
        writeInPlace(path(), "other");
        QTRY_COMPARE(log_.size(), 4);
        QCOMPARE(log_.last(), changeTo("other"));
    }

    void tellsOfFoldersThatComeAndGo() {
        QVERIFY(QDir(folder_->path()).mkpath(QStringLiteral("deep/down")));
        const QString deep = folder_->filePath(QStringLiteral("deep/down/file"));
        writeInPlace(deep, known);
        detector_->follow(deep, digestOf(known));
        QVERIFY(isExamined());
        QVERIFY(QDir(folder_->filePath(QStringLiteral("deep"))).removeRecursively());
        QTRY_COMPARE(log_, QStringList(QStringLiteral("deleted")));
        QVERIFY(QDir(folder_->path()).mkpath(QStringLiteral("deep/down")));
        writeInPlace(deep, known);
        QTRY_COMPARE(log_.size(), 2);
        QCOMPARE(log_.last(), changeTo(known));
    }

    // --- Links ---

    void followsLinks() {
        QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("far")));
        const QString target = folder_->filePath(QStringLiteral("far/target"));
        writeInPlace(target, known);
        const QString link = folder_->filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(QStringLiteral("far/target"), link));
        detector_->follow(link, digestOf(known));
        QVERIFY(isExamined());

        replace(target, "one");
        QTRY_COMPARE(log_, QStringList(changeTo("one")));
        writeInPlace(target, "two");
        QTRY_COMPARE(log_.size(), 2);
        // And the link itself, to a file that was not looked at before.
        QVERIFY(QFile::remove(link) && QFile::link(path(), link));
        QTRY_COMPARE(log_.size(), 3);
        QCOMPARE(log_.last(), changeTo(known));
        writeInPlace(path(), "three");
        QTRY_COMPARE(log_.size(), 4);
    }

    void hearsOfWritingUnderAnotherName() {
        QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("far")));
        const QString other = folder_->filePath(QStringLiteral("far/other"));
        QCOMPARE(
            ::link(QFile::encodeName(path()).constData(), QFile::encodeName(other).constData()), 0);
        QVERIFY(isExamined());
        writeInPlace(other, "one");
        QTRY_COMPARE(log_, QStringList(changeTo("one")));
    }

    // --- Without being told ---

    void findsChangesThatTheSystemDoesNotTellOf() {
        {
            const NoMoreDescriptors none;
            make(shortRest);
        }
        detector_->follow(path(), digestOf(known));
        QVERIFY(isExamined());
        writeInPlace(path(), "silent");
        QCoreApplication::processEvents();
        detector_->check();
        QTRY_COMPARE(log_, QStringList(changeTo("silent")));
        detector_->check();
        QVERIFY(isExamined());
        QCOMPARE(log_.size(), 1);
        QVERIFY(QFile::remove(path()));
        detector_->check();
        QTRY_COMPARE(log_.size(), 2);
        QCOMPARE(log_.last(), QStringLiteral("deleted"));
    }

    void leavesNothingBehind() {
        const auto open = [] { return QDir(QStringLiteral("/proc/self/fd")).entryList().size(); };
        detector_.reset();
        const qsizetype before = open();
        for (int i = 0; i < 5; ++i) {
            follow(shortRest);
            QVERIFY(isExamined());
            detector_.reset();
        }
        QCOMPARE(open(), before);
    }

    // --- Stamps ---

    void tellsWhatIsThere() {
        const FileStamp stamp = FileStamp::of(systemPath("file"));
        QCOMPARE(stamp.kind, FileStamp::Kind::regular);
        QCOMPARE(stamp.size, off_t{13});
        QCOMPARE(FileStamp::of(systemPath("none")).kind, FileStamp::Kind::missing);
        QCOMPARE(FileStamp::of(systemPath("file/below")).kind, FileStamp::Kind::missing);
        QCOMPARE(FileStamp::of(systemPath("")).kind, FileStamp::Kind::other);
        QCOMPARE(FileStamp::of("/dev/null").kind, FileStamp::Kind::other);
    }

    void isTheSameWhileNothingHappens() {
        QCOMPARE(FileStamp::of(systemPath("file")), FileStamp::of(systemPath("file")));
    }

    void tellsFilesApart() {
        const FileStamp stamp = FileStamp::of(systemPath("file"));
        writeInPlace(folder_->filePath(QStringLiteral("other")), known);
        QVERIFY(FileStamp::of(systemPath("other")) != stamp);
        QCOMPARE(std::rename(systemPath("other").constData(), systemPath("file").constData()), 0);
        QVERIFY(FileStamp::of(systemPath("file")) != stamp);
    }

    void tellsSizesApart() {
        const FileStamp stamp = FileStamp::of(systemPath("file"));
        QVERIFY(QFile::resize(path(), 8));
        FileStamp after = FileStamp::of(systemPath("file"));
        QCOMPARE(after.inode, stamp.inode);
        QVERIFY(after.size != stamp.size);
    }

    /// As tools do that copy the times too.
    void seesThroughTimesThatWerePutBack() {
        const FileStamp stamp = FileStamp::of(systemPath("file"));
        const timespec past[] = {{1000, 0}, {1000, 5}};
        QCOMPARE(::utimensat(AT_FDCWD, systemPath("file").constData(), past, 0), 0);
        const FileStamp after = FileStamp::of(systemPath("file"));
        QCOMPARE(after.modified, std::int64_t{1'000'000'000'005});
        QVERIFY(after.changed >= stamp.changed);
        QVERIFY(after != stamp);
    }

private:
    QByteArray systemPath(const char* name) const {
        return QFile::encodeName(folder_->filePath(QString::fromLatin1(name)));
    }
    QString path() const { return folder_->filePath(QStringLiteral("file")); }

    static QString changeTo(const QByteArray& bytes) { return digestOf(bytes).hex(); }

    void make(std::chrono::milliseconds rest) {
        log_.clear();
        detector_ = std::make_unique<FileChangeDetector>(rest);
        connect(detector_.get(), &FileChangeDetector::found, this,
                [this](const FileContent& found) {
                    log_ += found.isMissing() ? QStringLiteral("deleted") : found.digest->hex();
                });
    }

    void follow(std::chrono::milliseconds rest) {
        make(rest);
        detector_->follow(path(), digestOf(known));
    }

    /// Waits until the file has been looked at.
    bool isExamined() {
        QSignalSpy examined(detector_.get(), &FileChangeDetector::examined);
        return examined.wait();
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<FileChangeDetector> detector_;
    QStringList log_;
};

const RegisteredTest<FileChangeDetectorTest> registered;
#include "FileChangeDetectorTest.moc"
