#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

/// An open file of the system, closed when this goes. Calls that a signal interrupts are made
/// again. Where a call returns an error, that is the system's number, and 0 is none.
class FileDescriptor {
public:
    enum class Links : std::uint8_t { followed, refused };

    /// Takes over `number`, as `open` returned it.
    explicit FileDescriptor(int number) noexcept : number_(number) {}

    /// Opens the file at `path` for reading; `isOpen` tells whether that worked, and else `errno`
    /// why not. Does not wait for a pipe that nobody writes to.
    static FileDescriptor forReading(const QByteArray& path,
                                     Links links = Links::followed) noexcept;

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~FileDescriptor() { close(); }

    int number() const noexcept { return number_; }
    bool isOpen() const noexcept { return number_ >= 0; }

    /// Reads what comes next into `buffer`, perhaps less than has room there. Returns how much: 0
    /// at the end, and less than 0 if it cannot be read, for the reason in `errno`.
    ssize_t read(std::span<std::uint8_t> buffer) const noexcept;

    /// All bytes from where the file stands, for small files; nothing if they cannot be read.
    std::optional<QByteArray> readAll() const;

    /// Writes all of `bytes` where the file stands.
    int writeAll(std::span<const std::uint8_t> bytes) const noexcept;

    /// Waits until the disk has what was written. File systems that cannot tell are taken at their
    /// word.
    int synchronize() const noexcept;

    /// Closes now, for callers who must know whether that worked. Does nothing the second time.
    int close() noexcept;

private:
    int number_;
};
