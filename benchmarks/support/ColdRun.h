#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "benchmarks/support/Census.h"

/// What the programs that are started afresh for every figure have in common. Each is called as
/// `Program SUBJECT DOCUMENT`: what to measure, and the path of a document from `MakeDocuments`
/// without its extension. It prints its figures on one line, or an error and fails.
namespace ColdRun {

/// The files of a document.
struct Document {
    std::filesystem::path xml;
    std::filesystem::path binary;
    Census census;
};

/// Measures one subject and gives what is to be printed.
using Subject = std::function<std::string(const Document&)>;

/// The whole of `main`.
int run(int argc, char** argv, const std::map<std::string_view, Subject>& subjects);

/// Where the files of `document` lie.
Document documentAt(const std::filesystem::path& path);

/// How long one call takes.
template <typename Call>
std::string nanosecondsOf(Call call) {
    const auto start = std::chrono::steady_clock::now();
    call();
    const std::chrono::nanoseconds taken = std::chrono::steady_clock::now() - start;
    return std::to_string(taken.count());
}

/// Throws `std::logic_error` with `complaint` unless `holds`.
void check(bool holds, const char* complaint);

}  // namespace ColdRun
