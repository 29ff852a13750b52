#pragma once

/// Stops the process, so that the fuzzer keeps the input, unless `holds`.
inline void fuzzCheck(bool holds) {
    if (!holds) {
        __builtin_trap();
    }
}
