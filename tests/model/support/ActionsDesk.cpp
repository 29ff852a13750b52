#include "tests/model/support/ActionsDesk.h"

#include <QByteArray>
#include <QStringList>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/TreeText.h"

namespace {

QByteArray bytesOf(PlistDocument& document) {
    const PlistBytes bytes = PlistCodec::write(document.root().value(), PlistFormat::xml);
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

}  // namespace

ActionsDesk::ActionsDesk(const PlistValue& value) : actions(document, outline, &undo) {
    document.apply({value, PlistFormat::xml});
    outline.follow(document);
    bytesAtFirst = bytesOf(document);
    history();
}

PlistNodePtr ActionsDesk::at(Path path) const {
    PlistNodePtr node(&document.root());
    for (const std::size_t position : path) {
        node = node->children()[position];
    }
    return node;
}

void ActionsDesk::select(std::initializer_list<Path> paths) {
    NodeIdSet ids;
    for (const Path path : paths) {
        ids.insert(at(path)->id());
    }
    outline.select(ids);
}

void ActionsDesk::expand(std::initializer_list<Path> paths) {
    for (const Path path : paths) {
        outline.setExpanded(*at(path), OutlineState::Expansion::expand,
                            OutlineState::Reach::nodeAlone);
    }
}

QString ActionsDesk::rows() const {
    QStringList lines;
    for (const OutlineRow& row : outline.rows()) {
        QString line = TreeText::ofRow(row);
        line += QLatin1String(outline.selection().contains(row.nodeId()) ? " *" : "");
        if (outline.editing() && outline.editing()->nodeId == row.nodeId()) {
            const bool isKey = outline.editing()->column == OutlineState::Column::key;
            line += QLatin1String(isKey ? " <key>" : " <value>");
        }
        lines += line;
    }
    return lines.join(QLatin1Char('\n'));
}

QString ActionsDesk::lines(std::initializer_list<const char*> lines) {
    QStringList texts;
    for (const char* line : lines) {
        texts += QString::fromUtf8(line);
    }
    return texts.join(QLatin1Char('\n'));
}

QString ActionsDesk::value() const {
    return TreeText::whole(document.root().value());
}

QString ActionsDesk::history() {
    const qint64 counted = std::exchange(countedRevision, document.revision());
    return QStringLiteral("%1 %2, +%3")
        .arg(undo.undoCount())
        .arg(undo.undoActionName())
        .arg(document.revision() - counted);
}

QString ActionsDesk::backAndForth() {
    const QByteArray bytesAtLast = bytesOf(document);
    const qsizetype entries = undo.undoCount();
    QStringList wrong;
    for (int round = 1; round <= 2; ++round) {
        while (undo.canUndo()) {
            undo.undo();
        }
        if (bytesOf(document) != bytesAtFirst) {
            wrong += QStringLiteral("undo %1").arg(round);
        }
        // No further than before: there may have been something to redo already.
        while (undo.canRedo() && undo.undoCount() < entries) {
            undo.redo();
        }
        if (bytesOf(document) != bytesAtLast || undo.undoCount() != entries) {
            wrong += QStringLiteral("redo %1").arg(round);
        }
    }
    return wrong.join(QStringLiteral(", "));
}
