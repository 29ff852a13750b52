#include "app/desktop/files/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QByteArrayList>
#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>

namespace {

/// Sets `found` to the names of a file's extended attributes, an access-control list being one.
int findNames(int file, QByteArrayList& found) {
    const ssize_t size = ::flistxattr(file, nullptr, 0);
    if (size < 0) {
        return errno == ENOTSUP ? 0 : errno;
    }
    QByteArray list(size, '\0');
    const ssize_t filled = ::flistxattr(file, list.data(), static_cast<std::size_t>(size));
    if (filled < 0) {
        return errno;
    }
    list.truncate(filled);
    found = list.split('\0');
    found.removeAll(QByteArray());
    return 0;
}

/// Takes away what a new file got from its folder and the old one has not: the access-control list
/// may name people who had no rights. (Other kinds of attributes do not come from folders, or may
/// not be removed.)
int removeOthers(int target, const QByteArrayList& kept) {
    QByteArrayList attributes;
    if (const int error = findNames(target, attributes); error != 0) {
        return error;
    }
    for (const QByteArray& name : attributes) {
        if (name.startsWith("system.") && !kept.contains(name) &&
            ::fremovexattr(target, name.constData()) != 0) {
            return errno;
        }
    }
    return 0;
}

int copyAttribute(int source, int target, const QByteArray& name) {
    const ssize_t size = ::fgetxattr(source, name.constData(), nullptr, 0);
    if (size < 0) {
        return errno;
    }
    QByteArray value(size, '\0');
    const ssize_t filled =
        ::fgetxattr(source, name.constData(), value.data(), static_cast<std::size_t>(size));
    if (filled < 0) {
        return errno;
    }
    return ::fsetxattr(target, name.constData(), value.constData(),
                       static_cast<std::size_t>(filled), 0) != 0
               ? errno
               : 0;
}

int copyOwner(const struct stat& from, int target) {
    struct stat to {};
    if (::fstat(target, &to) != 0) {
        return errno;
    }
    const bool hasOtherOwner = from.st_uid != to.st_uid || from.st_gid != to.st_gid;
    return hasOtherOwner && ::fchown(target, from.st_uid, from.st_gid) != 0 ? errno : 0;
}

/// A group that one is not in silently takes the setgid bit away.
int check(const struct stat& from, int target) {
    struct stat to {};
    if (::fstat(target, &to) != 0) {
        return errno;
    }
    const bool isSame =
        to.st_mode == from.st_mode && to.st_uid == from.st_uid && to.st_gid == from.st_gid;
    return isSame ? 0 : EPERM;
}

}  // namespace

TemporaryFile::TemporaryFile(const QByteArray& folder, mode_t mode)
    : path_(randomName(folder)),
      file_(::open(path_.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode)),
      error_(file_.isOpen() ? 0 : errno) {}

TemporaryFile::~TemporaryFile() {
    if (error_ == 0 && !path_.isEmpty()) {
        ::unlink(path_.constData());
    }
}

int TemporaryFile::moveTo(const QByteArray& path) noexcept {
    if (std::rename(path_.constData(), path.constData()) != 0) {
        return errno;
    }
    path_.clear();
    return 0;
}

int TemporaryFile::inherit(const FileDescriptor& old) const {
    const int source = old.number();
    const int target = file_.number();
    struct stat from {};
    if (::fstat(source, &from) != 0) {
        return errno;
    }
    QByteArrayList attributes;
    int error = copyOwner(from, target);
    error = error != 0 ? error : findNames(source, attributes);
    error = error != 0 ? error : removeOthers(target, attributes);
    if (error != 0) {
        return error;
    }
    // After the owner, which takes the bits for other identities away; before the access-control
    // list, which changes those of the group.
    constexpr mode_t permissions = 07777;
    if (::fchmod(target, from.st_mode & permissions) != 0) {
        return errno;
    }
    for (const QByteArray& name : attributes) {
        error = copyAttribute(source, target, name);
        if (error != 0) {
            return error;
        }
    }
    return check(from, target);
}

QByteArray TemporaryFile::randomName(const QByteArray& folder) {
    constexpr int digits = 12;
    return folder + '/' + prefix +
           QByteArray::number(QRandomGenerator::system()->generate64(), 36)
               .rightJustified(digits, '0')
               .right(digits);
}
