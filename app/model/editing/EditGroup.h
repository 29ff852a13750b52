#pragma once

#include <QPointer>
#include <QString>

#include "app/model/editing/UndoManager.h"

class PlistDocument;

/// While one of these lives, the changes of a document belong together: they are one undo entry,
/// and `PlistDocument::treeChanged` comes once, at the end. Groups may stand inside each other and
/// melt into the outermost.
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
