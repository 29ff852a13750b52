#include "app/desktop/files/PlistDocumentWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "app/desktop/files/FileDescriptor.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/files/FileOutput.h"
#include "app/desktop/files/FilePath.h"
#include "app/desktop/files/ProgressReporter.h"
#include "app/model/runtime/Plist.h"
#include "app/model/runtime/Signposter.h"

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

void check(const QString& path, int errorNumber) {
    if (errorNumber != 0) {
        failWriting(path, errorNumber);
    }
}

}  // namespace

void PlistDocumentWriter::write(const PlistFile& file, const QString& path,
                                ProgressReporter* progress, const ByteWriter& put) {
    const Signposter::Interval interval("Write");
    if (progress != nullptr) {
        progress->start(1);
    }
    const PlistBytes bytes = encoded(file, path);
    put(path, bytes.span());
    if (progress != nullptr) {
        progress->complete(1);
    }
}

void PlistDocumentWriter::writeBytes(const QString& path, std::span<const std::uint8_t> bytes) {
    // Not cut to nothing when opened: a disk that is full then leaves the old end of the file.
    FileDescriptor file(
        ::open(FilePath::encoded(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, newFileMode));
    if (!file.isOpen()) {
        failWriting(path, errno);
    }
    check(path, FileOutput::writeAll(file.number(), bytes));
    if (::ftruncate(file.number(), static_cast<off_t>(bytes.size())) != 0) {
        failWriting(path, errno);
    }
    check(path, FileOutput::synchronize(file.number()));
    check(path, file.close());
}
