#include "app/desktop/watching/FileChangeDetector.h"

#include <sys/stat.h>

#include <cerrno>

#include "app/desktop/files/BackgroundTask.h"
#include "app/desktop/files/FileDescriptor.h"
#include "app/desktop/files/FilePath.h"

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * nanosecondsPerSecond + time.tv_nsec;
}

}  // namespace

FileStamp FileStamp::of(const QByteArray& path) {
    struct stat status {};
    FileStamp stamp;
    if (::stat(path.constData(), &status) != 0) {
        stamp.kind = errno == ENOENT || errno == ENOTDIR ? Kind::missing : Kind::other;
    } else if (S_ISREG(status.st_mode)) {
        stamp = {Kind::regular,
                 status.st_dev,
                 status.st_ino,
                 status.st_size,
                 nanoseconds(status.st_mtim),
                 nanoseconds(status.st_ctim)};
    }
    return stamp;
}

FileChangeDetector::FileChangeDetector(std::chrono::milliseconds quiet, QObject* parent)
    : QObject(parent) {
    settleTimer_.setSingleShot(true);
    settleTimer_.setInterval(quiet);
    connect(&settleTimer_, &QTimer::timeout, this, &FileChangeDetector::beginObserving);
    connect(&events_, &FileWatch::happened, this, &FileChangeDetector::handleEvent);
}

FileChangeDetector::~FileChangeDetector() = default;

void FileChangeDetector::follow(const QString& path, const ContentDigest& known) {
    ++generation_;
    path_ = FilePath::encoded(path);
    known_ = {known};
    concluded_.reset();
    seen_.reset();
    events_.watch(path_);
    // What happened between the reading of the file and now has caused no event.
    settleTimer_.start();
}

void FileChangeDetector::pause() {
    isPaused_ = true;
    ++generation_;
    settleTimer_.stop();
    seen_.reset();
}

void FileChangeDetector::resume() {
    isPaused_ = false;
    concluded_.reset();
    if (!path_.isEmpty()) {
        settleTimer_.start();
    }
}

void FileChangeDetector::check() {
    if (!isPaused_ && !path_.isEmpty() && !settleTimer_.isActive()) {
        beginObserving();
    }
}

void FileChangeDetector::handleEvent() {
    if (isPaused_ || path_.isEmpty()) {
        return;
    }
    // The times of files have gaps of milliseconds: what is written shortly after an observation,
    // in the same size, may leave the stamp as it is.
    concluded_.reset();
    if (!settleTimer_.isActive() && !seen_) {
        beginObserving();
    }
    settleTimer_.start();
}

FileChangeDetector::Observation FileChangeDetector::observe(
    const QByteArray& path, const std::optional<FileStamp>& before) {
    Observation observation{FileStamp::of(path), std::nullopt};
    if (observation.stamp.kind != FileStamp::Kind::regular || observation.stamp != before) {
        return observation;
    }
    const FileDescriptor file = FileDescriptor::forReading(path);
    if (file.isOpen()) {
        observation.digest = ContentDigest::ofOpenFile(file);
    }
    const FileStamp after = FileStamp::of(path);
    if (after != observation.stamp) {
        observation = {after, std::nullopt};
    }
    return observation;
}

void FileChangeDetector::beginObserving() {
    if (isObserving_) {
        settleTimer_.start();
        return;
    }
    isObserving_ = true;
    BackgroundTask::run(
        *this, [path = path_, before = seen_] { return observe(path, before); },
        [this, generation = generation_](const Observation& observation) {
            isObserving_ = false;
            if (generation == generation_) {
                handleObservation(observation);
            }
        });
}

void FileChangeDetector::handleObservation(const Observation& observation) {
    if (settleTimer_.isActive()) {
        // More has happened; it will be observed again.
        seen_ = observation.stamp;
    } else if (observation.stamp == concluded_ || observation.stamp == seen_) {
        conclude(observation);
    } else {
        seen_ = observation.stamp;
        settleTimer_.start();
    }
}

void FileChangeDetector::conclude(const Observation& observation) {
    const bool isNew = observation.stamp != concluded_;
    concluded_ = observation.stamp;
    seen_.reset();
    const bool isKnowable =
        observation.digest || observation.stamp.kind == FileStamp::Kind::missing;
    if (isNew && isKnowable) {
        report({observation.digest});
    }
    Q_EMIT examined();
}

void FileChangeDetector::report(const FileContent& content) {
    if (content != known_) {
        known_ = content;
        Q_EMIT found(content);
    }
}
