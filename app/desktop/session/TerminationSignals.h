#pragma once

#include <QObject>
#include <QSocketNotifier>

#include "app/desktop/files/FileDescriptor.h"

/// The signals by which the system asks the process to end: SIGTERM, SIGINT and SIGHUP.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    /// Keeps these signals from ending the process. Must run before other threads are there, which
    /// would be ended by them all the same.
    static void block();

    /// Listens to the blocked signals; needs an application.
    explicit TerminationSignals(QObject* parent = nullptr);

Q_SIGNALS:
    void received();

private:
    void read();

    FileDescriptor file_;
    QSocketNotifier notifier_;
};
