#include "app/desktop/recovery/RecoveryStore.h"

#include <QDir>
#include <QUuid>
#include <cerrno>
#include <new>
#include <utility>

#include "app/desktop/files/BackgroundTask.h"
#include "app/desktop/files/FilePath.h"
#include "app/model/runtime/Plist.h"

RecoveryStore::RecoveryStore(const QString& parentFolder, QObject* parent)
    : QObject(parent), parentFolder_(parentFolder) {
    // One thread keeps the order.
    worker_.setMaxThreadCount(1);
}

RecoveryStore::~RecoveryStore() {
    worker_.waitForDone();
}

void RecoveryStore::write(QObject& receiver, const QByteArray& name, const PlistFile& content,
                          const RecoveryRecord& record, Done done) {
    if (isSealed_) {
        return;
    }
    BackgroundTask::run(
        receiver,
        [this, name, content, record] {
            const auto start = std::chrono::steady_clock::now();
            const int error = backUp(name, content, record);
            return Outcome{error, std::chrono::steady_clock::now() - start};
        },
        std::move(done), worker_);
}

void RecoveryStore::remove(const QByteArray& name) {
    if (isSealed_) {
        return;
    }
    worker_.start([this, name] {
        if (folder_) {
            // A record without content brings nothing back.
            folder_->remove(name + contentExtension);
            folder_->remove(name + recordExtension);
        }
    });
}

void RecoveryStore::wait() {
    worker_.waitForDone();
}

void RecoveryStore::seal() {
    isSealed_ = true;
    wait();
}

/// Creates the folder if it is not there yet.
int RecoveryStore::requireFolder() {
    int error = 0;
    while (!folder_) {
        const QString path =
            QDir(parentFolder_).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces));
        auto folder = std::make_unique<RecoveryFolder>(FilePath::encoded(path));
        error = folder->create();
        if (error == 0) {
            folder_ = std::move(folder);
        } else if (error != EEXIST) {
            break;
        }
    }
    return error;
}

int RecoveryStore::backUp(const QByteArray& name, const PlistFile& content,
                          const RecoveryRecord& record) {
    if (const int error = requireFolder(); error != 0) {
        return error;
    }
    if (content.root.expandedCount() > PlistCodec::writtenValueLimit) {
        return EFBIG;
    }
    try {
        const PlistBytes bytes =
            PlistCodec::write(content.root, PlistFormat::binary, {.keepsSpellings = true});
        int error = folder_->write(name + contentExtension, bytes.span());
        if (error == ENOENT) {
            // Somebody has deleted the folder.
            folder_.reset();
            error = requireFolder();
            error = error != 0 ? error : folder_->write(name + contentExtension, bytes.span());
        }
        // The record comes last: it never tells of content that is not there.
        return error != 0 ? error : folder_->write(name + recordExtension, record.toJson());
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    }
}
