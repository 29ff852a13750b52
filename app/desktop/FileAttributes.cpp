#include "app/desktop/FileAttributes.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QByteArray>
#include <QByteArrayList>
#include <algorithm>
#include <cerrno>
#include <optional>

namespace {

/// The names of a file's extended attributes, an access-control list being one; nothing if they
/// cannot be told.
std::optional<QByteArrayList> names(int file) {
    const ssize_t size = ::flistxattr(file, nullptr, 0);
    if (size < 0) {
        return errno == ENOTSUP ? std::optional(QByteArrayList()) : std::nullopt;
    }
    QByteArray list(size, '\0');
    const ssize_t filled = ::flistxattr(file, list.data(), static_cast<std::size_t>(size));
    if (filled < 0) {
        return std::nullopt;
    }
    list.truncate(filled);
    QByteArrayList found = list.split('\0');
    found.removeAll(QByteArray());
    return found;
}

/// Takes away what a new file got from its folder and the old one has not: the access-control list
/// may name people who had no rights. (Other kinds of attributes do not come from folders, or may
/// not be removed.)
bool removeOthers(int target, const QByteArrayList& kept) {
    const std::optional<QByteArrayList> attributes = names(target);
    return attributes && std::ranges::all_of(*attributes, [target, &kept](const QByteArray& name) {
               return !name.startsWith("system.") || kept.contains(name) ||
                      ::fremovexattr(target, name.constData()) == 0;
           });
}

bool copyAttribute(int source, int target, const QByteArray& name) {
    const ssize_t size = ::fgetxattr(source, name.constData(), nullptr, 0);
    if (size < 0) {
        return false;
    }
    QByteArray value(size, '\0');
    if (::fgetxattr(source, name.constData(), value.data(), static_cast<std::size_t>(size)) !=
        size) {
        return false;
    }
    return ::fsetxattr(target, name.constData(), value.constData(), static_cast<std::size_t>(size),
                       0) == 0;
}

}  // namespace

bool FileAttributes::copy(int source, int target) {
    struct stat from {};
    struct stat to {};
    if (::fstat(source, &from) != 0 || ::fstat(target, &to) != 0) {
        return false;
    }
    const bool hasOtherOwner = from.st_uid != to.st_uid || from.st_gid != to.st_gid;
    if (hasOtherOwner && ::fchown(target, from.st_uid, from.st_gid) != 0) {
        return false;
    }
    const std::optional<QByteArrayList> attributes = names(source);
    if (!attributes || !removeOthers(target, *attributes)) {
        return false;
    }
    // After the owner, which takes the bits for other identities away; before the access-control
    // list, which changes those of the group.
    constexpr mode_t permissions = 07777;
    if (::fchmod(target, from.st_mode & permissions) != 0) {
        return false;
    }
    for (const QByteArray& name : *attributes) {
        if (!copyAttribute(source, target, name)) {
            return false;
        }
    }
    // A group that one is not in takes the setgid bit away without a word.
    return ::fstat(target, &to) == 0 && to.st_mode == from.st_mode && to.st_uid == from.st_uid &&
           to.st_gid == from.st_gid;
}
