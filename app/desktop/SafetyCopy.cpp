#include "app/desktop/SafetyCopy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>
#include <array>
#include <cerrno>
#include <cstdint>
#include <span>

#include "app/desktop/FileFolder.h"
#include "app/model/FileDescriptor.h"
#include "app/model/FileOutput.h"
#include "app/model/FilePath.h"

namespace {

constexpr mode_t forTheUserAlone = 0600;
constexpr mode_t folderForTheUserAlone = 0700;

/// Copies all bytes from where one open file stands to where the other does.
int copyBytes(int source, int target) {
    std::array<std::uint8_t, std::size_t{1} << 16> buffer;
    for (;;) {
        const ssize_t count = ::read(source, buffer.data(), buffer.size());
        if (count == 0) {
            return 0;
        }
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        if (count > 0) {
            const std::span<const std::uint8_t> bytes(buffer.data(),
                                                      static_cast<std::size_t>(count));
            if (const int error = FileOutput::writeAll(target, bytes); error != 0) {
                return error;
            }
        }
    }
}

int finish(FileDescriptor& file) {
    const int error = FileOutput::synchronize(file.number());
    return error != 0 ? error : file.close();
}

int open(const QByteArray& path, int flags) {
    return ::open(path.constData(), flags | O_CLOEXEC | O_NOFOLLOW, forTheUserAlone);
}

/// Makes the folder and those above it; a folder that is there stays as it is.
int makeFolder(const QByteArray& folder) {
    if (::mkdir(folder.constData(), folderForTheUserAlone) == 0 || errno == EEXIST) {
        return 0;
    }
    if (errno != ENOENT || folder.lastIndexOf('/') <= 0) {
        return errno;
    }
    const int error = makeFolder(FileFolder::of(folder));
    if (error != 0) {
        return error;
    }
    return ::mkdir(folder.constData(), folderForTheUserAlone) == 0 || errno == EEXIST ? 0 : errno;
}

}  // namespace

SafetyCopy::SafetyCopy(const QString& folder, const QByteArray& target) : target_(target) {
    const QByteArray name =
        FilePath::encoded(folder) + '/' + QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
    copy_ = name + ".old";
    record_ = name + ".json";
    error_ = make(FilePath::encoded(folder));
    if (error_ != 0) {
        remove();
    }
}

QString SafetyCopy::path() const {
    return FilePath::shown(FilePath::decoded(copy_));
}

int SafetyCopy::make(const QByteArray& folder) {
    if (const int error = makeFolder(folder); error != 0) {
        return error;
    }
    const FileDescriptor source(open(target_, O_RDONLY));
    if (!source.isOpen()) {
        return errno;
    }
    FileDescriptor copy(open(copy_, O_WRONLY | O_CREAT | O_EXCL));
    if (!copy.isOpen()) {
        return errno;
    }
    int error = copyBytes(source.number(), copy.number());
    error = error != 0 ? error : finish(copy);
    // The record comes last: it never names a copy that is not complete.
    error = error != 0 ? error : writeRecord();
    return error != 0 ? error : FileFolder::synchronize(folder);
}

int SafetyCopy::writeRecord() const {
    // Names of files are bytes; those that are no text survive this too.
    const QJsonObject record{
        {QStringLiteral("kind"), QStringLiteral("interruptedSave")},
        {QStringLiteral("file"), QString::fromLatin1(target_.toPercentEncoding("/"))}};
    const QByteArray text = QJsonDocument(record).toJson();
    FileDescriptor file(open(record_, O_WRONLY | O_CREAT | O_EXCL));
    if (!file.isOpen()) {
        return errno;
    }
    const int error = FileOutput::writeAll(file.number(),
                                           {reinterpret_cast<const std::uint8_t*>(text.constData()),
                                            static_cast<std::size_t>(text.size())});
    return error != 0 ? error : finish(file);
}

int SafetyCopy::restore() const {
    const FileDescriptor copy(open(copy_, O_RDONLY));
    if (!copy.isOpen()) {
        return errno;
    }
    FileDescriptor target(open(target_, O_WRONLY));
    if (!target.isOpen()) {
        return errno;
    }
    const int error = copyBytes(copy.number(), target.number());
    const off_t size = ::lseek(copy.number(), 0, SEEK_CUR);
    if (error != 0) {
        return error;
    }
    return ::ftruncate(target.number(), size) != 0 ? errno : finish(target);
}

void SafetyCopy::remove() const {
    // The record first: it never names a copy that is not there.
    ::unlink(record_.constData());
    ::unlink(copy_.constData());
}
