#include "tests/model/support/TreeText.h"

#include <QByteArray>
#include <vector>

#include "app/model/outline/OutlineRow.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"

namespace {

constexpr int stepsPerLevel = 2;

QString fromView(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString indentation(qint64 depth) {
    return QString(static_cast<qsizetype>(depth * stepsPerLevel), QLatin1Char(' '));
}

QString content(PlistNode& node) {
    const QString scalar = TreeText::ofValue(node.scalar());
    return QStringLiteral("%1: %2").arg(fromView(node.key().view()), scalar);
}

}  // namespace

QString TreeText::ofValue(const PlistValue& value) {
    switch (value.type()) {
        case PlistType::string:
            return QLatin1Char('"') + fromView(value.text()) + QLatin1Char('"');
        case PlistType::integer:
            return QString::fromStdString(plist::decimalText(value.integerValue()));
        case PlistType::real:
            return QString::number(value.realValue());
        case PlistType::boolean:
            return value.booleanValue() ? QStringLiteral("true") : QStringLiteral("false");
        case PlistType::date:
            return QStringLiteral("date %1").arg(value.dateValue());
        case PlistType::data: {
            const auto bytes = value.dataValue();
            const QByteArray copy(reinterpret_cast<const char*>(bytes.data()),
                                  static_cast<qsizetype>(bytes.size()));
            return QStringLiteral("data %1").arg(QString::fromLatin1(copy.toHex()));
        }
        case PlistType::uid:
            return QStringLiteral("uid %1").arg(value.uidValue());
        case PlistType::dictionary:
        case PlistType::array:
            break;
    }
    return fromView(rawValue(value.type()));
}

QString TreeText::whole(const PlistValue& value) {
    if (!value.isContainer()) {
        return ofValue(value);
    }
    const bool isDictionary = value.type() == PlistType::dictionary;
    QStringList parts;
    for (std::size_t i = 0; i < value.childCount(); ++i) {
        const QString child = whole(value.children()[i]);
        parts +=
            isDictionary ? fromView(value.keys()[i].view()) + QStringLiteral(": ") + child : child;
    }
    const QString inside = parts.join(QStringLiteral(", "));
    return isDictionary ? QStringLiteral("{%1}").arg(inside) : QStringLiteral("[%1]").arg(inside);
}

QString TreeText::ofTree(PlistNode& node) {
    struct Waiting {
        PlistNode* node;
        PlistNode* parent;
        int depth;
    };
    QStringList lines;
    std::vector<Waiting> waiting{{&node, node.parent(), 0}};
    while (!waiting.empty()) {
        const Waiting next = waiting.back();
        waiting.pop_back();
        QString line = indentation(next.depth) + content(*next.node);
        if (next.node->isContainer()) {
            line += QStringLiteral(" %1").arg(next.node->childCount());
            line += QLatin1String(next.node->isMaterialized() ? "" : " ...");
        }
        line += QLatin1String(next.node->parent() == next.parent ? "" : " !");
        lines += line;
        if (next.node->isMaterialized()) {
            const auto children = next.node->children();
            for (std::size_t i = children.size(); i > 0; --i) {
                waiting.push_back({children[i - 1].get(), next.node, next.depth + 1});
            }
        }
    }
    return lines.join(QLatin1Char('\n'));
}

QString TreeText::ofRow(const OutlineRow& row) {
    QString line = indentation(row.depth());
    if (row.parentType()) {
        line += QStringLiteral("%1 ").arg(row.index());
    }
    if (row.parentType() == PlistType::array) {
        line += ofValue(row.node().scalar());
    } else {
        line += content(row.node());
    }
    if (row.node().isContainer()) {
        line += QLatin1String(row.isExpanded() ? " [-]" : " [+]");
    }
    line += QLatin1String(row.isDuplicateKey() ? " (duplicate)" : "");
    return line;
}

QString TreeText::ofRows(const OutlineState& outline) {
    QStringList lines;
    for (const OutlineRow& row : outline.rows()) {
        lines += ofRow(row);
    }
    return lines.join(QLatin1Char('\n'));
}

QString TreeText::repeatedKeys(PlistNode& dictionary) {
    OutlineState outline;
    outline.rebuild(dictionary);
    QString marks;
    for (const OutlineRow& row : outline.rows()) {
        if (row.depth() > 0) {
            marks += row.isDuplicateKey() ? u'x' : u'.';
        }
    }
    return marks;
}
