#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileDescriptor.h"

/// The old bytes of a file that is about to be overwritten, with a record of which file that is,
/// both on the disk before the first new byte is. The copy is locked as long as this lives, so that
/// others can tell a save that goes on from one that was interrupted.
class SafetyCopy {
public:
    /// Copies the file `target` into `folder`, which is created, for the user alone, if it is not
    /// there. `newContent` is of what the file shall hold, if that is known: a file that holds it
    /// was saved to the end. `error` tells whether that worked.
    SafetyCopy(const QString& folder, const QByteArray& target,
               const std::optional<ContentDigest>& newContent = std::nullopt);

    /// The copies in `folder` whose saves were interrupted, by a crash say, while the file did not
    /// hold the old bytes, nor all the new ones. Deletes those of which the file does. Leaves alone
    /// those whose records are damaged or cannot be read. May be called from any thread.
    static std::vector<SafetyCopy> leftBehind(const QString& folder);

    /// The file, as the system has its path.
    const QByteArray& target() const noexcept { return target_; }

    /// 0 or the number of the system's error.
    int error() const noexcept { return error_; }

    /// The path of the copy.
    QString path() const;

    /// Puts the old bytes back into the file. Returns 0 or the number of the system's error.
    int restore() const;

    /// Deletes the copy, which is not needed any more.
    void remove() const;

private:
    /// The copy at a path without its extension, which must be tried with `claim`.
    explicit SafetyCopy(const QByteArray& path, QByteArray target = {},
                        const std::optional<ContentDigest>& newContent = {});

    bool claim();
    bool hasRecord() const;
    bool readRecord();
    bool isObsolete() const;
    int create(const QByteArray& folder);
    int writeRecord() const;

    QByteArray target_;
    std::optional<ContentDigest> newContent_;
    QByteArray copy_;
    QByteArray record_;
    FileDescriptor lock_{-1};
    int error_ = 0;
};
