#pragma once

#include <QString>
#include <initializer_list>
#include <utility>

#include "app/model/actions/DocumentActions.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNodePtr.h"

/// A document with all that a window adds to it, without the window.
struct ActionsDesk {
    using Path = std::initializer_list<std::size_t>;

    explicit ActionsDesk(const PlistValue& value);

    PlistNodePtr at(Path path) const;

    /// Selects exactly these nodes, given by position.
    void select(std::initializer_list<Path> paths);

    /// Expands these nodes, and not what is below them.
    void expand(std::initializer_list<Path> paths);

    /// The rows, one line each, with "*" behind the selected ones and "<key>" or "<value>" behind
    /// the one that is edited.
    QString rows() const;

    /// Such lines as `rows` gives.
    static QString lines(std::initializer_list<const char*> lines);

    QString value() const;

    /// "2 Move, +3": the undo entries, the name of the last, and how far the revision has come
    /// since the last call.
    QString history();

    /// Undoes all, redoes that, undoes all and redoes it again; tells at which of these the
    /// document was not what it was before, by its bytes. Empty if it always was.
    QString backAndForth();

    PlistDocument document;
    UndoManager undo;
    OutlineState outline;
    DocumentActions actions;
    QByteArray bytesAtFirst;
    qint64 countedRevision = 0;
};
