#include "app/desktop/recovery/RecoveryFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

#include "app/desktop/files/FileFolder.h"
#include "app/desktop/files/TemporaryFile.h"

namespace {

constexpr mode_t forTheUserAlone = 0600;

constexpr const char* lockName = "lock";

/// 0 if `path` is a folder of this user, and no link to one.
int requireOwnFolder(const QByteArray& path) {
    struct stat status {};
    if (::lstat(path.constData(), &status) != 0) {
        return errno;
    }
    if (!S_ISDIR(status.st_mode)) {
        return ENOTDIR;
    }
    return status.st_uid == ::geteuid() ? 0 : EPERM;
}

/// Whether an open file still has a name.
bool isThere(int file) {
    struct stat status {};
    return ::fstat(file, &status) == 0 && status.st_nlink > 0;
}

/// Whether a name is that of a file whose writing was interrupted.
bool isPartOfFile(const QByteArray& name) {
    return name.startsWith(TemporaryFile::prefix);
}

}  // namespace

RecoveryFolder::RecoveryFolder(QByteArray path) : path_(std::move(path)) {}

RecoveryFolder::~RecoveryFolder() {
    if (isLocked() && names().isEmpty()) {
        for (const QByteArray& part : allNames()) {
            remove(part);
        }
        ::unlink(lockPath().constData());
        ::rmdir(path_.constData());
    }
}

QByteArray RecoveryFolder::lockPath() const {
    return pathOf(lockName);
}

int RecoveryFolder::create() {
    if (const int error = FileFolder::create(FileFolder::of(path_)); error != 0) {
        return error;
    }
    if (::mkdir(path_.constData(), FileFolder::forTheUserAlone) != 0) {
        return errno;
    }
    const int error = lock(O_CREAT | O_EXCL);
    // A program that was looking for folders left behind may have been faster.
    return error == EWOULDBLOCK || error == ENOENT ? EEXIST : error;
}

int RecoveryFolder::claim() {
    const int error = requireOwnFolder(path_);
    return error != 0 ? error : lock(0);
}

int RecoveryFolder::lock(int flags) {
    FileDescriptor file(
        ::open(lockPath().constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | flags, forTheUserAlone));
    if (!file.isOpen()) {
        return errno;
    }
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        return errno;
    }
    // Whoever had the lock before may have deleted the folder.
    if (!isThere(file.number())) {
        return ENOENT;
    }
    lock_ = std::move(file);
    return 0;
}

QByteArrayList RecoveryFolder::names() const {
    QByteArrayList names = allNames();
    names.removeIf(isPartOfFile);
    return names;
}

/// Everything but the lock.
QByteArrayList RecoveryFolder::allNames() const {
    QByteArrayList names;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path_.constData()), ::closedir);
    const dirent* entry = nullptr;
    while (folder != nullptr && (entry = ::readdir(folder.get())) != nullptr) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != ".." && name != lockName) {
            names.append(name);
        }
    }
    return names;
}

int RecoveryFolder::write(const QByteArray& name, std::span<const std::uint8_t> bytes) const {
    TemporaryFile temporary(path_, forTheUserAlone);
    if (temporary.error() != 0) {
        return temporary.error();
    }
    int error = temporary.file().writeAll(bytes);
    error = error != 0 ? error : temporary.file().synchronize();
    error = error != 0 ? error : temporary.file().close();
    error = error != 0 ? error : temporary.moveTo(pathOf(name));
    return error != 0 ? error : FileFolder::synchronize(path_);
}

int RecoveryFolder::write(const QByteArray& name, const QByteArray& bytes) const {
    return write(name, {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                        static_cast<std::size_t>(bytes.size())});
}

std::optional<QByteArray> RecoveryFolder::read(const QByteArray& name) const {
    return FileDescriptor::forReading(pathOf(name), FileDescriptor::Links::refused).readAll();
}

void RecoveryFolder::remove(const QByteArray& name) const {
    ::unlink(pathOf(name).constData());
}
