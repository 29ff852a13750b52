#include <QCoreApplication>
#include <QTest>
#include <limits>
#include <memory>

#include "app/model/actions/DocumentActions.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/ActionsDesk.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

using Column = OutlineState::Column;
using Field = std::optional<OutlineState::EditingField>;

PlistValue number(int value) {
    return PlistValue::integer(value);
}

/// {text: "x", whole: 1, real: 1.5, truth: true, list: ["y", false]}, with the list expanded.
ActionsDesk& openSample(std::unique_ptr<ActionsDesk>& desk) {
    desk = std::make_unique<ActionsDesk>(
        tree(R"({text: "x", whole: 1, real: 1.5, truth: true, list: ["y", false]})"));
    desk->expand({{4}});
    return *desk;
}

/// Begins to edit a node, lets a turn of the event loop pass, and tells what is edited.
QString edited(ActionsDesk& desk, ActionsDesk::Path path, std::optional<Column> column) {
    desk.select({path});
    desk.outline.setEditing(std::nullopt);
    desk.actions.beginEditing(column);
    QCoreApplication::processEvents();
    const Field& field = desk.outline.editing();
    if (!field) {
        return QStringLiteral("nothing");
    }
    if (field->nodeId != desk.at(path)->id()) {
        return QStringLiteral("another node");
    }
    return QLatin1String(field->column == Column::key ? "key" : "value");
}

}  // namespace

/// Editing in place, and what is done with the text.
class DocumentActionsEditingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { openSample(desk_); }
    void cleanup() { desk_.reset(); }

    // --- Which field ---

    void editsTheColumn_data() {
        QTest::addColumn<int>("child");
        QTest::addColumn<int>("grandchild");
        QTest::addColumn<QString>("byKey");
        QTest::addColumn<QString>("byValue");
        QTest::addColumn<QString>("byNone");
        QTest::newRow("root") << -1 << -1 << "nothing"
                              << "nothing"
                              << "nothing";
        QTest::newRow("string") << 0 << -1 << "key"
                                << "value"
                                << "value";
        QTest::newRow("integer") << 1 << -1 << "key"
                                 << "value"
                                 << "value";
        QTest::newRow("real") << 2 << -1 << "key"
                              << "value"
                              << "value";
        QTest::newRow("boolean") << 3 << -1 << "key"
                                 << "nothing"
                                 << "key";
        QTest::newRow("array") << 4 << -1 << "key"
                               << "nothing"
                               << "key";
        QTest::newRow("string in an array") << 4 << 0 << "value"
                                            << "value"
                                            << "value";
        QTest::newRow("boolean in an array") << 4 << 1 << "nothing"
                                             << "nothing"
                                             << "nothing";
    }

    void editsTheColumn() {
        QFETCH(int, child);
        QFETCH(int, grandchild);
        const auto edit = [this, child, grandchild](std::optional<Column> column) {
            if (child < 0) {
                return edited(*desk_, {}, column);
            }
            const auto first = static_cast<std::size_t>(child);
            return grandchild < 0
                       ? edited(*desk_, {first}, column)
                       : edited(*desk_, {first, static_cast<std::size_t>(grandchild)}, column);
        };
        QTEST(edit(Column::key), "byKey");
        QTEST(edit(Column::value), "byValue");
        QTEST(edit(std::nullopt), "byNone");
    }

    void editsTheFirstSelectedRow() {
        desk_->select({{2}, {0}, {4, 0}});
        desk_->actions.beginEditing(Column::key);
        QCoreApplication::processEvents();
        QCOMPARE(desk_->outline.editing(), (Field{{desk_->at({0})->id(), Column::key}}));
    }

    void editsNothingWithoutASelection() {
        desk_->actions.beginEditing(Column::key);
        QCoreApplication::processEvents();
        QCOMPARE(desk_->outline.editing(), Field());
    }

    // --- When ---

    void closesTheOpenFieldFirst() {
        const Field open{{desk_->at({1})->id(), Column::value}};
        desk_->outline.setEditing(open);
        desk_->select({{0}});
        desk_->actions.beginEditing(Column::key);
        QCOMPARE(desk_->outline.editing(), Field());
        QCoreApplication::processEvents();
        QCOMPARE(desk_->outline.editing(), (Field{{desk_->at({0})->id(), Column::key}}));
    }

    void leavesTheOpenFieldIfThereIsNoOther() {
        const Field open{{desk_->at({1})->id(), Column::value}};
        desk_->outline.setEditing(open);
        desk_->select({{}});
        desk_->actions.beginEditing(Column::key);
        QCoreApplication::processEvents();
        QCOMPARE(desk_->outline.editing(), open);
    }

    void forgetsAWindowThatCloses() {
        desk_->select({{0}});
        desk_->actions.beginEditing(Column::key);
        desk_.reset();
        QCoreApplication::processEvents();
    }

    void forgetsADocumentThatCloses() {
        OutlineState outline;
        auto document = std::make_unique<PlistDocument>();
        document->apply({tree("[1]"), PlistFormat::xml});
        outline.follow(*document);
        const DocumentActions actions(*document, outline);
        const Field field{{document->root().children()[0]->id(), Column::value}};
        outline.select({field->nodeId});
        actions.beginEditing(Column::value);
        document.reset();
        QCoreApplication::processEvents();
        // The outline keeps the tree that it shows.
        QCOMPARE(outline.editing(), field);
    }

    void forgetsARowThatGoes() {
        desk_->select({{0}});
        desk_->actions.beginEditing(Column::key);
        desk_->actions.deleteSelected();
        QCoreApplication::processEvents();
        QCOMPARE(desk_->outline.editing(), Field());
    }

    void movesOnFromAKeyToItsValue() {
        const Field key{{desk_->at({1})->id(), Column::key}};
        desk_->outline.setEditing(key);
        desk_->actions.moveOnFromKey(*desk_->at({1}));
        QCOMPARE(desk_->outline.editing(), Field());
        QCoreApplication::processEvents();
        QCOMPARE(desk_->outline.editing(), (Field{{key->nodeId, Column::value}}));
    }

    void endsEditingWhereTheValueIsNoText() {
        desk_->outline.setEditing(Field{{desk_->at({3})->id(), Column::key}});
        desk_->actions.moveOnFromKey(*desk_->at({3}));
        QCOMPARE(desk_->outline.editing(), Field());
        QCoreApplication::processEvents();
        QCOMPARE(desk_->outline.editing(), Field());
    }

    // --- Keys ---

    void renames() {
        QVERIFY(!desk_->actions.rename(*desk_->at({0}), QStringLiteral("größer")));
        QVERIFY(desk_->at({0})->key() == "größer");
        QCOMPARE(desk_->history(), QStringLiteral("1 Rename, +0"));
        QCOMPARE(desk_->backAndForth(), QString());
    }

    void saysWhyAKeyIsRefused() {
        QCOMPARE(desk_->actions.rename(*desk_->at({0}), QStringLiteral("real")),
                 QStringLiteral("The key “real” already exists."));
        QCOMPARE(desk_->actions.rename(desk_->document.root(), QStringLiteral("x")),
                 QStringLiteral("The root cannot be renamed, moved or deleted."));
        QCOMPARE(desk_->history(), QStringLiteral("0 , +0"));
    }

    // --- Values ---

    void setsAValueFromText() {
        QCOMPARE(desk_->actions.setValueFromText(*desk_->at({0}), QStringLiteral("ü")),
                 std::nullopt);
        QCOMPARE(desk_->actions.setValueFromText(*desk_->at({1}), QStringLiteral(" 0x2A ")),
                 std::nullopt);
        QCOMPARE(desk_->actions.setValueFromText(*desk_->at({2}), QStringLiteral("1e3")),
                 std::nullopt);
        QCOMPARE(desk_->value(), QStringLiteral("{text: \"ü\", whole: 42, real: 1000, "
                                                "truth: true, list: [\"y\", false]}"));
        QCOMPARE(desk_->history(), QStringLiteral("3 Change Value, +3"));
        QCOMPARE(desk_->backAndForth(), QString());
    }

    void ignoresTheSameValue() {
        QCOMPARE(desk_->actions.setValueFromText(*desk_->at({1}), QStringLiteral("+1")),
                 std::nullopt);
        QCOMPARE(desk_->history(), QStringLiteral("0 , +0"));
    }

    void saysWhyATextIsRefused_data() {
        QTest::addColumn<PlistValue>("value");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        const auto add = [](PlistType type, const char* text, const char* message) {
            QTest::newRow(displayName(type).data())
                << PlistValue::defaultValue(type) << QString::fromUtf8(text)
                << QString::fromUtf8(message);
        };
        add(PlistType::dictionary, "", "“” is not a valid Dictionary.");
        add(PlistType::array, "x", "“x” is not a valid Array.");
        add(PlistType::integer, "abc", "“abc” is not a valid Integer.");
        add(PlistType::real, "%2 %1", "“%2 %1” is not a valid Real.");
        add(PlistType::boolean, "maybe", "“maybe” is not a valid Boolean.");
        add(PlistType::date, "soon", "“soon” is not a valid Date.");
        add(PlistType::data, "A", "“A” is not a valid Data.");
        add(PlistType::uid, "-1", "“-1” is not a valid UID.");
    }

    void saysWhyATextIsRefused() {
        QFETCH(PlistValue, value);
        QFETCH(QString, text);
        ActionsDesk desk(PlistValue::array({value}));
        const std::optional<QString> message = desk.actions.setValueFromText(*desk.at({0}), text);
        QVERIFY(message.has_value());
        QTEST(*message, "message");
        QCOMPARE(desk.history(), QStringLiteral("0 , +0"));
    }

    void changesValues() {
        desk_->actions.changeValue(*desk_->at({3}), PlistValue::boolean(false));
        QVERIFY(desk_->at({3})->value() == PlistValue::boolean(false));
        QCOMPARE(desk_->history(), QStringLiteral("1 Change Value, +1"));
    }

    void tellsRealsApartByComparison() {
        desk_->actions.changeValue(*desk_->at({2}), PlistValue::real(0.0));
        desk_->actions.changeValue(*desk_->at({2}), PlistValue::real(-0.0));
        QCOMPARE(desk_->history(), QStringLiteral("1 Change Value, +1"));
        const PlistValue notANumber = PlistValue::real(std::numeric_limits<double>::quiet_NaN());
        desk_->actions.changeValue(*desk_->at({2}), notANumber);
        desk_->actions.changeValue(*desk_->at({2}), notANumber);
        QCOMPARE(desk_->history(), QStringLiteral("3 Change Value, +2"));
        QCOMPARE(desk_->backAndForth(), QString());
    }

    // --- Types ---

    void showsANewContainerExpanded() {
        desk_->actions.changeType(*desk_->at({0}), PlistType::dictionary);
        QCOMPARE(desk_->rows(),
                 ActionsDesk::lines({": dictionary [-]", "  0 text: dictionary [-]", "  1 whole: 1",
                                     "  2 real: 1.5", "  3 truth: true", "  4 list: array [-]",
                                     "    0 \"y\"", "    1 false"}));
        QCOMPARE(desk_->history(), QStringLiteral("1 Change Type, +1"));
        QCOMPARE(desk_->backAndForth(), QString());
    }

    void convertsBetweenContainersAndBack() {
        const NodeId first = desk_->at({4, 0})->id();
        desk_->actions.changeType(*desk_->at({4}), PlistType::dictionary);
        QCOMPARE(desk_->value(), QStringLiteral("{text: \"x\", whole: 1, real: 1.5, truth: true, "
                                                "list: {Item 0: \"y\", Item 1: false}}"));
        desk_->actions.changeType(*desk_->at({4}), PlistType::integer);
        QVERIFY(desk_->at({4})->value() == number(0));
        desk_->undo.undo();
        desk_->undo.undo();
        QCOMPARE(desk_->at({4, 0})->id(), first);
        QVERIFY(desk_->outline.isExpanded(desk_->at({4})->id()));
        QVERIFY(desk_->at({4, 0})->key().isEmpty());
    }

    void changesTheFormat() {
        desk_->actions.changeFormat(PlistFormat::binary);
        QCOMPARE(desk_->document.format(), PlistFormat::binary);
        QCOMPARE(desk_->history(), QStringLiteral("1 Change Format, +0"));
        desk_->actions.changeFormat(PlistFormat::openStep);
        QCOMPARE(desk_->document.format(), PlistFormat::binary);
        desk_->undo.undo();
        QCOMPARE(desk_->document.format(), PlistFormat::xml);
        QCOMPARE(desk_->undo.redoActionName(), QStringLiteral("Change Format"));
    }

private:
    std::unique_ptr<ActionsDesk> desk_;
};

const RegisteredTest<DocumentActionsEditingTest> registered;
#include "DocumentActionsEditingTest.moc"
