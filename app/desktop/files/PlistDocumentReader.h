#pragma once

#include <QString>

#include "app/model/runtime/Plist.h"

class ContentDigest;
class ProgressReporter;

/// Reads files into snapshots. Touches no document and may be called from any thread.
namespace PlistDocumentReader {

/// Reads the whole file into private memory (never mapped: another program may cut a mapped file
/// short under us) and decodes it. Blocks. Throws `FileError`: `readFailed` with the system's
/// reason for what cannot be read or is not a regular file, `corruptFile` with the text
/// of the `PlistError` for what is not a property list. `progress` and `digest` may be null.
///
/// `progress` tells how much of the file has come, until all of it is there.
///
/// `digest` receives the digest of the bytes as soon as they are there, so also where they turn out
/// not to be a property list.
PlistFile read(const QString& path, ProgressReporter* progress = nullptr,
               ContentDigest* digest = nullptr);

}  // namespace PlistDocumentReader
