#include "app/desktop/saving/SafetyCopy.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>
#include <array>
#include <cerrno>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileDescriptor.h"
#include "app/desktop/files/FileFolder.h"
#include "app/desktop/files/FilePath.h"

namespace {

constexpr mode_t forTheUserAlone = 0600;

constexpr const char* copyExtension = ".old";
constexpr const char* recordExtension = ".json";

constexpr QLatin1String kindName("kind");
constexpr QLatin1String kind("interruptedSave");
constexpr QLatin1String fileName("file");
constexpr QLatin1String newContentName("newContent");

/// Copies all bytes from where one open file stands to where the other does.
int copyBytes(const FileDescriptor& source, const FileDescriptor& target) {
    std::array<std::uint8_t, std::size_t{1} << 16> buffer;
    for (;;) {
        const ssize_t count = source.read(buffer);
        if (count == 0) {
            return 0;
        }
        if (count < 0) {
            return errno;
        }
        const std::span<const std::uint8_t> bytes(buffer.data(), static_cast<std::size_t>(count));
        if (const int error = target.writeAll(bytes); error != 0) {
            return error;
        }
    }
}

int finish(FileDescriptor& file) {
    const int error = file.synchronize();
    return error != 0 ? error : file.close();
}

int open(const QByteArray& path, int flags) {
    return ::open(path.constData(), flags | O_CLOEXEC | O_NOFOLLOW, forTheUserAlone);
}

std::optional<ContentDigest> digestOf(const FileDescriptor& file) {
    return file.isOpen() ? ContentDigest::ofOpenFile(file) : std::nullopt;
}

}  // namespace

SafetyCopy::SafetyCopy(const QByteArray& path, QByteArray target,
                       const std::optional<ContentDigest>& newContent)
    : target_(std::move(target)),
      newContent_(newContent),
      copy_(path + copyExtension),
      record_(path + recordExtension) {}

SafetyCopy::SafetyCopy(const QString& folder, const QByteArray& target,
                       const std::optional<ContentDigest>& newContent)
    : SafetyCopy(
          FilePath::encoded(folder) + '/' + QUuid::createUuid().toByteArray(QUuid::WithoutBraces),
          target, newContent) {
    error_ = create(FilePath::encoded(folder));
    if (error_ != 0) {
        remove();
    }
}

QString SafetyCopy::path() const {
    return FilePath::decoded(copy_);
}

int SafetyCopy::create(const QByteArray& folder) {
    if (const int error = FileFolder::create(folder); error != 0) {
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
    lock_ = FileDescriptor(open(copy_, O_RDONLY));
    if (!lock_.isOpen() || ::flock(lock_.number(), LOCK_EX | LOCK_NB) != 0) {
        return errno;
    }
    int error = copyBytes(source, copy);
    error = error != 0 ? error : finish(copy);
    // The record comes last: it never names a copy that is not complete.
    error = error != 0 ? error : writeRecord();
    error = error != 0 ? error : FileFolder::synchronize(folder);
    // A program that starts may have taken it for one that was left behind.
    return error != 0 || ::access(copy_.constData(), F_OK) == 0 ? error : errno;
}

int SafetyCopy::writeRecord() const {
    // File names are bytes; those that are not valid UTF-8 survive this too.
    QJsonObject record{{kindName, kind},
                       {fileName, QString::fromLatin1(target_.toPercentEncoding("/"))}};
    if (newContent_) {
        record.insert(newContentName, newContent_->hex());
    }
    const QByteArray text = QJsonDocument(record).toJson();
    FileDescriptor file(open(record_, O_WRONLY | O_CREAT | O_EXCL));
    if (!file.isOpen()) {
        return errno;
    }
    const int error = file.writeAll({reinterpret_cast<const std::uint8_t*>(text.constData()),
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
    const int error = copyBytes(copy, target);
    const off_t size = ::lseek(copy.number(), 0, SEEK_CUR);
    if (error != 0) {
        return error;
    }
    return ::ftruncate(target.number(), size) != 0 ? errno : finish(target);
}

std::vector<SafetyCopy> SafetyCopy::leftBehind(const QString& folder) {
    std::vector<SafetyCopy> found;
    const QDir names(folder);
    for (const QString& name : names.entryList({QLatin1Char('*') + QLatin1String(copyExtension)})) {
        const QByteArray path = FilePath::encoded(names.filePath(name));
        SafetyCopy copy(path.chopped(QByteArrayView(copyExtension).size()));
        if (!copy.claim()) {
            continue;
        }
        if (!copy.hasRecord() || (copy.readRecord() && copy.isObsolete())) {
            copy.remove();
        } else if (!copy.target_.isEmpty()) {
            found.push_back(std::move(copy));
        }
    }
    return found;
}

/// Locks the copy if no save that goes on has it.
bool SafetyCopy::claim() {
    lock_ = FileDescriptor(open(copy_, O_RDONLY | O_NONBLOCK));
    return lock_.isOpen() && ::flock(lock_.number(), LOCK_EX | LOCK_NB) == 0;
}

/// Without a record the copy was not complete, and the file not touched yet. One that cannot be
/// reached, or is damaged, says nothing of that kind.
bool SafetyCopy::hasRecord() const {
    struct stat status {};
    return ::lstat(record_.constData(), &status) == 0 || errno != ENOENT;
}

/// False if the record cannot be read, or does not name a file.
bool SafetyCopy::readRecord() {
    const FileDescriptor record =
        FileDescriptor::forReading(record_, FileDescriptor::Links::refused);
    const QByteArray json = record.readAll().value_or(QByteArray());
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    target_ = QByteArray::fromPercentEncoding(object.value(fileName).toString().toLatin1());
    newContent_ = ContentDigest::fromHex(object.value(newContentName).toString());
    return !target_.isEmpty();
}

/// Whether the file holds the old bytes or all the new ones, and not only in memory.
bool SafetyCopy::isObsolete() const {
    const FileDescriptor target(open(target_, O_RDONLY | O_NONBLOCK));
    const std::optional<ContentDigest> present = digestOf(target);
    if (!present || target.synchronize() != 0) {
        return false;
    }
    return present == newContent_ ||
           present == digestOf(FileDescriptor(open(copy_, O_RDONLY | O_NONBLOCK)));
}

void SafetyCopy::remove() const {
    // The record first: it never names a copy that is not there.
    ::unlink(record_.constData());
    ::unlink(copy_.constData());
    // Else a power cut would bring them back, beside a file that has been saved since. What is
    // wrong then does no harm now.
    static_cast<void>(FileFolder::synchronize(FileFolder::of(copy_)));
}
