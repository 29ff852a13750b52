#include "app/desktop/files/FileFolder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "app/desktop/files/FileDescriptor.h"

QByteArray FileFolder::of(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    if (slash < 0) {
        return ".";
    }
    return slash == 0 ? QByteArray("/") : path.left(slash);
}

int FileFolder::create(const QByteArray& folder) {
    if (::mkdir(folder.constData(), forTheUserAlone) == 0 || errno == EEXIST) {
        return 0;
    }
    if (errno != ENOENT || folder.lastIndexOf('/') <= 0) {
        return errno;
    }
    const int error = create(of(folder));
    if (error != 0) {
        return error;
    }
    return ::mkdir(folder.constData(), forTheUserAlone) == 0 || errno == EEXIST ? 0 : errno;
}

int FileFolder::synchronize(const QByteArray& folder) {
    const FileDescriptor opened(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return opened.isOpen() ? opened.synchronize() : 0;
}
