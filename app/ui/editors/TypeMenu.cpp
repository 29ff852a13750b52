#include "app/ui/editors/TypeMenu.h"

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/model/tree/TypeName.h"

bool TypeMenu::isFor(const PlistNode& node) {
    return node.type() != PlistType::uid;
}

TypeMenu::TypeMenu(const DocumentActions& actions, const PlistNodePtr& node, QWidget* parent)
    : QMenu(tr("Type"), parent) {
    for (const PlistType type : allPlistTypes) {
        if (type == PlistType::uid) {
            continue;
        }
        QAction* item = addAction(TypeName::of(type));
        // Not in a group, for which some styles show dots instead of check marks.
        item->setCheckable(true);
        item->setChecked(type == node->type());
        connect(item, &QAction::triggered, this, [actions, node, type] {
            // Choosing the same type would expand a container.
            if (node->type() != type) {
                actions.changeType(*node, type);
            }
        });
        if (item->isChecked()) {
            setActiveAction(item);
        }
    }
}
