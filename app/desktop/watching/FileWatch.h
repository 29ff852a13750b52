#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QSocketNotifier>
#include <cstdint>
#include <memory>

#include "app/desktop/files/FileDescriptor.h"

/// Hears from the system when something may have happened to one file: when it is written to, put
/// in place, taken away, or a link that leads to it is changed. Says so rather too often than too
/// seldom; but nothing comes from file systems that other machines write to. (QFileSystemWatcher
/// loses a file that is replaced, tells of every other file of a folder too, and takes no names
/// that are no text.)
class FileWatch : public QObject {
    Q_OBJECT

public:
    explicit FileWatch(QObject* parent = nullptr);
    ~FileWatch() override;

    /// Listens to the file at `path` only; there need not be one. An empty path: to none.
    void watch(const QByteArray& path);

Q_SIGNALS:
    void happened();

private:
    /// The names that count in each watched folder; a watched file is there without a name.
    using Watches = QMultiHash<int, QByteArray>;

    void renew();
    void addFile(Watches& watches, const QByteArray& path) const;
    void addEntry(Watches& watches, QByteArray path) const;
    void receive();
    bool concerns(int watch, std::uint32_t kind, const QByteArray& name) const;

    QByteArray path_;
    FileDescriptor queue_;
    std::unique_ptr<QSocketNotifier> notifier_;
    Watches watches_;
};
