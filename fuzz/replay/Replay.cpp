#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

/// The fuzz target under replay; libFuzzer fixes its name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::uint8_t> bytesOf(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::filesystem::filesystem_error("cannot read", path,
                                                std::make_error_code(std::errc::permission_denied));
    }
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// Hands every regular file below `folder` to the fuzz target and gives their number.
std::size_t replay(const std::filesystem::path& folder) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) {
            continue;
        }
        const std::vector<std::uint8_t> bytes = bytesOf(entry.path());
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        ++count;
    }
    return count;
}

}  // namespace

/// Replays the files of the folder named by the only argument. Fails where there is none to replay,
/// so that a moved folder does not pass for a green run.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return EXIT_FAILURE;
    }
    try {
        const std::size_t count = replay(argv[1]);
        std::cout << count << " inputs\n";
        return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
