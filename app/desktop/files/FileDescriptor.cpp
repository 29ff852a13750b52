#include "app/desktop/files/FileDescriptor.h"

#include <unistd.h>

#include <cerrno>

int FileDescriptor::close() noexcept {
    if (!isOpen()) {
        return 0;
    }
    // After EINTR the descriptor is closed on Linux; closing again could hit another file.
    const bool failed = ::close(std::exchange(number_, -1)) != 0 && errno != EINTR;
    return failed ? errno : 0;
}
