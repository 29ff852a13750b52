#include "app/model/PlistDocumentWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <cstddef>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistCodec.h"
#include "PlistCore/PlistError.h"
#include "app/model/FileDescriptor.h"
#include "app/model/FileError.h"
#include "app/model/ProgressReporter.h"
#include "app/model/Signposter.h"

namespace {

constexpr mode_t newFileMode = 0666;  // less what the user's mask takes away

[[noreturn]] void failWriting(const QString& path, int errorNumber) {
    throw FileError::fromSystem(FileError::Code::writeFailed, path, errorNumber);
}

PlistBytes encoded(const PlistFile& file, const QString& path) {
    try {
        return PlistCodec::write(file.root, file.format);
    } catch (const PlistError& error) {
        throw FileError(FileError::Code::notEncoded, path,
                        QString::fromStdString(error.errorDescription()));
    }
}

void writeAll(int file, std::span<const std::uint8_t> bytes, const QString& path) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            failWriting(path, errno);
        }
    }
}

/// Waits until the disk has the bytes. File systems that cannot tell are taken at their word.
void synchronize(int file, const QString& path) {
    while (::fsync(file) != 0) {
        if (errno == EINVAL || errno == EROFS || errno == ENOTSUP) {
            return;
        }
        if (errno != EINTR) {
            failWriting(path, errno);
        }
    }
}

}  // namespace

void PlistDocumentWriter::write(const PlistFile& file, const QString& path,
                                ProgressReporter* progress) {
    const Signposter::Interval interval("Write");
    if (progress != nullptr) {
        progress->start(1);
    }
    const PlistBytes bytes = encoded(file, path);
    writeBytes(path, bytes.span());
    if (progress != nullptr) {
        progress->complete(1);
    }
}

void PlistDocumentWriter::writeBytes(const QString& path, std::span<const std::uint8_t> bytes) {
    // Not cut to nothing when opened: a disk that is full then leaves the old end of the file.
    FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, newFileMode));
    if (!file.isOpen()) {
        failWriting(path, errno);
    }
    writeAll(file.number(), bytes, path);
    if (::ftruncate(file.number(), static_cast<off_t>(bytes.size())) != 0) {
        failWriting(path, errno);
    }
    synchronize(file.number(), path);
    if (const int errorNumber = file.close(); errorNumber != 0) {
        failWriting(path, errorNumber);
    }
}
