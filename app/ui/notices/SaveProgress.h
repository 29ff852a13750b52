#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

class ProgressBar;
class ProgressReporter;
class QLabel;

/// The strip below a document that says that it is being saved. It appears only if that takes a
/// while; the document can be edited meanwhile.
class SaveProgress : public QWidget {
    Q_OBJECT

public:
    /// After how long the strip appears, in milliseconds.
    static constexpr int delay = 300;

    explicit SaveProgress(QWidget* parent = nullptr);

    /// A document is being saved: `text` says so, and `progress` how far that has come.
    void start(const QString& text, std::shared_ptr<const ProgressReporter> progress);

    /// The user is waiting for the save: shows `text` at once.
    void showNow(const QString& text);

    void stop();

private:
    void setText(const QString& text);

    QTimer timer_;
    QLabel* label_;
    ProgressBar* bar_;
};
