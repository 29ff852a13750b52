#pragma once

#include <QKeySequence>
#include <QList>
#include <QMenu>
#include <functional>

#include "app/model/DocumentActions.h"

class DocumentView;

/// The Editor menu of a window: what can be done to the items of its document.
class EditorMenu : public QMenu {
    Q_OBJECT

public:
    /// `view` must outlive the menu or be gone together with the window.
    EditorMenu(DocumentView& view, QWidget* parent);

private:
    using Condition = std::function<bool(const DocumentActions&)>;

    /// The menu shows the first of the keys.
    QAction* add(const QString& title, const QList<QKeySequence>& keys, const Condition& condition,
                 const std::function<void(const DocumentActions&)>& action);

    DocumentView& view_;
};
