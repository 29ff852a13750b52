#pragma once

#include <QString>
#include <utility>
#include <variant>

#include "app/model/runtime/Plist.h"

/// Why an edit that the user asked for was refused.
class EditError {
public:
    /// A sibling in the same dictionary has the key already.
    struct DuplicateKey {
        PlistString key;
        friend bool operator==(const DuplicateKey&, const DuplicateKey&) = default;
    };
    struct RootCannotChange {
        friend bool operator==(const RootCannotChange&, const RootCannotChange&) = default;
    };
    using Reason = std::variant<DuplicateKey, RootCannotChange>;

    explicit EditError(Reason reason) : reason_(std::move(reason)) {}

    const Reason& reason() const noexcept { return reason_; }

    /// One sentence for the user.
    QString message() const;

    friend bool operator==(const EditError&, const EditError&) = default;

private:
    Reason reason_;
};
