#pragma once

#include <cstdint>
#include <span>

/// What writers of files have in common. Each returns 0 or the number of the system's error.
namespace FileOutput {

/// Writes all of `bytes` where the open file stands.
int writeAll(int file, std::span<const std::uint8_t> bytes) noexcept;

/// Waits until the disk has what was written. File systems that cannot tell are taken at their
/// word.
int synchronize(int file) noexcept;

}  // namespace FileOutput
