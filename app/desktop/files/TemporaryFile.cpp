#include "app/desktop/files/TemporaryFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>

TemporaryFile::TemporaryFile(const QByteArray& folder, mode_t mode)
    : path_(anyName(folder)),
      file_(::open(path_.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode)),
      error_(file_.isOpen() ? 0 : errno) {}

TemporaryFile::~TemporaryFile() {
    if (error_ == 0 && !path_.isEmpty()) {
        ::unlink(path_.constData());
    }
}

int TemporaryFile::moveTo(const QByteArray& path) noexcept {
    if (std::rename(path_.constData(), path.constData()) != 0) {
        return errno;
    }
    path_.clear();
    return 0;
}

QByteArray TemporaryFile::anyName(const QByteArray& folder) {
    constexpr int digits = 12;
    return folder + '/' + prefix +
           QByteArray::number(QRandomGenerator::system()->generate64(), 36)
               .rightJustified(digits, '0')
               .right(digits);
}
