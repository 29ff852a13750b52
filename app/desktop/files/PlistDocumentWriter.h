#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <span>

#include "app/model/runtime/Plist.h"

class ProgressReporter;

/// Writes snapshots to files. Touches no document and may be called from any thread.
namespace PlistDocumentWriter {

/// Makes the bytes the content of a file, or throws `FileError`.
using ByteWriter = std::function<void(const QString& path, std::span<const std::uint8_t> bytes)>;

/// Makes `bytes` the content of the file, which is made if it is not there, and waits until they
/// are on the disk. Writes in place: links, owner and attributes stay. Throws `FileError`
/// (`writeFailed`).
void writeBytes(const QString& path, std::span<const std::uint8_t> bytes);

/// Encodes `file.root` in `file.format` and, only when that has worked, has `put` write the bytes.
/// Blocks. Throws `FileError`: `notEncoded` with the text of the `PlistError`, or `writeFailed`
/// with the system's reason. `progress` may be null.
void write(const PlistFile& file, const QString& path, ProgressReporter* progress = nullptr,
           const ByteWriter& put = writeBytes);

}  // namespace PlistDocumentWriter
