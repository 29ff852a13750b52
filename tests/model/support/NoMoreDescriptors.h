#pragma once

#include <sys/resource.h>
#include <unistd.h>

/// While it lives, the system gives this process no more descriptors: nothing can be opened, and
/// nobody can ask to be told of changes of files.
class NoMoreDescriptors {
public:
    NoMoreDescriptors() {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const int next = ::dup(STDIN_FILENO);
        ::close(next);
        const rlimit none{static_cast<rlim_t>(next), before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    NoMoreDescriptors(const NoMoreDescriptors&) = delete;
    NoMoreDescriptors& operator=(const NoMoreDescriptors&) = delete;
    ~NoMoreDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }

private:
    rlimit before_{};
};
