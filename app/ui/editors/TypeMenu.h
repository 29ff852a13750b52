#pragma once

#include <QMenu>

#include "app/model/actions/DocumentActions.h"
#include "app/model/tree/PlistNodePtr.h"

/// The choice of a type for one item: all types but that of archiver references, which only an
/// archiver makes.
class TypeMenu : public QMenu {
    Q_OBJECT

public:
    /// Whether the type of the item can be chosen at all.
    static bool isFor(const PlistNode& node);

    /// What `actions` names must outlive the menu.
    TypeMenu(const DocumentActions& actions, const PlistNodePtr& node, QWidget* parent);
};
