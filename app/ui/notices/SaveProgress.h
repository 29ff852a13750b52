#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

class ProgressBar;
class ProgressReporter;
class QLabel;

/// The strip below a document that says that it is being saved. It comes only if that takes a
/// while, and leaves the document alone.
class SaveProgress : public QWidget {
    Q_OBJECT

public:
    /// After how long the strip comes, in milliseconds.
    static constexpr int delay = 300;

    explicit SaveProgress(QWidget* parent = nullptr);

    /// A document is being saved: `text` says so, and `progress` how far that has come.
    void start(const QString& text, std::shared_ptr<const ProgressReporter> progress);

    /// The user waits for it: `text` says so at once.
    void showNow(const QString& text);

    void stop();

    QString text() const;

private:
    void setText(const QString& text);

    QTimer timer_;
    QLabel* label_;
    ProgressBar* bar_;
};
