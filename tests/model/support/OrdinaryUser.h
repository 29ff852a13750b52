#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

/// Somebody without rights of their own, whom files can forbid what they allow to the superuser.
namespace OrdinaryUser {

/// The user without rights of Debian and most other systems.
inline constexpr uid_t nobody = 65534;

/// Does `work` as an ordinary user: here, or if this is the superuser's process in a copy of it,
/// so that nothing but the result comes back. True if the work said so.
inline bool does(const std::function<bool()>& work) {
    if (::geteuid() != 0) {
        return work();
    }
    const pid_t child = ::fork();
    if (child == 0) {
        const bool hasChanged = ::setgid(nobody) == 0 && ::setuid(nobody) == 0;
        ::_exit(hasChanged && work() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace OrdinaryUser
