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

/// Where this process keeps its unsaved documents, each under a name of its own: a file with the
/// content, in a form that loses nothing, and one with the record. The folder is created when the
/// first document comes, and goes with the last.
///
/// Everything is done in the order in which it was asked for, on one thread beside the others.
/// Belongs to the main thread.
class RecoveryStore : public QObject {
    Q_OBJECT

public:
    /// How keeping a document ended.
    struct Outcome {
        int error = 0;  ///< 0 or the number of the system's error
        std::chrono::nanoseconds duration{0};
    };

    using Done = std::function<void(const Outcome&)>;

    /// The extensions of the two files.
    static constexpr const char* contentExtension = ".plist";
    static constexpr const char* recordExtension = ".json";

    /// Keeps documents in a new folder inside of `place`.
    explicit RecoveryStore(const QString& place, QObject* parent = nullptr);

    /// Waits until all is done.
    ~RecoveryStore() override;

    /// Keeps a document under a name, in place of what was kept there. Calls `done` when it is on
    /// the disk, unless `receiver` is gone by then.
    void write(QObject& receiver, const QByteArray& name, const PlistFile& content,
               const RecoveryRecord& record, Done done);

    /// Deletes what was kept under a name, if anything was.
    void remove(const QByteArray& name);

    /// Waits until all that was asked for is done.
    void wait();

    /// Waits until all that was asked for is done, and does nothing more from then on: what is kept
    /// now outlives this process.
    void seal();

private:
    int requireFolder();
    int keep(const QByteArray& name, const PlistFile& content, const RecoveryRecord& record);

    QString place_;
    bool isSealed_ = false;
    std::unique_ptr<RecoveryFolder> folder_;  ///< of the worker alone
    QThreadPool worker_;
};
