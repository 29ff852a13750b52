#pragma once

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

class ContentDigest;

/// Replaces the content of files without ever losing the old content.
namespace SafeWriter {

/// Whether a file that holds this may be written over.
using Consent = std::function<bool(const ContentDigest& present)>;

/// Makes `bytes` the content of the file at `path`, links followed, and returns when they are on
/// the disk. May be called from any thread.
///
/// Where links, owner, mode and attributes of the file can be kept, a finished new file takes its
/// place at once. Else it is overwritten, after a copy of the old bytes was put into
/// `safetyFolder`, which is created if it is not there. A crash at any moment leaves the old
/// content, the new one, or that copy with a record of the file beside it.
///
/// If there is a file, `mayReplace`, where given, is asked about what it holds then: as late as
/// possible, when the new bytes are on the disk and only have to take their place. A program that
/// writes between that moment and the next is not noticed; no call of the system closes the gap.
///
/// Throws `FileError` (`writeFailed`) with the reason, or `changedOnDisk` where consent was
/// refused. The old content is there as before then, or, if the disk refuses even that, in the
/// copy, which the reason names.
void write(const QString& path, std::span<const std::uint8_t> bytes, const QString& safetyFolder,
           const Consent& mayReplace = nullptr);

// How `write` verifies that the bytes have arrived. A local disk that reports a write as done has
// done it; a server, or a program that serves a file system, may find out later that it could not.

/// Whether a file system of this type, as `statfs` names it, may report a write as done and lose
/// it: those of servers (NFS, SMB, CIFS) and of programs (FUSE).
bool mayLoseWritesOn(std::uint32_t fileSystem);

/// Whether the file is on such a file system. No if the system cannot tell.
bool mayLoseWritesAt(const QByteArray& path);

/// Up to this size the content is read back; of larger files only the size is compared, as reading
/// them over a network again would take as long as saving.
inline constexpr std::size_t readBackLimit = std::size_t{16} << 20;

/// Whether the file at `path` holds `bytes`, as far as that is compared.
bool holds(const QByteArray& path, std::span<const std::uint8_t> bytes);

}  // namespace SafeWriter
