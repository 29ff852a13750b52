#include "app/desktop/ByteFile.h"

#include <QCoreApplication>
#include <QFile>
#include <cstddef>
#include <cstdint>
#include <new>

#include "app/desktop/SafeWriter.h"
#include "app/desktop/StateFolder.h"
#include "app/model/FileError.h"

namespace {

QString outOfMemory() {
    return QCoreApplication::translate("ByteFile", "There is not enough memory.");
}

QString reasonOf(const QFile& file) {
    return file.errorString() + u'.';
}

}  // namespace

ByteFile::Content ByteFile::read(const QString& path) try {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
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
