#pragma once

#include <QMenu>

#include "app/model/actions/DocumentActions.h"
#include "app/model/tree/PlistNodePtr.h"

/// The menu of types for one item: every type except UID, which only archivers create.
class TypeMenu : public QMenu {
    Q_OBJECT

public:
    /// Whether the type of the item can be changed at all.
    static bool isFor(const PlistNode& node);

    /// Whatever `actions` refers to must outlive the menu.
    TypeMenu(const DocumentActions& actions, const PlistNodePtr& node, QWidget* parent);
};
