#include "app/ui/table/accessibility/AccessiblePart.h"

#include "app/ui/table/view/OutlineView.h"

bool AccessiblePart::isValid() const {
    return true;
}

QObject* AccessiblePart::object() const {
    return nullptr;
}

QAccessibleInterface* AccessiblePart::parent() const {
    return QAccessible::queryAccessibleInterface(&view_);
}

int AccessiblePart::childCount() const {
    return 0;
}

QAccessibleInterface* AccessiblePart::child(int) const {
    return nullptr;
}

QAccessibleInterface* AccessiblePart::childAt(int, int) const {
    return nullptr;
}

int AccessiblePart::indexOfChild(const QAccessibleInterface*) const {
    return -1;
}

void AccessiblePart::setText(QAccessible::Text, const QString&) {}
