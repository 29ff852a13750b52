#include "app/desktop/ByteFile.h"

#include <QCoreApplication>
#include <QFile>
#include <new>

namespace {

QString outOfMemory() {
    return QCoreApplication::translate("ByteFile", "There is not enough memory.");
}

}  // namespace

ByteFile::Content ByteFile::read(const QString& path) try {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {{}, file.errorString()};
    }
    Content content{file.readAll(), {}};
    if (file.error() != QFileDevice::NoError) {
        return {{}, file.errorString()};
    }
    return content;
} catch (const std::bad_alloc&) {
    return {{}, outOfMemory()};
}

QString ByteFile::write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
    return isWritten ? QString() : file.errorString();
}
