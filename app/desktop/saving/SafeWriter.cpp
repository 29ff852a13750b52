#include "app/desktop/saving/SafeWriter.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileDescriptor.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/files/FileFolder.h"
#include "app/desktop/files/FilePath.h"
#include "app/desktop/files/TemporaryFile.h"
#include "app/desktop/saving/SafetyCopy.h"

namespace {

/// File systems of servers and programs: from the kernel's linux/magic.h, as statfs(2) gives them.
constexpr std::array<std::uint32_t, 5> unreliable{
    NFS_SUPER_MAGIC, SMB_SUPER_MAGIC, SMB2_SUPER_MAGIC, CIFS_SUPER_MAGIC, FUSE_SUPER_MAGIC};

/// One save: the file as the user named it and as links lead to it, and its new content.
struct Save {
    QString path;
    QByteArray target;
    std::optional<struct stat> old;  ///< of the file that is there
    std::span<const std::uint8_t> bytes;
    const SafeWriter::Consent& mayReplace;
};

QString explained(const char* reason) {
    return QCoreApplication::translate("SafeWriter", reason);
}

[[noreturn]] void fail(const Save& save, int errorNumber) {
    throw FileError::fromSystem(FileError::Code::writeFailed, save.path, errorNumber);
}

[[noreturn]] void fail(const Save& save, const QString& reason) {
    throw FileError(FileError::Code::writeFailed, save.path, reason);
}

void check(const Save& save, int errorNumber) {
    if (errorNumber != 0) {
        fail(save, errorNumber);
    }
}

/// Finds out what is there, and refuses what must not be touched.
void examine(Save& save) {
    struct stat status {};
    if (::stat(save.target.constData(), &status) != 0) {
        if (errno != ENOENT) {
            fail(save, errno);
        }
        return;
    }
    if (S_ISDIR(status.st_mode)) {
        fail(save, EISDIR);
    }
    if (!S_ISREG(status.st_mode)) {
        fail(save, explained(QT_TRANSLATE_NOOP("SafeWriter", "It is not a regular file.")));
    }
    if (::faccessat(AT_FDCWD, save.target.constData(), W_OK, AT_EACCESS) != 0) {
        if (errno != EACCES) {
            fail(save, errno);
        }
        fail(save,
             explained(QT_TRANSLATE_NOOP("SafeWriter",
                                         "You don't have permission to write to it. Save under "
                                         "another name, or change the permissions of the file.")));
    }
    save.old = status;
}

/// Stops the save if the file that is there must not be written over. A file that has gone can be
/// made again without a question.
void askForConsent(const Save& save) {
    if (!save.mayReplace) {
        return;
    }
    const FileDescriptor present =
        FileDescriptor::forReading(save.target, FileDescriptor::Links::refused);
    if (!present.isOpen()) {
        check(save, errno == ENOENT ? 0 : errno);
        return;
    }
    const std::optional<ContentDigest> digest = ContentDigest::ofOpenFile(present);
    if (!digest) {
        fail(save, errno);
    }
    if (!save.mayReplace(*digest)) {
        throw FileError(FileError::Code::changedOnDisk, save.path,
                        explained(QT_TRANSLATE_NOOP("SafeWriter", "It has been left untouched.")));
    }
}

/// Whether an error speaks against putting another file in place, and not against the content.
bool isAboutPlace(int errorNumber) {
    return errorNumber == EACCES || errorNumber == EPERM || errorNumber == EROFS ||
           errorNumber == EBUSY || errorNumber == EXDEV;
}

/// Whether an error says that a new file cannot have what the old one had, and not that there is no
/// room or that the disk fails.
bool isAboutAttributes(int errorNumber) {
    return errorNumber == EPERM || errorNumber == EACCES || errorNumber == EOPNOTSUPP ||
           errorNumber == EINVAL || errorNumber == ENOSYS;
}

/// Gives a new file what the old one had. Returns 0 or the number of the system's error.
int inherit(const Save& save, TemporaryFile& newFile) {
    const FileDescriptor old =
        FileDescriptor::forReading(save.target, FileDescriptor::Links::refused);
    return old.isOpen() ? newFile.inherit(old) : errno;
}

/// Whether the file holds what was saved, as far as there is reason to doubt it.
bool hasArrived(const Save& save) {
    return !SafeWriter::mayLoseWritesAt(save.target) || SafeWriter::holds(save.target, save.bytes);
}

/// Puts a finished file in place of the old one, if any. False if the place does not allow that,
/// and nothing has happened.
bool replace(const Save& save) {
    if (save.old && save.old->st_nlink > 1) {
        return false;
    }
    constexpr mode_t newFileMode = 0666;  // less what the user's mask takes away
    constexpr mode_t untilItInherits = 0600;
    const QByteArray folder = FileFolder::of(save.target);
    TemporaryFile newFile(folder, save.old ? untilItInherits : newFileMode);
    if (save.old && isAboutPlace(newFile.error())) {
        return false;
    }
    check(save, newFile.error());
    check(save, newFile.file().writeAll(save.bytes));
    if (save.old) {
        const int error = inherit(save, newFile);
        if (isAboutAttributes(error)) {
            return false;
        }
        check(save, error);
    }
    check(save, newFile.file().synchronize());
    check(save, newFile.file().close());
    askForConsent(save);
    const int error = newFile.moveTo(save.target);
    if (save.old && isAboutPlace(error)) {
        return false;
    }
    check(save, error);
    check(save, FileFolder::synchronize(folder));
    if (!hasArrived(save)) {
        fail(save, explained(QT_TRANSLATE_NOOP(
                       "SafeWriter",
                       "The file system reported success, but the file does not contain what was "
                       "saved. Save it somewhere else.")));
    }
    return true;
}

/// Writing takes the bits for other identities away from the mode. Only the owner of the file can
/// put them back.
void keepMode(const Save& save, int file) {
    constexpr mode_t permissions = 07777;
    struct stat status {};
    if (::fstat(file, &status) == 0 && status.st_mode != save.old->st_mode) {
        // Whoever may not do that has saved nevertheless.
        static_cast<void>(::fchmod(file, save.old->st_mode & permissions));
    }
}

/// Writes over the old content. The room is taken first, so that a full disk is found before the
/// first byte is overwritten.
int writeOver(const Save& save, const FileDescriptor& file) {
    const auto size = static_cast<off_t>(save.bytes.size());
    if (size > save.old->st_size && ::fallocate(file.number(), 0, 0, size) != 0 &&
        errno != EOPNOTSUPP && errno != ENOSYS) {
        return errno;
    }
    if (const int error = file.writeAll(save.bytes); error != 0) {
        return error;
    }
    if (::ftruncate(file.number(), size) != 0) {
        return errno;
    }
    keepMode(save, file.number());
    return file.synchronize();
}

/// Whether the path still leads to the open file.
bool isInPlace(const Save& save, const FileDescriptor& file) {
    struct stat opened {};
    struct stat present {};
    return ::fstat(file.number(), &opened) == 0 &&
           ::lstat(save.target.constData(), &present) == 0 && opened.st_dev == present.st_dev &&
           opened.st_ino == present.st_ino;
}

[[noreturn]] void failAsMoved(const Save& save) {
    fail(save, explained(QT_TRANSLATE_NOOP(
                   "SafeWriter", "Another program has moved or replaced it in the meantime.")));
}

/// Nothing else will do: what lies in the folder for temporary files may be gone after a power cut.
[[noreturn]] void failWithoutCopy(const Save& save, const QString& safetyFolder, int errorNumber) {
    const FileError reason =
        FileError::fromSystem(FileError::Code::writeFailed, save.path, errorNumber);
    fail(save, QCoreApplication::translate(
                   "SafeWriter",
                   "It can only be overwritten in place, and the backup needed in case that fails "
                   "can't be written to “%1”: %2 Allow writing there, or free up some space.")
                   .arg(FilePath::shown(safetyFolder), reason.failureReason()));
}

void overwrite(const Save& save, const QString& safetyFolder) {
    FileDescriptor file(::open(save.target.constData(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file.isOpen()) {
        fail(save, errno);
    }
    if (::faccessat(AT_FDCWD, save.target.constData(), R_OK, AT_EACCESS) != 0) {
        fail(save, errno);
    }
    const SafetyCopy copy(safetyFolder, save.target, ContentDigest::of(save.bytes));
    if (copy.error() != 0) {
        failWithoutCopy(save, safetyFolder, copy.error());
    }
    try {
        askForConsent(save);
    } catch (const FileError&) {
        copy.remove();
        throw;
    }
    // What was copied and asked about is what the path led to then.
    if (!isInPlace(save, file)) {
        copy.remove();
        failAsMoved(save);
    }
    int error = writeOver(save, file);
    const bool isMoved = !isInPlace(save, file);
    error = error != 0 ? error : file.close();
    if (error == 0 && !isMoved && !hasArrived(save)) {
        error = EIO;
    }
    // Where the file is another program's now, the old bytes have no business in it.
    if (error != 0 && (isMoved || copy.restore() != 0)) {
        const FileError reason =
            FileError::fromSystem(FileError::Code::writeFailed, save.path, error);
        fail(save,
             QCoreApplication::translate("SafeWriter", "%1 Its previous contents are in “%2”.")
                 .arg(reason.failureReason(), FilePath::shown(copy.path())));
    }
    copy.remove();
    check(save, error);
    if (isMoved) {
        failAsMoved(save);
    }
}

}  // namespace

void SafeWriter::write(const QString& path, std::span<const std::uint8_t> bytes,
                       const QString& safetyFolder, const Consent& mayReplace) {
    Save save{path, FilePath::followed(FilePath::encoded(path)).last(), std::nullopt, bytes,
              mayReplace};
    examine(save);
    if (!replace(save)) {
        overwrite(save, safetyFolder);
    }
}

bool SafeWriter::mayLoseWritesOn(std::uint32_t fileSystem) {
    return std::find(unreliable.begin(), unreliable.end(), fileSystem) != unreliable.end();
}

bool SafeWriter::mayLoseWritesAt(const QByteArray& path) {
    struct statfs status {};
    return ::statfs(path.constData(), &status) == 0 &&
           mayLoseWritesOn(static_cast<std::uint32_t>(status.f_type));
}

bool SafeWriter::holds(const QByteArray& path, std::span<const std::uint8_t> bytes) {
    const FileDescriptor file = FileDescriptor::forReading(path);
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 ||
        status.st_size != static_cast<off_t>(bytes.size())) {
        return false;
    }
    return bytes.size() > readBackLimit ||
           ContentDigest::ofOpenFile(file) == ContentDigest::of(bytes);
}
