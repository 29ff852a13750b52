#include "app/desktop/saving/ByteFile.h"

#include <sys/stat.h>

#include <QCoreApplication>
#include <QFile>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <new>

#include "app/desktop/files/FileDescriptor.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/files/FilePath.h"
#include "app/desktop/files/StateFolder.h"
#include "app/desktop/saving/SafeWriter.h"

namespace {

QString outOfMemory() {
    return QCoreApplication::translate("ByteFile", "There is not enough memory.");
}

QString reasonOf(const QFile& file) {
    return file.errorString() + u'.';
}

QString reasonFor(const QString& path, int errorNumber) {
    return FileError::fromSystem(FileError::Code::readFailed, path, errorNumber).failureReason();
}

/// Why an open file cannot be read as a whole; empty if it can.
QString refusalOf(int file, const QString& path) {
    struct stat status {};
    if (::fstat(file, &status) != 0) {
        return reasonFor(path, errno);
    }
    if (S_ISDIR(status.st_mode)) {
        return reasonFor(path, EISDIR);
    }
    // Reading from a device may never end.
    return S_ISREG(status.st_mode)
               ? QString()
               : QCoreApplication::translate("ByteFile", "It is not a regular file.");
}

}  // namespace

ByteFile::Content ByteFile::read(const QString& path) try {
    const FileDescriptor descriptor = FileDescriptor::forReading(FilePath::encoded(path));
    if (!descriptor.isOpen()) {
        return {{}, reasonFor(path, errno)};
    }
    if (const QString refusal = refusalOf(descriptor.number(), path); !refusal.isEmpty()) {
        return {{}, refusal};
    }
    QFile file;
    if (!file.open(descriptor.number(), QIODevice::ReadOnly)) {
        return {{}, reasonOf(file)};
    }
    Content content{file.readAll(), {}};
    if (file.error() != QFileDevice::NoError) {
        return {{}, reasonOf(file)};
    }
    return content;
} catch (const std::bad_alloc&) {
    return {{}, outOfMemory()};
}

QString ByteFile::write(const QString& path, const QByteArray& bytes) try {
    SafeWriter::write(path,
                      {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                       static_cast<std::size_t>(bytes.size())},
                      StateFolder::recoveryPath());
    return {};
} catch (const FileError& error) {
    return error.failureReason();
} catch (const std::bad_alloc&) {
    return outOfMemory();
}
