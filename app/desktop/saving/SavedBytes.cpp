#include "app/desktop/saving/SavedBytes.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileDescriptor.h"

namespace {

/// From the kernel's linux/magic.h, as statfs(2) gives them.
constexpr std::array<std::uint32_t, 5> astray{NFS_SUPER_MAGIC, SMB_SUPER_MAGIC, SMB2_SUPER_MAGIC,
                                              CIFS_SUPER_MAGIC, FUSE_SUPER_MAGIC};

}  // namespace

bool SavedBytes::mayGoAstrayOn(std::uint32_t fileSystem) {
    return std::find(astray.begin(), astray.end(), fileSystem) != astray.end();
}

bool SavedBytes::mayGoAstrayAt(const QByteArray& path) {
    struct statfs status {};
    return ::statfs(path.constData(), &status) == 0 &&
           mayGoAstrayOn(static_cast<std::uint32_t>(status.f_type));
}

bool SavedBytes::areAt(const QByteArray& path, std::span<const std::uint8_t> bytes) {
    const FileDescriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 ||
        status.st_size != static_cast<off_t>(bytes.size())) {
        return false;
    }
    return bytes.size() > mostReadBack ||
           ContentDigest::ofOpenFile(file.number()) == ContentDigest::of(bytes);
}
