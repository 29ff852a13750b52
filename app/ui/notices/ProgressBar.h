#pragma once

#include <QProgressBar>
#include <QTimer>
#include <memory>

class ProgressReporter;

/// A bar that shows how far a task in another thread has come, or only that it goes on while the
/// task cannot tell: before the first bytes of a file are there, and when all of them are.
class ProgressBar : public QProgressBar {
    Q_OBJECT

public:
    /// `width` is in device-independent pixels.
    explicit ProgressBar(int width, QWidget* parent = nullptr);

    /// Shows the progress of a new task; without a reporter it cannot tell.
    void follow(std::shared_ptr<const ProgressReporter> reporter);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void showFraction();

    std::shared_ptr<const ProgressReporter> reporter_;
    QTimer timer_;
};
