#include "benchmarks/support/TouchedFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace {

[[noreturn]] void fail(const std::filesystem::path& path) {
    throw std::system_error(errno, std::generic_category(), path.string());
}

/// A descriptor that is closed in the end.
class OpenFile {
public:
    explicit OpenFile(const std::filesystem::path& path)
        : descriptor_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (descriptor_ < 0) {
            fail(path);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { ::close(descriptor_); }

    int descriptor() const noexcept { return descriptor_; }

private:
    int descriptor_;
};

std::size_t sizeOf(const OpenFile& file, const std::filesystem::path& path) {
    struct stat status = {};
    if (::fstat(file.descriptor(), &status) != 0) {
        fail(path);
    }
    return static_cast<std::size_t>(status.st_size);
}

}  // namespace

TouchedFile::TouchedFile(const std::filesystem::path& path) {
    const OpenFile file(path);
    size_ = sizeOf(file, path);
    void* memory =
        ::mmap(nullptr, size_ + 1, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        fail(path);
    }
    start_ = static_cast<std::uint8_t*>(memory);
    for (std::size_t done = 0; done < size_;) {
        const ssize_t count = ::read(file.descriptor(), start_ + done, size_ - done);
        if (count <= 0) {
            ::munmap(start_, size_ + 1);
            fail(path);
        }
        done += static_cast<std::size_t>(count);
    }
}

TouchedFile::~TouchedFile() {
    ::munmap(start_, size_ + 1);
}
