#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <chrono>
#include <functional>
#include <memory>

#include "app/desktop/recovery/RecoveryFolder.h"
#include "app/desktop/recovery/RecoveryRecord.h"
#include "app/model/runtime/Plist.h"

/// The backups of the unsaved documents of this process, each under a name of its own: a file with
/// the content, in a form that loses nothing, and one with the record. The folder is created when
/// the first document comes, and goes with the last.
///
/// Everything is done on one worker thread, in the order in which it was asked for.
/// Belongs to the main thread.
class RecoveryStore : public QObject {
    Q_OBJECT

public:
    /// How a backup ended.
    struct Outcome {
        int error = 0;  ///< 0 or the number of the system's error
        std::chrono::nanoseconds duration{0};
    };

    using Done = std::function<void(const Outcome&)>;

    /// The extensions of the two files.
    static constexpr const char* contentExtension = ".plist";
    static constexpr const char* recordExtension = ".json";

    /// Backs up documents to a new folder inside of `parentFolder`.
    explicit RecoveryStore(const QString& parentFolder, QObject* parent = nullptr);

    /// As `wait`.
    ~RecoveryStore() override;

    /// Backs up a document under a name, in place of its last backup. Calls `done` when that is on
    /// the disk, unless `receiver` is gone by then.
    void write(QObject& receiver, const QByteArray& name, const PlistFile& content,
               const RecoveryRecord& record, Done done);

    /// Deletes the backup with a name, if there is one.
    void remove(const QByteArray& name);

    /// Waits until all that was asked for is done.
    void wait();

    /// Waits until all that was asked for is done, and does nothing more from then on: the backups
    /// outlive this process.
    void seal();

private:
    int requireFolder();
    int backUp(const QByteArray& name, const PlistFile& content, const RecoveryRecord& record);

    QString parentFolder_;
    bool isSealed_ = false;
    std::unique_ptr<RecoveryFolder> folder_;  ///< of the worker alone
    QThreadPool worker_;
};
