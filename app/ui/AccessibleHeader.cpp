#include "app/ui/AccessibleHeader.h"

#include <QHeaderView>

#include "app/ui/OutlineTableModel.h"
#include "app/ui/PlistTable.h"

AccessibleHeader::AccessibleHeader(PlistTable& table, int column)
    : table_(table), column_(column) {}

bool AccessibleHeader::isValid() const {
    return true;
}

QObject* AccessibleHeader::object() const {
    return nullptr;
}

QAccessibleInterface* AccessibleHeader::parent() const {
    return QAccessible::queryAccessibleInterface(&table_);
}

int AccessibleHeader::childCount() const {
    return 0;
}

QAccessibleInterface* AccessibleHeader::child(int) const {
    return nullptr;
}

QAccessibleInterface* AccessibleHeader::childAt(int, int) const {
    return nullptr;
}

int AccessibleHeader::indexOfChild(const QAccessibleInterface*) const {
    return -1;
}

QString AccessibleHeader::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? table_.outlineModel()
                                           .headerData(column_, Qt::Horizontal, Qt::DisplayRole)
                                           .toString()
                                     : QString();
}

void AccessibleHeader::setText(QAccessible::Text, const QString&) {}

QRect AccessibleHeader::rect() const {
    const QHeaderView& header = *table_.horizontalHeader();
    const QPoint corner(header.sectionViewportPosition(column_), 0);
    return {header.viewport()->mapToGlobal(corner),
            QSize(header.sectionSize(column_), header.height())};
}

QAccessible::Role AccessibleHeader::role() const {
    return QAccessible::ColumnHeader;
}

QAccessible::State AccessibleHeader::state() const {
    return {};
}
