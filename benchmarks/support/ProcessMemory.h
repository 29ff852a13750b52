#pragma once

#include <cstdint>

/// What the kernel counts for this process.
namespace ProcessMemory {

/// The bytes in physical memory now. Exact: taken from the page tables.
std::int64_t resident();

/// The most bytes in physical memory since the process began.
std::int64_t peak();

}  // namespace ProcessMemory
