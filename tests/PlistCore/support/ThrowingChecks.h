#pragma once

#include <stdexcept>

#include "PlistCore/PlistCheck.h"

namespace plist {

/// A broken rule, as an exception.
class BrokenRule : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

/// While it lives, a broken rule throws `BrokenRule` instead of ending the process.
class ThrowingChecks {
public:
    ThrowingChecks() noexcept
        : before_(setPlistCheckHandler([](const char* message) { throw BrokenRule(message); })) {}
    ThrowingChecks(const ThrowingChecks&) = delete;
    ThrowingChecks& operator=(const ThrowingChecks&) = delete;
    ~ThrowingChecks() { setPlistCheckHandler(before_); }

private:
    PlistCheckHandler before_;
};

}  // namespace plist
