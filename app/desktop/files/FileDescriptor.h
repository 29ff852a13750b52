#pragma once

#include <utility>

/// An open file of the system, closed when this goes.
class FileDescriptor {
public:
    /// Takes over `number`, as `open` returned it.
    explicit FileDescriptor(int number) noexcept : number_(number) {}
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

    /// Closes now, for callers who must know whether that worked: 0 or the error number. Does
    /// nothing the second time.
    int close() noexcept;

private:
    int number_;
};
