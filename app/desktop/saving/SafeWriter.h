#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <span>

class ContentDigest;

/// Replaces the content of files without ever losing the old one.
namespace SafeWriter {

/// Whether a file that holds this may be written over.
using Consent = std::function<bool(const ContentDigest& present)>;

/// Makes `bytes` the content of the file at `path`, links followed, and returns when they are on
/// the disk. May be called from any thread.
///
/// Where links, owner, mode and attributes of the file can be kept, a finished new file takes its
/// place at once. Else it is overwritten, after a copy of the old bytes was put into
/// `safetyFolder`, which is made if it is not there. A crash at any moment leaves the old content,
/// the new one, or that copy with a record of the file beside it.
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

}  // namespace SafeWriter
