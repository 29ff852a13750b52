#include "app/desktop/files/PlistDocumentReader.h"

#include <sys/stat.h>

#include <QCoreApplication>
#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileDescriptor.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/files/FilePath.h"
#include "app/desktop/files/ProgressReporter.h"
#include "app/model/runtime/Plist.h"
#include "app/model/runtime/Signposter.h"

namespace {

/// How much is asked for beyond the size that the system tells: the end of the file is only seen by
/// a read that finds nothing.
constexpr std::size_t extra = 4096;

/// How much is read between two reports of the progress.
constexpr std::size_t chunkSize = std::size_t{8} << 20;

double shareOf(std::size_t size, std::size_t expected) {
    return size < expected ? static_cast<double>(size) / static_cast<double>(expected) : 1;
}

[[noreturn]] void failReading(const QString& path, int errorNumber) {
    throw FileError::fromSystem(FileError::Code::readFailed, path, errorNumber);
}

void requireRegularFile(const struct stat& status, const QString& path) {
    if (S_ISDIR(status.st_mode)) {
        failReading(path, EISDIR);
    }
    // Reading from a pipe or a device could block for ever.
    if (!S_ISREG(status.st_mode)) {
        throw FileError(FileError::Code::readFailed, path,
                        QCoreApplication::translate("FileError", "It is not a regular file."));
    }
}

PlistBytes wholeFile(const QString& path, ProgressReporter* progress) {
    const FileDescriptor file = FileDescriptor::forReading(FilePath::encoded(path));
    if (!file.isOpen()) {
        failReading(path, errno);
    }
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) {
        failReading(path, errno);
    }
    requireRegularFile(status, path);

    // The size is a hint: files may grow while they are read, and some have none to tell.
    PlistBytes bytes;
    const auto expected = static_cast<std::size_t>(status.st_size);
    std::size_t capacity = expected + extra;
    for (;;) {
        const ssize_t count = file.read({bytes.reserve(capacity), std::min(capacity, chunkSize)});
        if (count < 0) {
            failReading(path, errno);
        }
        if (count == 0) {
            return bytes;
        }
        const auto size = static_cast<std::size_t>(count);
        bytes.advance(size);
        capacity = capacity > size + extra ? capacity - size : extra;
        if (progress != nullptr) {
            progress->advance(shareOf(bytes.size(), expected));
        }
    }
}

}  // namespace

PlistFile PlistDocumentReader::read(const QString& path, ProgressReporter* progress,
                                    ContentDigest* digest) {
    const Signposter::Interval interval("Read");
    if (progress != nullptr) {
        progress->start(1);
    }
    const PlistBytes bytes = wholeFile(path, progress);
    if (digest != nullptr) {
        *digest = ContentDigest::of(bytes.span());
    }
    try {
        PlistFile file = PlistCodec::read(bytes.span());
        if (progress != nullptr) {
            progress->complete(1);
        }
        return file;
    } catch (const PlistError& error) {
        throw FileError(FileError::Code::corruptFile, path,
                        QString::fromStdString(error.errorDescription()));
    }
}
