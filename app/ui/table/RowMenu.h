#pragma once

#include <QMenu>
#include <functional>

#include "app/model/actions/DocumentActions.h"

/// The context menu of the outline: what can be done to the selected rows.
class RowMenu : public QMenu {
    Q_OBJECT

public:
    /// Whatever `actions` refers to must outlive the menu.
    RowMenu(const DocumentActions& actions, QWidget* parent);

Q_SIGNALS:
    /// An expansion was refused because of its size.
    void expansionRefused();

private:
    void add(const QString& title, bool isEnabled, const std::function<void()>& action);
    void expandAllBelow();

    DocumentActions actions_;
};
