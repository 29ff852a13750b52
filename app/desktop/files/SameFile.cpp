#include "app/desktop/files/SameFile.h"

#include <sys/stat.h>

#include "app/desktop/files/FilePath.h"

namespace {

bool find(const QString& path, struct stat& status) {
    return ::stat(FilePath::encoded(path).constData(), &status) == 0;
}

}  // namespace

bool isSameFile(const QString& one, const QString& other) {
    struct stat first {};
    struct stat second {};
    const bool isThere = find(one, first);
    if (isThere != find(other, second)) {
        return false;
    }
    return isThere ? first.st_dev == second.st_dev && first.st_ino == second.st_ino
                   : FilePath::absolute(one) == FilePath::absolute(other);
}
