#include "app/desktop/watching/FileStamp.h"

#include <sys/stat.h>

#include <cerrno>

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * nanosecondsPerSecond + time.tv_nsec;
}

}  // namespace

FileStamp FileStamp::of(const QByteArray& path) {
    struct stat status {};
    FileStamp stamp;
    if (::stat(path.constData(), &status) != 0) {
        stamp.kind = errno == ENOENT || errno == ENOTDIR ? Kind::missing : Kind::other;
    } else if (S_ISREG(status.st_mode)) {
        stamp = {Kind::regular,
                 status.st_dev,
                 status.st_ino,
                 status.st_size,
                 nanoseconds(status.st_mtim),
                 nanoseconds(status.st_ctim)};
    }
    return stamp;
}
