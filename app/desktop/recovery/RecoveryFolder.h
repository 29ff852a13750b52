#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <cstdint>
#include <optional>
#include <span>

#include "app/desktop/files/FileDescriptor.h"

/// A folder in which one running program keeps what must survive a crash of it. It is for the user
/// alone, and locked as long as the program lives: whoever gets the lock knows that nobody else
/// uses the folder any more. (The lock is one of the kernel, which goes with the process; numbers
/// of processes say nothing where each container counts its own.)
///
/// Errors are numbers of the system's errors; 0 is none. May be used by one thread at a time.
class RecoveryFolder {
public:
    /// Touches nothing yet.
    explicit RecoveryFolder(QByteArray path);

    /// Gives up the lock, and deletes the folder if it was locked and nothing is kept in it.
    ~RecoveryFolder();
    RecoveryFolder(const RecoveryFolder&) = delete;
    RecoveryFolder& operator=(const RecoveryFolder&) = delete;

    const QByteArray& path() const noexcept { return path_; }

    bool isLocked() const noexcept { return lock_.isOpen(); }

    /// Creates the folder and locks it. EEXIST if somebody else uses this path.
    int create();

    /// Locks a folder that was left behind. EWOULDBLOCK if the program that uses it still runs.
    int claim();

    /// The names of what was kept here; files of which a crash left only a part do not count. The
    /// folder must be locked for this and what follows.
    QByteArrayList names() const;

    /// Keeps `bytes` under a name, in place of what was kept there, and returns when they are on
    /// the disk. A crash at any moment leaves the old bytes or the new ones.
    int write(const QByteArray& name, std::span<const std::uint8_t> bytes) const;
    int write(const QByteArray& name, const QByteArray& bytes) const;

    /// What was kept under a name; nothing if it cannot be read.
    std::optional<QByteArray> read(const QByteArray& name) const;

    /// Deletes what was kept under a name, if anything was.
    void remove(const QByteArray& name) const;

    QByteArray pathOf(const QByteArray& name) const { return path_ + '/' + name; }

private:
    QByteArrayList allNames() const;
    int lock(int flags);
    QByteArray lockPath() const;

    QByteArray path_;
    FileDescriptor lock_{-1};
};
