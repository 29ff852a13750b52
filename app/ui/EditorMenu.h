#pragma once

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

    QAction* add(const QString& title, const QKeySequence& key, const Condition& condition,
                 const std::function<void(const DocumentActions&)>& action);

    DocumentView& view_;
};
