#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <functional>

#include "app/model/actions/DocumentActions.h"

class DocumentView;
class QAction;
class QIcon;
class QMenu;

/// The commands of a window that act on the items of its document and on its search. All are
/// disabled while the document is being read. A text field that is open over a cell is applied
/// before a command acts; if its text is refused, the field says why and the command does nothing.
class PlistCommands : public QObject {
    Q_OBJECT

public:
    /// `view` must outlive the commands or be deleted together with the window.
    explicit PlistCommands(DocumentView& view, QObject* parent = nullptr);

    /// Fills the Editor menu.
    void addEditorItems(QMenu& menu);

    /// Adds the find commands, at the end of the Edit menu.
    void addFindItems(QMenu& menu);

private:
    using Condition = std::function<bool(const DocumentActions&)>;
    using Action = std::function<void(const DocumentActions&)>;

    /// The menu shows the first of the keys.
    QAction* add(QMenu& menu, const QString& title, const QList<QKeySequence>& keys,
                 const Condition& condition, const Action& action);
    void addFind(QMenu& menu, const QString& title, const QList<QKeySequence>& keys,
                 const char* icon, const Condition& condition, const Action& action);

    bool isAvailable(const Condition& condition) const;

    DocumentView& view_;
};
