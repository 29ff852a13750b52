#include "app/desktop/ByteFile.h"

#include <fcntl.h>

#include <QCoreApplication>
#include <QFile>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <new>

#include "app/desktop/SafeWriter.h"
#include "app/desktop/StateFolder.h"
#include "app/model/FileDescriptor.h"
#include "app/model/FileError.h"
#include "app/model/FilePath.h"

namespace {

QString outOfMemory() {
    return QCoreApplication::translate("ByteFile", "There is not enough memory.");
}

QString reasonOf(const QFile& file) {
    return file.errorString() + u'.';
}

}  // namespace

ByteFile::Content ByteFile::read(const QString& path) try {
    const FileDescriptor descriptor(
        ::open(FilePath::encoded(path).constData(), O_RDONLY | O_CLOEXEC));
    if (!descriptor.isOpen()) {
        return {{},
                FileError::fromSystem(FileError::Code::readFailed, path, errno).failureReason()};
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
