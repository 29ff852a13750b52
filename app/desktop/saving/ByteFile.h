#pragma once

#include <QByteArray>
#include <QString>

/// Files whose bytes are taken as they are. Both functions may be called on any thread.
namespace ByteFile {

struct Content {
    QByteArray bytes;
    /// The system's reason where the file could not be read; otherwise empty.
    QString error;
};

Content read(const QString& path);

/// Replaces what the file held, which is not lost if that fails. The reason where it failed;
/// otherwise empty.
QString write(const QString& path, const QByteArray& bytes);

}  // namespace ByteFile
