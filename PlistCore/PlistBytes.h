#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <span>
#include <string_view>
#include <utility>

#pragma GCC visibility push(default)

namespace plist {

/// A growing buffer of bytes that is moved, not copied: what writers produce.
///
/// Unlike a vector it leaves fresh memory untouched until it is written. Large buffers are mappings
/// of huge pages with much room to grow, which are seldom copied.
class PlistBytes {
public:
    PlistBytes() noexcept = default;
    PlistBytes(PlistBytes&& other) noexcept
        : start_(std::exchange(other.start_, nullptr)),
          size_(std::exchange(other.size_, 0)),
          capacity_(std::exchange(other.capacity_, 0)),
          limit_(std::exchange(other.limit_, noLimit)) {}
    PlistBytes& operator=(PlistBytes&& other) noexcept {
        std::swap(start_, other.start_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
        std::swap(limit_, other.limit_);
        return *this;
    }
    PlistBytes(const PlistBytes&) = delete;
    PlistBytes& operator=(const PlistBytes&) = delete;
    ~PlistBytes() { release(); }

    const std::uint8_t* data() const noexcept { return start_; }
    std::uint8_t* data() noexcept { return start_; }
    std::size_t size() const noexcept { return size_; }
    bool isEmpty() const noexcept { return size_ == 0; }
    std::span<const std::uint8_t> span() const noexcept { return {start_, size_}; }
    std::string_view view() const noexcept {
        return {reinterpret_cast<const char*>(start_), size_};
    }

    /// Makes room for `count` more bytes and returns where they go; they are not part of the buffer
    /// until `advance`. The pointer is valid until the next call that changes the buffer. Throws
    /// `std::bad_alloc`.
    std::uint8_t* reserve(std::size_t count) {
        if (capacity_ - size_ < count) {
            grow(count);
        }
        return start_ + size_;
    }

    /// Thrown where a buffer holds more than its limit.
    struct LimitReached {};

    /// Lets `reserve` throw `LimitReached` once there are more than `count` bytes. It may notice a
    /// little later: whoever needs to know exactly asks for the size in the end.
    void limitTo(std::size_t count) noexcept { limit_ = count; }

    /// Takes `count` bytes that were written at `reserve`'s place into the buffer.
    void advance(std::size_t count) noexcept { size_ += count; }

    void append(std::string_view bytes) {
        if (!bytes.empty()) {
            std::memcpy(reserve(bytes.size()), bytes.data(), bytes.size());
            advance(bytes.size());
        }
    }

    /// `count` times the same byte.
    void append(std::size_t count, char byte) {
        if (count != 0) {
            std::memset(reserve(count), byte, count);
            advance(count);
        }
    }

private:
    static constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

    void grow(std::size_t count);
    void moveToMapping(std::size_t capacity);
    void release() noexcept;

    std::uint8_t* start_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
    std::size_t limit_ = noLimit;
};

}  // namespace plist

#pragma GCC visibility pop
