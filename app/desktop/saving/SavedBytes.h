#pragma once

#include <QByteArray>
#include <cstdint>
#include <span>

/// Reading back what was saved. A disk of this machine that says that it has written has done so;
/// a server, or a program that plays a file system, may find out later that it could not.
namespace SavedBytes {

/// Up to this size the content is read back; of larger files only the size is asked, as reading
/// them over a network again would take as long as saving.
constexpr std::size_t mostReadBack = std::size_t{16} << 20;

/// Whether a file system of this type, as `statfs` names it, is a server's (NFS, SMB, CIFS) or a
/// program's (FUSE).
bool mayGoAstrayOn(std::uint32_t fileSystem);

/// Whether the file is on such a file system. No if the system cannot tell.
bool mayGoAstrayAt(const QByteArray& path);

/// Whether the file at `path` holds `bytes`, as far as that is looked at.
bool areAt(const QByteArray& path, std::span<const std::uint8_t> bytes);

}  // namespace SavedBytes
