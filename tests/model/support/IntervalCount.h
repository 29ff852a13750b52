#pragma once

#include <QMutex>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Listens to the intervals that the application marks (`Signposter`), in any thread. One at a
/// time.
class IntervalCount {
public:
    IntervalCount();
    ~IntervalCount();
    IntervalCount(const IntervalCount&) = delete;
    IntervalCount& operator=(const IntervalCount&) = delete;

    /// The names of the intervals that have ended since the last call, in this order, with spaces
    /// between them.
    QString takeNames();

private:
    static void hear(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QtMessageHandler before_;
    QMutex mutex_;
    QStringList names_;
};
