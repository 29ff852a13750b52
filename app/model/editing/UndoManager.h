#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

class PlistDocument;

/// The undo history of one window: two lists of groups of handlers, what can be undone and what can
/// be redone. Belongs to the main thread.
///
/// A handler takes one change back by an ordinary operation, which registers its own inverse: what
/// is registered while undoing becomes the redo, so redo needs no code of its own. (A stack of
/// commands that are only replayed could not take these registrations.)
///
/// Every state of the document has a token, by which the saved state is recognised wherever it lies
/// in the past or the future.
class UndoManager : public QObject {
    Q_OBJECT

public:
    using Handler = std::function<void()>;
    using State = quint64;

    explicit UndoManager(QObject* parent = nullptr);
    ~UndoManager() override;

    /// Groups may be nested and merge into the outermost, which becomes one entry when
    /// it ends, and none if nothing was registered in it. A new entry ends what can be redone.
    void beginGroup();
    void endGroup();

    /// Adds to the open group what takes a change of `document` back. The handlers of a group run
    /// last to first; those of a document that is gone are left out.
    void registerUndo(PlistDocument& document, Handler handler);

    /// Names the open group; the last name counts. While undoing or redoing the name of the entry
    /// that is taken back stays: after undoing "Add Item" the next redo is "Add Item".
    void setActionName(const QString& name);

    bool canUndo() const noexcept { return !undoable_.empty(); }
    bool canRedo() const noexcept { return !redoable_.empty(); }
    qsizetype undoCount() const noexcept { return static_cast<qsizetype>(undoable_.size()); }
    qsizetype redoCount() const noexcept { return static_cast<qsizetype>(redoable_.size()); }

    /// The name of the next entry; empty without one.
    QString undoActionName() const;
    QString redoActionName() const;

    /// Does nothing without an entry. Neither in a handler nor inside an open group. If a handler
    /// throws, no entry describes the document any more: the history is emptied, and the exception
    /// goes on to the caller.
    void undo();
    void redo();

    /// Forgets all entries, and with them the nodes that they keep. Not inside an open group.
    void clear();

    /// The token of the current state of the document. A new entry creates a new one; undo and redo
    /// return to earlier ones.
    State state() const noexcept { return state_; }

    /// Remembers which state is the one on disk: the token that was current when the snapshot for
    /// the file was taken. Nothing if no state is.
    void setSavedState(std::optional<State> state);
    std::optional<State> savedState() const noexcept { return savedState_; }

    /// Whether the document differs from what is on disk. False at first.
    bool isModified() const noexcept { return savedState_ != state_; }

Q_SIGNALS:
    /// What can be undone or redone, or the name of it, may be another.
    void historyChanged();
    void isModifiedChanged();

private:
    class EditedDocuments;

    struct Registration {
        QPointer<PlistDocument> document;
        Handler handler;
    };

    /// One entry, with the states on both of its sides.
    struct Group {
        QString name;
        std::vector<Registration> registrations;
        State before = 0;
        State after = 0;
    };

    void takeBack(std::vector<Group>& from, std::vector<Group>& to);
    static void runHandlers(const Group& group);
    void keepAnswer(const Group& group, std::vector<Group>& to);
    void abandonHistory();
    void moveTo(State state, bool wasModified);

    std::vector<Group> undoable_;
    std::vector<Group> redoable_;
    Group open_;
    int depth_ = 0;
    bool isTakingBack_ = false;
    State state_ = 0;
    State lastState_ = 0;
    std::optional<State> savedState_ = 0;
};

/// While one of these lives, the changes of a document belong together: they are one undo entry,
/// and `PlistDocument::treeChanged` comes once, at the end. Groups may be nested and merge into the
/// outermost.
class EditGroup {
public:
    /// An empty name leaves that of a group inside, or of the entry that is being taken back.
    /// Without an undo manager only the document is bracketed. The document must outlive this.
    EditGroup(PlistDocument& document, UndoManager* undoManager, QString name = {});
    ~EditGroup();
    EditGroup(const EditGroup&) = delete;
    EditGroup& operator=(const EditGroup&) = delete;

private:
    PlistDocument& document_;
    QPointer<UndoManager> undoManager_;
    QString name_;
};
