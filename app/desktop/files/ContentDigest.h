#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <array>
#include <cstdint>
#include <optional>
#include <span>

class FileDescriptor;

/// 128 bits that stand for the bytes of a file: equal bytes have equal digests, and different ones
/// never meet by chance. XXH3 of the xxHash library, which runs at the speed of memory: the digest
/// is taken of every file that is opened or saved, and a cryptographic one would take longer than
/// reading the document. Who wants to make two files with one digest can; nothing here defends
/// against that, as whoever may write to the file needs no forgery.
class ContentDigest {
public:
    static constexpr std::size_t byteCount = 16;
    using Bytes = std::array<std::uint8_t, byteCount>;

    /// The digest of no bytes at all.
    ContentDigest();

    static ContentDigest of(std::span<const std::uint8_t> bytes);

    /// The digest of all bytes from where an open file stands to its end; moves it there. Nothing
    /// where a read fails, and `errno` tells why. Reads piece by piece.
    static std::optional<ContentDigest> ofOpenFile(const FileDescriptor& file);

    /// 32 hexadecimal digits in lower case, which stay the same on every machine.
    QString hex() const;

    /// What `hex` has written, or nothing if the text is something else.
    static std::optional<ContentDigest> fromHex(QStringView text);

    friend bool operator==(const ContentDigest&, const ContentDigest&) = default;

private:
    explicit ContentDigest(const Bytes& bytes) : bytes_(bytes) {}

    Bytes bytes_;  ///< in the library's canonical order
};
