#include "tests/PlistCore/support/TestFiles.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::filesystem::path testDataFolder() {
    return TABULET_TEST_DATA;
}
