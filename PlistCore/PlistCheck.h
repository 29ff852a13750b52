#pragma once

#pragma GCC visibility push(default)

namespace plist {

/// Called with the message of a broken rule; must not return. The default prints it and aborts.
using PlistCheckHandler = void (*)(const char* message);

/// Replaces the handler, for tests that want to see a check fail (theirs throws); returns the one
/// before. Nothing gives back the default.
PlistCheckHandler setPlistCheckHandler(PlistCheckHandler handler) noexcept;

/// Ends the process through the handler.
[[noreturn]] void plistCheckFailed(const char* message);

/// Stops the process if `rule` does not hold: for programming errors only, never for what a file or
/// a person supplies.
inline void plistCheck(bool rule, const char* message) {
    if (!rule) [[unlikely]] {
        plistCheckFailed(message);
    }
}

}  // namespace plist

#pragma GCC visibility pop
