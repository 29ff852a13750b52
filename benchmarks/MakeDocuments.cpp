#include <cstddef>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "benchmarks/support/GeneratedDocument.h"

using plist::PlistValue;
namespace BinaryPlistSerializer = plist::detail::BinaryPlistSerializer;

namespace {

void writeFile(const std::filesystem::path& path, std::string_view content) {
    std::ofstream stream(path, std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.flush();
    if (!stream) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

/// Writes the two forms of a document and its census, as "records-4096.xml", ".binary", ".census".
/// The census comes last: where it stands, the other two are complete.
void makeDocument(DocumentKind kind, std::size_t bytes, const std::filesystem::path& folder) {
    const GeneratedDocument document = generateDocument(kind, bytes);
    const PlistValue value = checkedValue(document);
    const std::string path = folder / (std::string(nameOf(kind)) + '-' + std::to_string(bytes));
    writeFile(path + ".xml", document.xml);
    writeFile(path + ".binary", BinaryPlistSerializer::serialize(value).view());
    std::ofstream stream(path + ".census");
    stream << document.census << '\n';
}

}  // namespace

/// `MakeDocuments FOLDER BYTES…` makes the documents of every kind in these sizes, checks that the
/// library reads and writes them correctly, and leaves them in the folder.
int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: " << argv[0] << " FOLDER BYTES...\n";
        return EXIT_FAILURE;
    }
    try {
        const std::filesystem::path folder = argv[1];
        std::filesystem::create_directories(folder);
        for (int index = 2; index < argc; ++index) {
            for (const DocumentKind kind : allDocumentKinds) {
                makeDocument(kind, std::stoul(argv[index]), folder);
            }
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
