#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

class ProgressBar;
class ProgressReporter;
class QLabel;

/// What a window shows while its document is being read: nothing for a moment, so that small files
/// appear without a flicker, then what goes on and a way to stop it.
class ProgressPage : public QWidget {
    Q_OBJECT

public:
    /// How long the page stays blank, in milliseconds.
    static constexpr int delay = 300;

    explicit ProgressPage(QWidget* parent = nullptr);

    /// Begins anew, blank, with another text and the progress of another task.
    void start(const QString& text, std::shared_ptr<const ProgressReporter> progress);

    /// Nothing more will be shown.
    void stop();

Q_SIGNALS:
    void cancelled();

private:
    QTimer timer_;
    QWidget* content_;
    QLabel* label_;
    ProgressBar* bar_;
};
