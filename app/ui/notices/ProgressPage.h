#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

class ProgressBar;
class ProgressReporter;
class QLabel;

/// What a window shows while its document is being read: nothing for a moment, so that small files
/// appear without flicker, then the progress and a button to cancel.
class ProgressPage : public QWidget {
    Q_OBJECT

public:
    /// How long the page stays empty, in milliseconds.
    static constexpr int delay = 300;

    explicit ProgressPage(QWidget* parent = nullptr);

    /// Starts again, empty, with another text and the progress of another task.
    void start(const QString& text, std::shared_ptr<const ProgressReporter> progress);

    /// Shows nothing any more.
    void stop();

Q_SIGNALS:
    void cancelled();

private:
    QTimer timer_;
    QWidget* content_;
    QLabel* label_;
    ProgressBar* bar_;
};
