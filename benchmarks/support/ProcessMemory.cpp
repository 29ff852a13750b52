#include "benchmarks/support/ProcessMemory.h"

#include <sys/resource.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace {

constexpr std::int64_t kibibyte = 1024;

}  // namespace

std::int64_t ProcessMemory::resident() {
    // The cheaper "statm" lags behind by a few pages for every processor.
    std::ifstream rollup("/proc/self/smaps_rollup");
    std::string word;
    while (rollup >> word) {
        if (word == "Rss:") {
            std::int64_t kibibytes = 0;
            rollup >> kibibytes;
            return kibibytes * kibibyte;
        }
    }
    throw std::runtime_error("the kernel does not say how much memory is resident");
}

std::int64_t ProcessMemory::peak() {
    struct rusage usage = {};
    if (::getrusage(RUSAGE_SELF, &usage) != 0) {
        throw std::runtime_error("the kernel does not say how much memory was resident");
    }
    return static_cast<std::int64_t>(usage.ru_maxrss) * kibibyte;
}
