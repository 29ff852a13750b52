#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <optional>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/watching/FileContent.h"
#include "app/desktop/watching/FileWatch.h"

/// What the system tells about a file without reading it. Two equal stamps nearly always mean that
/// nothing was written in between; different ones only that something may have been.
struct FileStamp {
    enum class Kind : std::uint8_t {
        missing,
        regular,
        other,  ///< it cannot be asked, or is not a regular file
    };

    Kind kind = Kind::other;
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    std::int64_t modified = 0;  ///< when it was written to, in nanoseconds
    /// When anything about it was changed, in nanoseconds: copying tools set the time above to one
    /// of the past, but not this one.
    std::int64_t changed = 0;

    /// Of the file that a path leads to, links followed.
    static FileStamp of(const QByteArray& path);

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// Detects when other programs change the content of a file. Compares the content itself, so that
/// neither new times nor new permissions nor writing the same bytes again count as a change, and
/// only when the file has settled, so that nothing is read half written. Links are followed. All
/// that may take long is done on a worker thread. Belongs to the main thread.
class FileChangeDetector : public QObject {
    Q_OBJECT

public:
    /// For how long nothing may happen to a file before it counts as complete.
    static constexpr std::chrono::milliseconds settleTime{200};

    explicit FileChangeDetector(std::chrono::milliseconds quiet = settleTime,
                                QObject* parent = nullptr);
    ~FileChangeDetector() override;

    /// From now on watches the file at `path`, which is known to hold `known`.
    void follow(const QString& path, const ContentDigest& known);

    /// No signals come until `resume`, which then makes up for what was missed: while the file is
    /// being read or written here.
    void pause();
    void resume();

    /// Looks whether something has happened that the system did not tell of, as with files that
    /// other machines write to. Costs next to nothing if nothing has.
    void check();

Q_SIGNALS:
    /// The file holds something else than what was known or reported last.
    void found(const FileContent& content);

    /// The file was examined. After `found`, if there is that.
    void examined();

private:
    /// What was seen of a file at one moment; with the digest only if it had settled.
    struct Observation {
        FileStamp stamp;
        std::optional<ContentDigest> digest;
    };

    static Observation observe(const QByteArray& path, const std::optional<FileStamp>& before);
    void handleEvent();
    void beginObserving();
    void handleObservation(const Observation& observation);
    void conclude(const Observation& observation);
    void report(const FileContent& content);

    FileWatch events_;
    QTimer settleTimer_;
    QByteArray path_;
    FileContent known_;                   ///< by whoever listens
    std::optional<FileStamp> concluded_;  ///< nothing to find out while the file has this stamp
    std::optional<FileStamp> seen_;       ///< at the last observation since the last event
    std::uint64_t generation_ = 0;        ///< observations of an earlier one are stale
    bool isObserving_ = false;
    bool isPaused_ = false;
};
