#include "tests/ui/support/ByName.h"

#include <QAbstractButton>
#include <QAccessible>

bool ByName::isNamed(QWidget& widget, const char* name) {
    const QAccessibleInterface* object = QAccessible::queryAccessibleInterface(&widget);
    return widget.isVisible() && object != nullptr &&
           object->text(QAccessible::Name) == QString::fromUtf8(name);
}

void ByName::press(const QWidget& window, const char* name) {
    auto* button = find<QAbstractButton>(window, name);
    if (button == nullptr) {
        qFatal("There is no button “%s”", name);
    }
    button->click();
}
