#pragma once

#include <utility>
#include <variant>

#include "PlistCore/PlistCheck.h"
#include "PlistCore/PlistError.h"

#pragma GCC visibility push(default)

namespace plist {

/// What a call gave that throws no `PlistError`: a value or an error.
///
///     const auto file = PlistCodec::tryRead(bytes);
///     if (!file) {
///         return complain(file.error().errorDescription());
///     }
///     use(file->root);
///
/// Asking for the one that is not there is a programming error and stops the process.
template <typename Value>
class [[nodiscard]] PlistResult {
public:
    PlistResult(Value value) : content_(std::move(value)) {}
    PlistResult(PlistError error) : content_(std::move(error)) {}

    bool hasValue() const noexcept { return std::holds_alternative<Value>(content_); }
    explicit operator bool() const noexcept { return hasValue(); }

    const Value& value() const& {
        plistCheck(hasValue(), "an error instead of a value");
        return *std::get_if<Value>(&content_);
    }

    /// Takes the value out of a temporary.
    Value value() && {
        plistCheck(hasValue(), "an error instead of a value");
        return std::move(*std::get_if<Value>(&content_));
    }

    const PlistError& error() const& {
        plistCheck(!hasValue(), "a value instead of an error");
        return *std::get_if<PlistError>(&content_);
    }
    const PlistError& error() const&& = delete;

    const Value& operator*() const& { return value(); }
    const Value& operator*() const&& = delete;
    const Value* operator->() const& { return &value(); }
    const Value* operator->() const&& = delete;

private:
    std::variant<Value, PlistError> content_;
};

}  // namespace plist

#pragma GCC visibility pop
