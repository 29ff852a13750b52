#pragma once

#include "app/ui/table/accessibility/AccessiblePart.h"

/// The header of a column of the outline as a screen reader sees it.
class AccessibleHeader : public AccessiblePart {
public:
    using AccessiblePart::AccessiblePart;

    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
};
