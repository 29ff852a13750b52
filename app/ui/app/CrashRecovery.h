#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <vector>

#include "app/desktop/recovery/RecoverableDocument.h"
#include "app/desktop/saving/SafetyCopy.h"

/// Looks for what a crash has left, and asks what to do with it: the previous contents of files
/// whose saving was interrupted, and documents with unsaved changes.
class CrashRecovery : public QObject {
    Q_OBJECT

public:
    /// Searches in `folder`.
    explicit CrashRecovery(QString folder, QObject* parent = nullptr);

    /// Searches in the background, but only the first time.
    void search();

    /// Asks about what was found, over `window`.
    void ask(QWidget& window);

Q_SIGNALS:
    /// A crash has left something to ask about.
    void found();

    void recoverChosen(const RecoverableDocument& document);

private:
    struct Findings {
        std::vector<SafetyCopy> copies;
        std::vector<RecoverableDocument> documents;
    };

    void askAboutNext();
    void askAboutCopy();
    void restore(const SafetyCopy& copy);
    void showFolder(const QString& path);

    QString folder_;
    bool hasSearched_ = false;
    Findings findings_;
    QPointer<QWidget> window_;
};
