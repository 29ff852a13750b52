#include "app/desktop/FileFolder.h"

#include <fcntl.h>

#include "app/model/FileDescriptor.h"
#include "app/model/FileOutput.h"

QByteArray FileFolder::of(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    if (slash < 0) {
        return ".";
    }
    return slash == 0 ? QByteArray("/") : path.left(slash);
}

int FileFolder::synchronize(const QByteArray& folder) {
    const FileDescriptor opened(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return opened.isOpen() ? FileOutput::synchronize(opened.number()) : 0;
}
