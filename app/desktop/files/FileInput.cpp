#include "app/desktop/files/FileInput.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "app/desktop/files/FileDescriptor.h"

std::optional<QByteArray> FileInput::readAll(const QByteArray& path) {
    const FileDescriptor file(
        ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    QByteArray bytes;
    while (file.isOpen()) {
        constexpr qsizetype room = 4096;
        const qsizetype before = bytes.size();
        bytes.resize(before + room);
        const ssize_t count = ::read(file.number(), bytes.data() + before, room);
        bytes.truncate(before + std::max(count, ssize_t{0}));
        if (count == 0) {
            return bytes;
        }
        if (count < 0 && errno != EINTR) {
            break;
        }
    }
    return std::nullopt;
}
