#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QString>

/// The old bytes of a file that is about to be overwritten, with a record of which file that is,
/// both on the disk before the first new byte is.
class SafetyCopy {
public:
    /// Copies the file `target` into `folder`, which is made, for the user alone, if it is not
    /// there. `error` tells whether that worked.
    SafetyCopy(const QString& folder, const QByteArray& target);

    /// 0 or the number of the system's error.
    int error() const noexcept { return error_; }

    /// The copy, for people.
    QString path() const;

    /// Puts the old bytes back into the file. Returns 0 or the number of the system's error.
    int restore() const;

    /// Deletes the copy, which is not needed any more.
    void remove() const;

private:
    int make(const QByteArray& folder);
    int writeRecord() const;

    QByteArray target_;
    QByteArray copy_;
    QByteArray record_;
    int error_;
};
