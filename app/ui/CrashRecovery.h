#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <vector>

#include "app/desktop/LostDocument.h"
#include "app/desktop/SafetyCopy.h"

/// Looks for what a crash has left, and asks what shall become of it: the old content of files
/// whose saves were interrupted, and documents with unsaved changes.
class CrashRecovery : public QObject {
    Q_OBJECT

public:
    /// Looks in the folder `place`.
    explicit CrashRecovery(QString place, QObject* parent = nullptr);

    /// Looks in the background, then asks over `window`, if that is still there.
    void begin(QWidget& window);

Q_SIGNALS:
    void recoverChosen(const LostDocument& document);

private:
    struct Findings {
        std::vector<SafetyCopy> copies;
        std::vector<LostDocument> documents;
    };

    void ask(const std::shared_ptr<Findings>& findings);
    void askAboutCopy(const std::shared_ptr<Findings>& findings);
    void restore(const SafetyCopy& copy);
    void showFolder(const QString& path);

    QString place_;
    QPointer<QWidget> window_;
};
