#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

/// The content of a file in memory that has been touched and that the allocator knows nothing of:
/// the first allocation of what is measured afterwards is the first of the process.
class TouchedFile {
public:
    /// Throws `std::system_error`.
    explicit TouchedFile(const std::filesystem::path& path);
    TouchedFile(const TouchedFile&) = delete;
    TouchedFile& operator=(const TouchedFile&) = delete;
    ~TouchedFile();

    std::span<const std::uint8_t> bytes() const noexcept { return {start_, size_}; }

private:
    std::uint8_t* start_ = nullptr;
    std::size_t size_ = 0;
};
