#pragma once

#include <filesystem>
#include <string>

/// The bytes of a file. Throws `std::runtime_error` if it cannot be read.
std::string readFile(const std::filesystem::path& path);

/// The folder of the small files that belong to the tests.
std::filesystem::path testDataFolder();
