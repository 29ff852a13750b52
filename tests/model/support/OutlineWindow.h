#pragma once

#include <QAbstractItemModelTester>
#include <QString>
#include <QStringList>
#include <QTest>
#include <memory>
#include <vector>

#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/RowMirror.h"
#include "tests/model/support/TreeText.h"

/// An integer.
inline PlistValue number(int value) {
    return PlistValue::integer(value);
}

/// A string.
inline PlistValue text(const char* value) {
    return PlistValue::string(value);
}

inline PlistValue sample() {
    return tree(R"({name: "Ada", items: [{a: 1}, "x"], more: {b: 2}})");
}

/// One window's outline with a listener that must always agree with it.
struct OutlineWindow {
    /// Shows `value` and listens from then on.
    explicit OutlineWindow(const PlistValue& value) : root(PlistNode::create({}, value)) {
        outline.rebuild(*root);
        mirror = std::make_unique<RowMirror>(outline);
        tester = std::make_unique<QAbstractItemModelTester>(mirror.get());
    }

    /// The node under keys and positions, "items/0/a".
    PlistNode& node(const QString& path) const {
        PlistNode* current = root.get();
        for (const QString& step : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
            current = child(*current, step);
        }
        return *current;
    }

    static PlistNode* child(PlistNode& parent, const QString& step) {
        for (const PlistNodePtr& child : parent.children()) {
            if (child->key() == PlistString(step.toStdString())) {
                return child.get();
            }
        }
        return parent.children()[step.toULongLong()].get();
    }

    void expand(const QString& path, OutlineState::Reach reach = OutlineState::Reach::nodeAlone) {
        QCOMPARE(outline.setExpanded(node(path), OutlineState::Expansion::expand, reach),
                 OutlineState::ExpandResult::done);
    }

    void collapse(const QString& path, OutlineState::Reach reach = OutlineState::Reach::nodeAlone) {
        QCOMPARE(outline.setExpanded(node(path), OutlineState::Expansion::collapse, reach),
                 OutlineState::ExpandResult::done);
    }

    QString rows() const { return TreeText::ofRows(outline); }

    /// The signals of the last change; empty text in front if the listener was told wrongly.
    QString told() const {
        const QString heard = mirror->takeSignals().join(QStringLiteral(", "));
        return mirror->text() == rows() ? heard
                                        : QStringLiteral("The listener has:\n") + mirror->text();
    }

    PlistNodePtr root;
    OutlineState outline;
    std::unique_ptr<RowMirror> mirror;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

/// The ids of the nodes.
inline NodeIdSet idsOf(const std::vector<PlistNode*>& nodes) {
    NodeIdSet ids;
    for (const PlistNode* node : nodes) {
        ids.insert(node->id());
    }
    return ids;
}
