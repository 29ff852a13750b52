#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <cstdint>

/// What the system tells about a file without reading it. Two equal stamps nearly always mean that
/// nothing was written in between; different ones only that something may have been.
struct FileStamp {
    enum class Kind : std::uint8_t {
        missing,
        regular,
        other,  ///< it cannot be asked, or is no regular file
    };

    Kind kind = Kind::other;
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    std::int64_t modified = 0;  ///< when it was written to, in nanoseconds
    /// When anything about it was changed, in nanoseconds: copying tools set the time above to one
    /// of the past, but not this one.
    std::int64_t changed = 0;

    /// Of the file that a path leads to, links followed.
    static FileStamp of(const QByteArray& path);

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};
