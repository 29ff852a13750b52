#include "app/desktop/watching/FileWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <QSet>
#include <array>
#include <cstddef>
#include <cstring>

#include "app/desktop/files/FileFolder.h"
#include "app/desktop/files/FilePath.h"

namespace {

/// What may make the entry of a folder another file, or change what it holds.
constexpr std::uint32_t entryKinds = IN_CREATE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE |
                                     IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF |
                                     IN_MOVE_SELF;
/// The same for the file itself, which may be written to under another of its names.
constexpr std::uint32_t fileKinds = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB;

QByteArray nameOf(const QByteArray& path) {
    return path.mid(path.lastIndexOf('/') + 1);
}

}  // namespace

FileWatch::FileWatch(QObject* parent)
    : QObject(parent), queue_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    // Without a queue, of which a user may have some hundred, nothing is ever heard.
    if (queue_.isOpen()) {
        notifier_ = std::make_unique<QSocketNotifier>(queue_.number(), QSocketNotifier::Read);
        connect(notifier_.get(), &QSocketNotifier::activated, this, &FileWatch::receive);
    }
}

FileWatch::~FileWatch() = default;

void FileWatch::watch(const QByteArray& path) {
    path_ = path;
    renew();
}

/// Watches what the path leads through now, and no longer what it led through before.
void FileWatch::renew() {
    if (!queue_.isOpen()) {
        return;
    }
    Watches renewed;
    if (!path_.isEmpty()) {
        const QByteArrayList paths = FilePath::followed(path_);
        for (const QByteArray& path : paths) {
            addEntry(renewed, path);
        }
        addFile(renewed, paths.last());
    }
    const QList<int> old = watches_.uniqueKeys();
    for (const int watch : old) {
        if (!renewed.contains(watch)) {
            ::inotify_rm_watch(queue_.number(), watch);
        }
    }
    watches_ = renewed;
}

void FileWatch::addFile(Watches& watches, const QByteArray& path) const {
    const int watch = ::inotify_add_watch(queue_.number(), path.constData(), fileKinds);
    if (watch >= 0 && !watches.contains(watch)) {
        watches.insert(watch, {});
    }
}

/// Watches the folder for the name that a path ends in; where the folder is missing too, the folder
/// above for that, and so on.
void FileWatch::addEntry(Watches& watches, QByteArray path) const {
    for (;;) {
        const QByteArray folder = FileFolder::of(path);
        const int watch =
            ::inotify_add_watch(queue_.number(), folder.constData(), entryKinds | IN_ONLYDIR);
        if (watch >= 0) {
            watches.insert(watch, nameOf(path));
            return;
        }
        if (folder == "/" || folder == ".") {
            return;
        }
        path = folder;
    }
}

void FileWatch::receive() {
    constexpr std::size_t roomForMany = std::size_t{1} << 14;
    alignas(inotify_event) std::array<char, roomForMany> buffer;
    bool isConcerned = false;
    for (;;) {
        const ssize_t size = ::read(queue_.number(), buffer.data(), buffer.size());
        if (size <= 0) {
            break;
        }
        const char* next = buffer.data();
        while (next < buffer.data() + size) {
            inotify_event event;
            std::memcpy(&event, next, sizeof(event));
            // The name is followed by as many NULs as it takes to align the next event.
            const QByteArray name(event.len == 0 ? "" : next + sizeof(event));
            isConcerned = isConcerned || concerns(event.wd, event.mask, name);
            next += sizeof(event) + event.len;
        }
    }
    if (isConcerned) {
        renew();
        Q_EMIT happened();
    }
}

bool FileWatch::concerns(int watch, std::uint32_t kind, const QByteArray& name) const {
    if ((kind & IN_Q_OVERFLOW) != 0) {
        return true;
    }
    // Without a name it is about what is watched itself.
    return (kind & IN_IGNORED) == 0 && watches_.contains(watch) &&
           (name.isEmpty() || watches_.contains(watch, name));
}
