#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QSocketNotifier>
#include <cstdint>
#include <memory>

#include "app/desktop/files/FileDescriptor.h"

/// Signals when something may have happened to one file: when it is written to, created, replaced
/// or deleted, or when a link that leads to it is changed. Signals rather too often than too
/// seldom; but what other machines do to files on a server goes unnoticed. (QFileSystemWatcher
/// loses a file that is replaced, reports every other file of a folder too, and takes no names that
/// are not UTF-8.)
class FileWatch : public QObject {
    Q_OBJECT

public:
    explicit FileWatch(QObject* parent = nullptr);
    ~FileWatch() override;

    /// Watches the file at `path` only, which need not exist; an empty path stands for none.
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
