#pragma once

#include <QString>
#include <optional>

#include "app/desktop/saving/SafeWriter.h"
#include "app/model/runtime/Plist.h"

class ContentDigest;
class ProgressReporter;

/// Writes snapshots to files. Touches no document and may be called from any thread.
namespace PlistDocumentWriter {

/// Encodes `file.root` in `file.format` and, only when that has worked, has `SafeWriter` make the
/// bytes the content of the file at `path`, with `safetyFolder` and `mayReplace` as there. Blocks.
/// Throws `FileError`: `notEncoded` with the text of the `PlistError`, or what `SafeWriter` throws.
/// `progress` and `digest` may be null.
///
/// `digest` receives the digest of the bytes as soon as they are there, so also where they cannot
/// be written.
void write(const PlistFile& file, const QString& path, const QString& safetyFolder,
           const SafeWriter::Consent& mayReplace = nullptr, ProgressReporter* progress = nullptr,
           std::optional<ContentDigest>* digest = nullptr);

}  // namespace PlistDocumentWriter
