#include "app/desktop/recovery/RecoverableDocument.h"

#include <QCoreApplication>
#include <QDir>
#include <algorithm>
#include <utility>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileDescriptor.h"
#include "app/desktop/files/FilePath.h"
#include "app/desktop/recovery/RecoveryStore.h"

namespace {

/// The digest of what a file holds, as text; empty if it cannot be read.
QString digestOf(const QByteArray& path) {
    const FileDescriptor file = FileDescriptor::forReading(path);
    const std::optional<ContentDigest> digest =
        file.isOpen() ? ContentDigest::ofOpenFile(file) : std::nullopt;
    return digest ? digest->hex() : QString();
}

/// A placeholder for a record that cannot be read.
RecoveryRecord unknownRecord() {
    RecoveryRecord record;
    record.title = QCoreApplication::translate("RecoverableDocument", "Unknown Document");
    return record;
}

}  // namespace

RecoverableDocument::RecoverableDocument(std::shared_ptr<RecoveryFolder> folder, QByteArray name)
    : folder_(std::move(folder)), name_(std::move(name)) {
    const std::optional<QByteArray> json = folder_->read(name_ + RecoveryStore::recordExtension);
    const auto record = RecoveryRecord::fromJson(json.value_or(QByteArray()));
    hasRecord_ = record.has_value();
    record_ = record.value_or(unknownRecord());
    hasFileChanged_ = !record_.file.isEmpty() && digestOf(record_.file) != record_.baseDigest;
}

std::vector<RecoverableDocument> RecoverableDocument::find(const QString& parentFolder) {
    std::vector<RecoverableDocument> found;
    const QDir folders(parentFolder);
    for (const QString& folderName : folders.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        auto folder =
            std::make_shared<RecoveryFolder>(FilePath::encoded(folders.filePath(folderName)));
        if (folder->claim() != 0) {
            continue;
        }
        const QByteArrayList names = folder->names();
        for (const QByteArray& name : names) {
            const QByteArray document = name.left(name.lastIndexOf('.'));
            if (name.endsWith(RecoveryStore::contentExtension)) {
                found.push_back(RecoverableDocument(folder, document));
            } else if (name.endsWith(RecoveryStore::recordExtension) &&
                       !names.contains(document + RecoveryStore::contentExtension)) {
                // A record alone: the document was being deleted.
                folder->remove(name);
            }
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& one, const auto& other) {
        return one.record().backedUpAt > other.record().backedUpAt;
    });
    return found;
}

QString RecoverableDocument::filePath() const {
    return FilePath::decoded(record_.file);
}

QString RecoverableDocument::contentPath() const {
    return FilePath::decoded(folder_->pathOf(name_ + RecoveryStore::contentExtension));
}

void RecoverableDocument::beginAttempt() {
    ++record_.attempts;
    writeRecord();
}

void RecoverableDocument::endAttempt() {
    --record_.attempts;
    writeRecord();
}

void RecoverableDocument::writeRecord() const {
    if (hasRecord_) {
        folder_->write(name_ + RecoveryStore::recordExtension, record_.toJson());
    }
}

void RecoverableDocument::remove() const {
    folder_->remove(name_ + RecoveryStore::contentExtension);
    folder_->remove(name_ + RecoveryStore::recordExtension);
}
