#pragma once

#include <string_view>

/// Whether long texts are well-formed UTF-8, 16 bytes at a time.
namespace plist::detail::Utf8Validation {

/// Whether this processor has the instructions that `isValid` needs. Asked once.
bool isAvailable() noexcept;

/// Whether `bytes` are well-formed UTF-8. Only where `isAvailable`; worthwhile from about 64 bytes
/// on. After J. Keiser and D. Lemire, "Validating UTF-8 In Less Than One Instruction Per Byte",
/// Software: Practice and Experience 51 (5), 2021: every error shows in three half bytes, two of
/// one byte and one of the next, and three table look-ups, joined by "and", tell which.
bool isValid(std::string_view bytes) noexcept;

}  // namespace plist::detail::Utf8Validation
