#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>

#include "app/desktop/document/FileState.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/watching/FileChangeDetector.h"

class DocumentController;

/// Keeps a document in sync with its file. What another program writes is loaded automatically as
/// long as that replaces no work of the user; otherwise the user is to choose, and until then
/// nothing happens. Belongs to the main thread.
class ExternalChanges : public QObject {
    Q_OBJECT

public:
    /// What the user should know about the file.
    enum class Trouble : std::uint8_t {
        none,
        changed,     ///< another program has changed it, and so has the user the document
        unreadable,  ///< what another program has written cannot be read; counts as modified
        deleted,     ///< it is not there any more; counts as modified
    };
    Q_ENUM(Trouble)

    /// The controller must outlive this.
    explicit ExternalChanges(DocumentController& controller,
                             std::chrono::milliseconds quiet = FileChangeDetector::settleTime,
                             QObject* parent = nullptr);
    ~ExternalChanges() override;

    Trouble trouble() const noexcept { return trouble_; }

    /// Why the file is unreadable; else empty.
    QString reason() const { return trouble_ == Trouble::unreadable ? reason_ : QString(); }

    /// Has what the user is just typing into a field, which is not an edit yet, count as one.
    void setInputCheck(std::function<bool()> hasInput) { hasInput_ = std::move(hasInput); }

    /// Looks whether something has happened that the system did not tell of.
    void check() { detector_.check(); }

    /// The user wants the document as it is: it counts as modified, and saving replaces what the
    /// file holds now. Another change of the file is reported again.
    void keepMine();

Q_SIGNALS:
    void troubleChanged();

private:
    void followActivity();
    void followFile();
    void handleContent(const FileContent& content);
    void act();
    void setTrouble(Trouble trouble);
    FileState::Verdict verdict() const;

    DocumentController& controller_;
    FileChangeDetector detector_;
    std::function<bool()> hasInput_;
    Trouble trouble_ = Trouble::none;
    QString reason_;  ///< of the last read that failed
};
