#include <QTest>
#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "app/model/OutlineState.h"
#include "app/model/PlistDocument.h"
#include "app/model/PlistEditor.h"
#include "app/model/PlistNode.h"
#include "app/model/UndoManager.h"
#include "tests/model/support/TreeText.h"

namespace {

PlistValue sample() {
    const PlistValue inner = PlistValue::dictionary({{"b", PlistValue::integer(1)},
                                                     {"a", PlistValue::string("x")},
                                                     {"b", PlistValue::real(0.5)}});
    return PlistValue::dictionary({{"list", PlistValue::array({inner, PlistValue::boolean(true)})},
                                   {"inner", inner},
                                   {"a", PlistValue::string("12")},
                                   {"empty", PlistValue()}});
}

/// Random edits of one document, each followed by what the tree looks like then.
class Session {
public:
    explicit Session(unsigned seed) : random_(seed), editor_(document_, &undo_) {
        document_.apply({sample(), PlistFormat::xml});
        outline_.rebuild(document_.root());
        QObject::connect(&document_, &PlistDocument::treeChanged, &outline_,
                         [this] { outline_.rebuild(document_.root()); });
        outline_.setExpanded(document_.root(), OutlineState::Expansion::expand,
                             OutlineState::Reach::wholeSubtree);
    }

    /// Ids, keys and values of the whole tree, the format, and the rows on show. Makes all nodes,
    /// so that ids can be compared.
    QString picture() {
        QStringList lines{QString::number(static_cast<int>(document_.format()))};
        addLines(document_.root(), 0, lines);
        lines += TreeText::ofRows(outline_);
        return lines.join(QLatin1Char('\n'));
    }

    /// Whether the memoised value agrees with the nodes.
    bool isConsistent() {
        return TreeText::whole(document_.root().value()) == plain(document_.root());
    }

    void edit() {
        const std::vector<PlistNodePtr> some = anyNodes(1 + below(3));
        PlistNode& node = *some.front();
        switch (below(9)) {
            case 0:
                editor_.rename(node, anyKey());
                break;
            case 1:
                editor_.changeValue(node, PlistValue::integer(static_cast<int>(below(3))));
                break;
            case 2:
            case 3:
                editor_.changeType(node, allPlistTypes[below(allPlistTypes.size())]);
                break;
            case 4:
                editor_.changeFormat(below(2) == 0 ? PlistFormat::xml : PlistFormat::binary);
                break;
            case 5:
                editor_.add(newNodes(), node, static_cast<qint64>(below(4)));
                break;
            case 6:
                editor_.remove(some);
                break;
            case 7:
                editor_.move(some, *anyNodes(1).front(), static_cast<qint64>(below(4)));
                break;
            default:
                editor_.sortKeys(node);
        }
    }

    UndoManager& undo() { return undo_; }

private:
    std::size_t below(std::size_t count) { return random_() % count; }

    std::string anyKey() { return std::string(1, static_cast<char>('a' + below(5))); }

    std::vector<PlistNodePtr> newNodes() {
        std::vector<PlistNodePtr> nodes(below(3));
        for (PlistNodePtr& node : nodes) {
            node = PlistNode::create(anyKey(), below(2) == 0 ? sample() : PlistValue::integer(7));
        }
        return nodes;
    }

    std::vector<PlistNodePtr> anyNodes(std::size_t count) {
        std::vector<PlistNodePtr> nodes(count);
        for (PlistNodePtr& found : nodes) {
            found = PlistNodePtr(&document_.root());
            while (found->childCount() > 0 && below(4) != 0) {
                found = found->children()[below(found->children().size())];
            }
        }
        return nodes;
    }

    static void addLines(PlistNode& node, int depth, QStringList& lines) {
        lines += QStringLiteral("%1 %2 %3: %4")
                     .arg(depth)
                     .arg(node.id())
                     .arg(QString::fromStdString(std::string(node.key().view())),
                          TreeText::ofValue(node.scalar()));
        for (const PlistNodePtr& child : node.children()) {
            addLines(*child, depth + 1, lines);
        }
    }

    static QString plain(PlistNode& node) {
        if (!node.isContainer()) {
            return TreeText::ofValue(node.scalar());
        }
        if (!node.isMaterialized()) {
            return TreeText::whole(node.value());
        }
        const bool isDictionary = node.type() == PlistType::dictionary;
        QStringList parts;
        for (const PlistNodePtr& child : node.children()) {
            const QString key = QString::fromStdString(std::string(child->key().view()));
            parts += isDictionary ? key + QStringLiteral(": ") + plain(*child) : plain(*child);
        }
        return (isDictionary ? QStringLiteral("{%1}") : QStringLiteral("[%1]"))
            .arg(parts.join(QStringLiteral(", ")));
    }

    std::mt19937 random_;
    PlistDocument document_;
    UndoManager undo_;
    PlistEditor editor_;
    OutlineState outline_;
};

}  // namespace

/// Whatever was edited, undoing gives back every state that was, with the very same nodes.
class PlistEditorRandomTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goesBackAndForthThroughAllStates() {
        constexpr unsigned runs = 100;
        constexpr int edits = 60;
        qsizetype entries = 0;
        for (unsigned seed = 1; seed <= runs; ++seed) {
            Session session(seed);
            for (int i = 0; i < edits; ++i) {
                session.edit();
                QVERIFY2(session.isConsistent(), qPrintable(QString::number(seed)));
            }
            entries += session.undo().undoCount();
            const QStringList back = walk(session, &UndoManager::undo);
            QVERIFY(!session.undo().isModified());
            const QStringList forth = walk(session, &UndoManager::redo);
            QVERIFY(!session.undo().canRedo());
            QStringList reversed(forth.rbegin(), forth.rend());
            compare(back, reversed, seed);
            compare(back, walk(session, &UndoManager::undo), seed);
            if (QTest::currentTestFailed()) {
                return;
            }
        }
        QVERIFY(entries > qsizetype{runs} * edits / 4);
    }

    void comesBackToEveryStateThatWas() {
        for (unsigned seed = 1; seed <= 50; ++seed) {
            Session session(seed);
            QStringList states{session.picture()};
            qsizetype entries = 0;
            while (states.size() < 30) {
                session.edit();
                if (session.undo().undoCount() > entries) {
                    ++entries;
                    states += session.picture();
                }
            }
            const QStringList reversed(states.rbegin(), states.rend());
            compare(walk(session, &UndoManager::undo), reversed, seed);
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }

private:
    /// The picture now and after each step, to the end of the history.
    static QStringList walk(Session& session, void (UndoManager::*step)()) {
        QStringList pictures{session.picture()};
        while (step == &UndoManager::undo ? session.undo().canUndo() : session.undo().canRedo()) {
            (session.undo().*step)();
            pictures += session.picture();
            if (!session.isConsistent()) {
                pictures += QStringLiteral("The value does not agree with the nodes.");
            }
        }
        return pictures;
    }

    static void compare(const QStringList& actual, const QStringList& expected, unsigned seed) {
        QVERIFY2(actual.size() == expected.size(), qPrintable(QString::number(seed)));
        for (qsizetype i = 0; i < actual.size(); ++i) {
            QVERIFY2(actual[i] == expected[i],
                     qPrintable(QStringLiteral("Seed %1, step %2:\n%3\nshould be\n%4")
                                    .arg(seed)
                                    .arg(i)
                                    .arg(actual[i], expected[i])));
        }
    }
};

QTEST_GUILESS_MAIN(PlistEditorRandomTest)
#include "PlistEditorRandomTest.moc"
