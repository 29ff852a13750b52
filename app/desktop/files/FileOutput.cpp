#include "app/desktop/files/FileOutput.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>

int FileOutput::writeAll(int file, std::span<const std::uint8_t> bytes) noexcept {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

int FileOutput::synchronize(int file) noexcept {
    while (::fsync(file) != 0) {
        if (errno == EINVAL || errno == EROFS || errno == ENOTSUP) {
            return 0;
        }
        if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}
