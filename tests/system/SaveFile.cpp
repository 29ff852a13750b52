// Saves the content of one file as another, as the application does, for tests that make calls of
// the system fail.
//
// usage: SaveFile CONTENT TARGET SAFETY-FOLDER

#include <QFile>
#include <cstdint>
#include <cstdio>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/saving/SafeWriter.h"

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: SaveFile CONTENT TARGET SAFETY-FOLDER\n", stderr);
        return 2;
    }
    QFile content(QFile::decodeName(argv[1]));
    if (!content.open(QIODevice::ReadOnly)) {
        return 2;
    }
    const QByteArray bytes = content.readAll();
    if (content.error() != QFile::NoError) {
        return 2;
    }
    try {
        SafeWriter::write(QFile::decodeName(argv[2]),
                          {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size())},
                          QFile::decodeName(argv[3]), [](const ContentDigest&) { return true; });
    } catch (const FileError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
