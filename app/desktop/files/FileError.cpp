#include "app/desktop/files/FileError.h"

#include <QCoreApplication>
#include <cstring>
#include <utility>

#include "app/desktop/files/FilePath.h"

namespace {

QString messageFor(FileError::Code code, const QString& path) {
    const QString name = FilePath::shownName(path);
    switch (code) {
        case FileError::Code::readFailed:
            return QCoreApplication::translate("FileError", "The file “%1” could not be read.")
                .arg(name);
        case FileError::Code::corruptFile:
            return QCoreApplication::translate("FileError",
                                               "The file “%1” is not a readable property list.")
                .arg(name);
        case FileError::Code::writeFailed:
            return QCoreApplication::translate("FileError", "The file “%1” could not be written.")
                .arg(name);
        case FileError::Code::changedOnDisk:
            return QCoreApplication::translate("FileError",
                                               "The file “%1” has been changed by another program.")
                .arg(name);
        case FileError::Code::notEncoded:
            break;
    }
    return QCoreApplication::translate("FileError", "The document “%1” could not be saved.")
        .arg(name);
}

}  // namespace

FileError::FileError(Code code, QString path, QString failureReason)
    : code_(code),
      path_(std::move(path)),
      failureReason_(std::move(failureReason)),
      message_(messageFor(code_, path_)),
      what_((message_ + QLatin1Char(' ') + failureReason_).toStdString()) {}

FileError FileError::fromSystem(Code code, const QString& path, int errorNumber) {
    return {code, path, QString::fromLocal8Bit(std::strerror(errorNumber)) + QLatin1Char('.')};
}
