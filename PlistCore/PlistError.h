#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <variant>

#include "PlistCore/PlistFormat.h"

#pragma GCC visibility push(default)

namespace plist {

/// The one thing that readers and writers throw: why, and where in the input if that is known.
class PlistError : public std::exception {
public:
    /// The input breaks the grammar of its format.
    struct Malformed {
        std::string text;
        bool operator==(const Malformed& other) const;
    };
    /// A well-formed element whose content cannot be a value of its type.
    struct InvalidValue {
        std::string text;
        bool operator==(const InvalidValue& other) const;
    };
    /// More containers inside each other than `limit`.
    struct NestingTooDeep {
        std::int64_t limit = 0;
        friend bool operator==(const NestingTooDeep&, const NestingTooDeep&) = default;
    };
    /// The format can only be read.
    struct NotWritable {
        PlistFormat format = PlistFormat::openStep;
        friend bool operator==(const NotWritable&, const NotWritable&) = default;
    };
    /// The bytes are not a property list at all.
    struct UnrecognizedFormat {
        friend bool operator==(const UnrecognizedFormat&, const UnrecognizedFormat&) = default;
    };
    /// The input ends where more is needed.
    struct UnexpectedEnd {
        friend bool operator==(const UnexpectedEnd&, const UnexpectedEnd&) = default;
    };
    using Reason = std::variant<Malformed, InvalidValue, NestingTooDeep, NotWritable,
                                UnrecognizedFormat, UnexpectedEnd>;

    /// The reasons by number, in the order of `Reason`, to switch over.
    enum class Kind : std::uint8_t {
        malformed,
        invalidValue,
        nestingTooDeep,
        notWritable,
        unrecognizedFormat,
        unexpectedEnd,
    };

    /// A place in a text, both counted from 1; columns count bytes.
    struct Line {
        std::int64_t line = 1;
        std::int64_t column = 1;
        friend bool operator==(const Line&, const Line&) = default;
    };
    /// A place in bytes, counted from 0.
    struct Offset {
        std::uint64_t offset = 0;
        friend bool operator==(const Offset&, const Offset&) = default;
    };
    using Location = std::variant<Line, Offset>;

    explicit PlistError(Reason reason, std::optional<Location> location = std::nullopt);

    Kind kind() const noexcept { return static_cast<Kind>(reason_.index()); }
    const Reason& reason() const noexcept { return reason_; }
    const std::optional<Location>& location() const noexcept { return location_; }

    /// One line for people: the place if there is one, then the reason. English.
    const std::string& errorDescription() const noexcept { return description_; }

    /// The same as `errorDescription`; valid while this error lives.
    const char* what() const noexcept override { return description_.c_str(); }

    /// Equal reasons (texts as Unicode text) at equal places.
    bool operator==(const PlistError& other) const;

private:
    Reason reason_;
    std::optional<Location> location_;
    std::string description_;
};

}  // namespace plist

#pragma GCC visibility pop
