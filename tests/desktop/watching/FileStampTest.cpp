#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cstdint>
#include <cstdio>

#include "app/desktop/watching/FileStamp.h"

class FileStampTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { write("file", "content"); }

    void tellsWhatIsThere() {
        const FileStamp stamp = FileStamp::of(path("file"));
        QCOMPARE(stamp.kind, FileStamp::Kind::regular);
        QCOMPARE(stamp.size, off_t{7});
        QCOMPARE(FileStamp::of(path("none")).kind, FileStamp::Kind::missing);
        QCOMPARE(FileStamp::of(path("file/below")).kind, FileStamp::Kind::missing);
        QCOMPARE(FileStamp::of(path("")).kind, FileStamp::Kind::other);
        QCOMPARE(FileStamp::of("/dev/null").kind, FileStamp::Kind::other);
    }

    void isTheSameWhileNothingHappens() {
        QCOMPARE(FileStamp::of(path("file")), FileStamp::of(path("file")));
    }

    void tellsFilesApart() {
        const FileStamp stamp = FileStamp::of(path("file"));
        write("other", "content");
        QVERIFY(FileStamp::of(path("other")) != stamp);
        QCOMPARE(std::rename(path("other").constData(), path("file").constData()), 0);
        QVERIFY(FileStamp::of(path("file")) != stamp);
    }

    void tellsSizesApart() {
        const FileStamp stamp = FileStamp::of(path("file"));
        QVERIFY(QFile::resize(QFile::decodeName(path("file")), 8));
        FileStamp after = FileStamp::of(path("file"));
        QCOMPARE(after.inode, stamp.inode);
        QVERIFY(after.size != stamp.size);
    }

    /// As tools do that copy the times too.
    void seesThroughTimesThatWerePutBack() {
        const FileStamp stamp = FileStamp::of(path("file"));
        const timespec past[] = {{1000, 0}, {1000, 5}};
        QCOMPARE(::utimensat(AT_FDCWD, path("file").constData(), past, 0), 0);
        const FileStamp after = FileStamp::of(path("file"));
        QCOMPARE(after.modified, std::int64_t{1'000'000'000'005});
        QVERIFY(after.changed >= stamp.changed);
        QVERIFY(after != stamp);
    }

private:
    QByteArray path(const char* name) const {
        return QFile::encodeName(folder_.filePath(QString::fromLatin1(name)));
    }

    void write(const char* name, const QByteArray& bytes) const {
        QFile file(QFile::decodeName(path(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(FileStampTest)
#include "FileStampTest.moc"
