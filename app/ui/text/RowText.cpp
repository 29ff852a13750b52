#include "app/ui/text/RowText.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <limits>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/model/tree/TypeName.h"
#include "app/ui/text/DataText.h"
#include "app/ui/text/DateText.h"
#include "app/ui/text/SingleLineText.h"

namespace {

/// Plural forms exist for `int` only; they no longer change that far out.
int pluralNumber(qint64 count) {
    return static_cast<int>(std::min<qint64>(count, std::numeric_limits<int>::max()));
}

QString itemCount(const PlistNode& node) {
    return QCoreApplication::translate("RowText", "%n item(s)", nullptr,
                                       pluralNumber(node.childCount()));
}

QString booleanText(bool truth) {
    return truth ? QStringLiteral("true") : QStringLiteral("false");
}

QString uidText(quint64 number) {
    return QCoreApplication::translate("RowText", "UID %1").arg(number);
}

QString scalarText(const PlistValue& value) {
    switch (value.type()) {
        case PlistType::string:
            return SingleLineText::fromUtf8(value.text());
        case PlistType::boolean:
            return booleanText(value.booleanValue());
        case PlistType::date:
            return DateText::text(value.dateValue());
        case PlistType::data:
            return DataText::summary(value.dataValue());
        case PlistType::uid:
            return uidText(value.uidValue());
        default:
            return QString::fromStdString(PlistText::displayText(value));
    }
}

}  // namespace

QString RowText::key(const OutlineRow& row) {
    if (!row.parentType()) {
        return QCoreApplication::translate("RowText", "Root");
    }
    if (row.parentType() == PlistType::array) {
        return QCoreApplication::translate("RowText", "Item %1").arg(row.index());
    }
    return SingleLineText::fromUtf8(row.node().key().view());
}

QString RowText::type(const OutlineRow& row) {
    return TypeName::of(row.node().type());
}

QString RowText::value(const OutlineRow& row) {
    const PlistNode& node = row.node();
    return node.isContainer() ? itemCount(node) : scalarText(node.scalar());
}

bool RowText::isKeySecondary(const OutlineRow& row) {
    return row.parentType() == PlistType::array;
}

bool RowText::isValueSecondary(const OutlineRow& row) {
    switch (row.node().type()) {
        case PlistType::dictionary:
        case PlistType::array:
        case PlistType::boolean:
        case PlistType::uid:
            return true;
        default:
            return false;
    }
}

QString RowText::duplicateKeyNotice() {
    return QCoreApplication::translate(
        "RowText", "Duplicate key: only one of them is used when the file is read.");
}

QString RowText::keyDescription(const OutlineRow& row) {
    QStringList parts{QCoreApplication::translate("RowText", "level %1").arg(row.depth())};
    if (row.node().isContainer()) {
        parts += row.isExpanded() ? QCoreApplication::translate("RowText", "expanded")
                                  : QCoreApplication::translate("RowText", "collapsed");
    }
    if (row.isDuplicateKey()) {
        parts += duplicateKeyNotice();
    }
    return parts.join(QStringLiteral(", "));
}
