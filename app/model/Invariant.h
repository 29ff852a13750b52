#pragma once

/// The one way to stop on a programming error: a broken invariant, a call from the wrong thread.
/// What a user or a file can cause is never checked here.
namespace Invariant {

/// Called with the broken rule. It may leave by an exception; if it returns, the process ends.
using FailureHandler = void (*)(const char* rule);

/// Ends the process with `rule` as its last message. Never returns; throws only what a failure
/// handler throws.
[[noreturn]] void fail(const char* rule);

/// Goes on only if `holds`. `rule` says in a sentence what must be so.
inline void require(bool holds, const char* rule) {
    if (!holds) {
        fail(rule);
    }
}

/// Replaces what happens on a failure and returns what was there, null being the message and the
/// end of the process. For tests, which let the handler throw.
FailureHandler setFailureHandler(FailureHandler handler);

}  // namespace Invariant
