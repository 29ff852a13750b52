#include "app/desktop/saving/PlistDocumentWriter.h"

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/files/ProgressReporter.h"
#include "app/model/runtime/Plist.h"
#include "app/model/runtime/Signposter.h"

namespace {

PlistBytes encoded(const PlistFile& file, const QString& path) {
    try {
        return PlistCodec::write(file.root, file.format);
    } catch (const PlistError& error) {
        throw FileError(FileError::Code::notEncoded, path,
                        QString::fromStdString(error.errorDescription()));
    }
}

}  // namespace

void PlistDocumentWriter::write(const PlistFile& file, const QString& path,
                                const QString& safetyFolder, const SafeWriter::Consent& mayReplace,
                                ProgressReporter* progress, std::optional<ContentDigest>* digest) {
    const Signposter::Interval interval("Write");
    if (progress != nullptr) {
        progress->start(1);
    }
    const PlistBytes bytes = encoded(file, path);
    if (digest != nullptr) {
        *digest = ContentDigest::of(bytes.span());
    }
    SafeWriter::write(path, bytes.span(), safetyFolder, mayReplace);
    if (progress != nullptr) {
        progress->complete(1);
    }
}
