#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <optional>
#include <vector>

#include "app/desktop/files/FileDescriptor.h"
#include "tests/support/TestProgram.h"

namespace {

std::optional<QByteArray> contentOf(const QByteArray& path) {
    return FileDescriptor::forReading(path, FileDescriptor::Links::refused).readAll();
}

/// While this lives, files of this process cannot grow beyond a size: the next write past it comes
/// back short, and the one after fails.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        rlimit limit = old_;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, oldHandler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_{};
    void (*oldHandler_)(int);
};

}  // namespace

class FileDescriptorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsFilesOfAnySize() {
        for (const qsizetype size : {0, 4095, 4096, 4097, 100'000}) {
            QByteArray bytes(size, 'x');
            if (size > 0) {
                bytes.back() = 'y';
            }
            make("a", bytes);
            QCOMPARE(contentOf(path("a")), std::optional(bytes));
        }
    }

    void readsNothingElse() {
        make("target", "text");
        QCOMPARE(::symlink(path("target").constData(), path("link").constData()), 0);
        QCOMPARE(contentOf(path("link")), std::nullopt);
        QCOMPARE(contentOf(path("none")), std::nullopt);
        QCOMPARE(contentOf(path("")), std::nullopt);
    }

    void doesNotWaitForAPipe() {
        QCOMPARE(::mkfifo(path("pipe").constData(), 0600), 0);
        QCOMPARE(contentOf(path("pipe")), std::optional(QByteArray()));
    }

    void noticesAFullDisk() {
        if (!QFile::exists(QStringLiteral("/dev/full"))) {
            QSKIP("This system has no /dev/full, the device that is always full.");
        }
        const FileDescriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
        QCOMPARE(full.writeAll(std::vector<std::uint8_t>(10, 'x')), ENOSPC);
    }

    void noticesWritesThatComeBackShort() {
        const FileDescriptor file(
            ::open(path("short").constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        int error = 0;
        {
            const FileSizeLimit limit(50'000);
            error = file.writeAll(std::vector<std::uint8_t>(100'000, 'x'));
        }
        QCOMPARE(error, EFBIG);
        QCOMPARE(QFileInfo(QFile::decodeName(path("short"))).size(), 50'000);
    }

private:
    QByteArray path(const char* name) const {
        return QFile::encodeName(folder_.filePath(QString::fromLatin1(name)));
    }

    void make(const char* name, const QByteArray& bytes) const {
        QFile file(folder_.filePath(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder_;
};

const RegisteredTest<FileDescriptorTest> registered;
#include "FileDescriptorTest.moc"
