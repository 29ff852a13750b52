#include "app/ui/table/accessibility/AccessibleHeader.h"

#include <QHeaderView>

#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/table/view/OutlineView.h"

QString AccessibleHeader::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? view()
                                           .outlineModel()
                                           .headerData(column(), Qt::Horizontal, Qt::DisplayRole)
                                           .toString()
                                     : QString();
}

QRect AccessibleHeader::rect() const {
    const QHeaderView& header = *view().horizontalHeader();
    const QPoint corner(header.sectionViewportPosition(column()), 0);
    return {header.viewport()->mapToGlobal(corner),
            QSize(header.sectionSize(column()), header.height())};
}

QAccessible::Role AccessibleHeader::role() const {
    return QAccessible::ColumnHeader;
}

QAccessible::State AccessibleHeader::state() const {
    return {};
}
