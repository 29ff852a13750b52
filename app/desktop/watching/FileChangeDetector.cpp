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

FileChangeDetector::FileChangeDetector(std::chrono::milliseconds rest, QObject* parent)
    : QObject(parent) {
    rest_.setSingleShot(true);
    rest_.setInterval(rest);
    connect(&rest_, &QTimer::timeout, this, &FileChangeDetector::beginLook);
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
    rest_.start();
}

void FileChangeDetector::pause() {
    isPaused_ = true;
    ++generation_;
    rest_.stop();
    seen_.reset();
}

void FileChangeDetector::resume() {
    isPaused_ = false;
    concluded_.reset();
    if (!path_.isEmpty()) {
        rest_.start();
    }
}

void FileChangeDetector::check() {
    if (!isPaused_ && !path_.isEmpty() && !rest_.isActive()) {
        beginLook();
    }
}

void FileChangeDetector::handleEvent() {
    if (isPaused_ || path_.isEmpty()) {
        return;
    }
    // The times of files have gaps of milliseconds: what is written shortly after a look, in the
    // same size, may leave the stamp as it is.
    concluded_.reset();
    if (!rest_.isActive() && !seen_) {
        beginLook();
    }
    rest_.start();
}

FileChangeDetector::Sight FileChangeDetector::look(const QByteArray& path,
                                                   const std::optional<FileStamp>& before) {
    Sight sight{FileStamp::of(path), std::nullopt};
    if (sight.stamp.kind != FileStamp::Kind::regular || sight.stamp != before) {
        return sight;
    }
    const FileDescriptor file = FileDescriptor::forReading(path);
    if (file.isOpen()) {
        sight.digest = ContentDigest::ofOpenFile(file);
    }
    const FileStamp after = FileStamp::of(path);
    if (after != sight.stamp) {
        sight = {after, std::nullopt};
    }
    return sight;
}

void FileChangeDetector::beginLook() {
    if (isLooking_) {
        rest_.start();
        return;
    }
    isLooking_ = true;
    BackgroundTask::run(
        *this, [path = path_, before = seen_] { return look(path, before); },
        [this, generation = generation_](const Sight& sight) {
            isLooking_ = false;
            if (generation == generation_) {
                handleSight(sight);
            }
        });
}

void FileChangeDetector::handleSight(const Sight& sight) {
    if (rest_.isActive()) {
        // More has happened; it will be looked at again.
        seen_ = sight.stamp;
    } else if (sight.stamp == concluded_ || sight.stamp == seen_) {
        conclude(sight);
    } else {
        seen_ = sight.stamp;
        rest_.start();
    }
}

void FileChangeDetector::conclude(const Sight& sight) {
    const bool isNews = sight.stamp != concluded_;
    concluded_ = sight.stamp;
    seen_.reset();
    const bool isKnowable = sight.digest || sight.stamp.kind == FileStamp::Kind::missing;
    if (isNews && isKnowable) {
        report({sight.digest});
    }
    Q_EMIT examined();
}

void FileChangeDetector::report(const FileContent& content) {
    if (content != known_) {
        known_ = content;
        Q_EMIT found(content);
    }
}
