#pragma once

#include <sys/types.h>

#include <QByteArray>

#include "app/desktop/files/FileDescriptor.h"

/// A new file with a short random name in a folder, open for writing. It is deleted with this
/// unless it has been moved. (QTemporaryFile lets one choose neither the mode of a new file nor see
/// the system's error.)
class TemporaryFile {
public:
    /// How the names of all these files begin.
    static constexpr const char* prefix = ".tabulet-";

    /// `mode` is what `open` takes. If the file cannot be created, `error` tells why.
    TemporaryFile(const QByteArray& folder, mode_t mode);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Why the file is not there: 0 or the number of the system's error.
    int error() const noexcept { return error_; }

    FileDescriptor& file() noexcept { return file_; }

    /// Gives the file the owner, group, mode, access-control lists and extended attributes of an
    /// open one, whose place it is to take. Returns 0, or the number of the system's error if any
    /// of them could not be given: EPERM also where the system silently gave something else.
    int inherit(const FileDescriptor& old) const;

    /// Puts the file at `path`, in place of what is there. Returns 0 or the number of the error.
    int moveTo(const QByteArray& path) noexcept;

private:
    static QByteArray randomName(const QByteArray& folder);

    QByteArray path_;
    FileDescriptor file_;
    int error_;
};
