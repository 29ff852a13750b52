#include "app/desktop/files/FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>

FileDescriptor FileDescriptor::forReading(const QByteArray& path, Links links) noexcept {
    const int extra = links == Links::refused ? O_NOFOLLOW : 0;
    return FileDescriptor(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | extra));
}

ssize_t FileDescriptor::read(std::span<std::uint8_t> buffer) const noexcept {
    for (;;) {
        const ssize_t count = ::read(number_, buffer.data(), buffer.size());
        if (count >= 0 || errno != EINTR) {
            return count;
        }
    }
}

std::optional<QByteArray> FileDescriptor::readAll() const {
    std::array<std::uint8_t, 4096> piece;
    QByteArray bytes;
    for (;;) {
        const ssize_t count = read(piece);
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            return bytes;
        }
        bytes.append(reinterpret_cast<const char*>(piece.data()), count);
    }
}

int FileDescriptor::writeAll(std::span<const std::uint8_t> bytes) const noexcept {
    while (!bytes.empty()) {
        const ssize_t count = ::write(number_, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

int FileDescriptor::synchronize() const noexcept {
    while (::fsync(number_) != 0) {
        if (errno == EINVAL || errno == EROFS || errno == ENOTSUP) {
            return 0;
        }
        if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

int FileDescriptor::close() noexcept {
    if (!isOpen()) {
        return 0;
    }
    // After EINTR the descriptor is closed on Linux; closing again could hit another file.
    const bool failed = ::close(std::exchange(number_, -1)) != 0 && errno != EINTR;
    return failed ? errno : 0;
}
