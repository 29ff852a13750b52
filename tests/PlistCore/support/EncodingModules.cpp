#include "tests/PlistCore/support/EncodingModules.h"

#include <dlfcn.h>
#include <iconv.h>

#include <atomic>
#include <cerrno>
#include <cstdint>

namespace {

std::atomic<bool> areMissing = false;

}  // namespace

WithoutEncodingModules::WithoutEncodingModules() {
    areMissing = true;
}

WithoutEncodingModules::~WithoutEncodingModules() {
    areMissing = false;
}

// Stands before the one of the C library, for the whole program. Its names are reserved.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
iconv_t iconv_open(const char* to, const char* from) {
    if (areMissing) {
        errno = EINVAL;
        return reinterpret_cast<iconv_t>(static_cast<std::intptr_t>(-1));
    }
    using Open = iconv_t (*)(const char*, const char*);
    static const auto open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "iconv_open"));
    return open(to, from);
}
