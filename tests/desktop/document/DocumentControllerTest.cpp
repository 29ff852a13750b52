#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "app/desktop/document/DocumentController.h"
#include "app/desktop/files/BackgroundTask.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

const QByteArray openStepText = "{ name = \"North Mole\"; }";

PlistEditor editorOf(DocumentController& controller) {
    return PlistEditor(controller.document(), &controller.undoManager());
}

/// An array of 100,000 words.
QByteArray longText() {
    return "(" + QByteArray("word,").repeated(100'000) + ")";
}

/// 50,000 entries, of which the first and the last have equal keys.
QByteArray longDictionary() {
    constexpr int count = 50'000;
    QByteArray text = "<plist><dict>";
    for (int i = 0; i < count; ++i) {
        text += "<key>" + QByteArray::number(i % (count - 1)) + "</key><true/>";
    }
    return text + "</dict></plist>";
}

/// Whether a controller that ends after some turns of reading never tells of the document.
bool givesUpAfter(int turns, const QString& path) {
    auto controller = std::make_unique<DocumentController>(QStringLiteral("Untitled"));
    const QSignalSpy opened(controller.get(), &DocumentController::opened);
    controller->open(path);
    BackgroundTask::threads().waitForDone();
    for (int i = 0; i < turns; ++i) {
        QCoreApplication::processEvents();
    }
    const bool wasReading = controller->activity() == DocumentController::Activity::reading;
    controller.reset();
    QCoreApplication::processEvents();
    return wasReading && opened.isEmpty();
}

}  // namespace

class DocumentControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QVERIFY(folder_.isValid()); }

    void beginsPristine() {
        const DocumentController controller(QStringLiteral("Untitled"));
        QCOMPARE(controller.name(), QStringLiteral("Untitled"));
        QCOMPARE(controller.path(), QString());
        QVERIFY(controller.isPristine());
        QVERIFY(!controller.isModified());
        QCOMPARE(controller.activity(), DocumentController::Activity::idle);
    }

    void readsFiles() {
        DocumentController controller(QStringLiteral("Untitled"));
        QSignalSpy opened(&controller, &DocumentController::opened);
        const QSignalSpy activity(&controller, &DocumentController::activityChanged);
        controller.open(fileWith("a.plist", openStepText));
        QCOMPARE(controller.activity(), DocumentController::Activity::reading);
        QVERIFY(opened.wait());
        QCOMPARE(activity.count(), 2);
        QCOMPARE(controller.activity(), DocumentController::Activity::idle);
        QCOMPARE(controller.name(), QStringLiteral("a.plist"));
        QCOMPARE(controller.document().root().childCount(), 1);
        QVERIFY(controller.document().wasReadOnlyFormat());
        QVERIFY(!controller.isModified());
        QVERIFY(!controller.isPristine());
    }

    /// The rest of the program goes on while the nodes of a long document are made.
    void makesLongDocumentsInTurns() {
        DocumentController controller(QStringLiteral("Untitled"));
        QSignalSpy opened(&controller, &DocumentController::opened);
        int turns = 0;
        QTimer pulse;
        connect(&pulse, &QTimer::timeout, this, [&turns, &controller] {
            turns += BackgroundTask::threads().activeThreadCount() == 0 &&
                     controller.activity() == DocumentController::Activity::reading;
        });
        controller.open(fileWith("long.plist", longText()));
        BackgroundTask::threads().waitForDone();
        pulse.start(0);
        QVERIFY(opened.wait());
        QVERIFY2(turns >= 3, qPrintable(QString::number(turns)));
        QCOMPARE(controller.activity(), DocumentController::Activity::idle);
        QVERIFY(controller.document().root().isMaterialized());
        QCOMPARE(controller.document().root().childCount(), 100'000);
        QCOMPARE(controller.document().revision(), 1);
    }

    void findsRepeatedKeysOfLongDocuments() {
        DocumentController controller(QStringLiteral("Untitled"));
        QSignalSpy opened(&controller, &DocumentController::opened);
        controller.open(fileWith("keys.plist", longDictionary()));
        QVERIFY(opened.wait());
        PlistNode& root = controller.document().root();
        const QString repeated = TreeText::repeatedKeys(root);
        QCOMPARE(repeated.count(u'x'), 2);
        QVERIFY(repeated.startsWith(u'x') && repeated.endsWith(u'x'));
    }

    /// The document stays what it was until the new content is complete.
    void revertsToLongDocumentsInTurns() {
        DocumentController controller(QStringLiteral("Untitled"));
        QSignalSpy opened(&controller, &DocumentController::opened);
        QSignalSpy reverted(&controller, &DocumentController::reverted);
        controller.open(fileWith("long.plist", openStepText));
        QVERIFY(opened.wait());
        const PlistNodePtr before(&controller.document().root());
        fileWith("long.plist", longText());
        controller.revert();
        BackgroundTask::threads().waitForDone();
        int turns = 0;
        QTimer pulse;
        connect(&pulse, &QTimer::timeout, this, [&turns, &controller, &before] {
            turns += controller.activity() == DocumentController::Activity::reading &&
                     &controller.document().root() == before.get();
        });
        pulse.start(0);
        QVERIFY(reverted.wait());
        QVERIFY2(turns >= 3, qPrintable(QString::number(turns)));
        QCOMPARE(controller.document().root().childCount(), 100'000);
        QVERIFY(controller.document().root().isMaterialized());
        controller.undoManager().undo();
        QCOMPARE(&controller.document().root(), before.get());
    }

    /// While its children are made, and while its keys are compared.
    void givesUpALongDocumentWithItsController() {
        QVERIFY(givesUpAfter(1, fileWith("long.plist", longText())));
        for (int turns = 1; turns <= 5; ++turns) {
            QVERIFY(givesUpAfter(turns, fileWith("keys.plist", longDictionary())));
        }
    }

    void makesPathsAbsolute() {
        DocumentController controller(QStringLiteral("Untitled"));
        QSignalSpy opened(&controller, &DocumentController::opened);
        const QString path = fileWith("b.plist", openStepText);
        controller.open(QDir::current().relativeFilePath(path));
        QVERIFY(opened.wait());
        QCOMPARE(controller.path(), path);
    }

    void reportsWhatCannotBeRead() {
        DocumentController controller(QStringLiteral("Untitled"));
        QStringList messages;
        connect(&controller, &DocumentController::openFailed, this,
                [&messages](const FileError& error) {
                    messages = {error.message(), error.failureReason()};
                });
        controller.open(fileWith("c.plist", "<plist><dict></array></plist>"));
        QTRY_VERIFY(!messages.isEmpty());
        QCOMPARE(messages.at(0),
                 QStringLiteral("The file “c.plist” is not a readable property list."));
        QVERIFY(messages.at(1).startsWith(QStringLiteral("Line 1, column 14: ")));
        QCOMPARE(controller.path(), QString());
        QVERIFY(controller.isPristine());
    }

    void knowsWhetherItIsModified() {
        DocumentController controller(QStringLiteral("Untitled"));
        const QSignalSpy modified(&controller, &DocumentController::modifiedChanged);
        editorOf(controller).changeFormat(PlistFormat::binary);
        QVERIFY(controller.isModified());
        QVERIFY(!controller.isPristine());
        controller.undoManager().undo();
        QVERIFY(!controller.isModified());
        // Untouched is something else: there is an edit to be done again.
        QVERIFY(!controller.isPristine());
        controller.undoManager().redo();
        QVERIFY(controller.isModified());
        QCOMPARE(modified.count(), 3);
    }

    void isModifiedByEveryKindOfEdit() {
        DocumentController controller(QStringLiteral("Untitled"));
        const PlistEditor editor = editorOf(controller);
        PlistNode& root = controller.document().root();
        const std::vector<PlistNodePtr> nodes = {PlistNode::create("b", PlistValue::integer(1)),
                                                 PlistNode::create("a", PlistValue::integer(2))};
        const auto check = [&controller](const auto& edit) {
            controller.undoManager().setSavedState(controller.undoManager().state());
            edit();
            const bool wasModified = controller.isModified();
            controller.undoManager().undo();
            const bool isClean = !controller.isModified();
            controller.undoManager().redo();
            return wasModified && isClean && controller.isModified();
        };
        QVERIFY(check([&] { editor.add(nodes, root, 0); }));
        QVERIFY(check([&] { editor.rename(*nodes[0], "c"); }));
        QVERIFY(check([&] { editor.changeValue(*nodes[0], PlistValue::integer(3)); }));
        QVERIFY(check([&] { editor.changeType(*nodes[0], PlistType::string); }));
        QVERIFY(check([&] { editor.sortKeys(root); }));
        QVERIFY(check([&] { editor.move({&nodes[0], 1}, root, 0); }));
        QVERIFY(check([&] { editor.remove({&nodes[0], 1}); }));
        QVERIFY(check([&] { editor.changeFormat(PlistFormat::binary); }));
    }

    void opensWithoutAHistory() {
        DocumentController controller(QStringLiteral("Untitled"));
        editorOf(controller).changeFormat(PlistFormat::binary);
        QSignalSpy opened(&controller, &DocumentController::opened);
        controller.open(fileWith("h.plist", openStepText));
        QVERIFY(opened.wait());
        QVERIFY(!controller.isModified());
        QVERIFY(!controller.undoManager().canUndo());
    }

    void savesInTheFormatOfTheDocument() {
        DocumentController controller(QStringLiteral("Untitled"));
        editorOf(controller).changeFormat(PlistFormat::binary);
        QSignalSpy saved(&controller, &DocumentController::saved);
        const QString path = folder_.filePath(QStringLiteral("new.plist"));
        controller.save(path);
        QCOMPARE(controller.activity(), DocumentController::Activity::writing);
        QVERIFY(saved.wait());
        QVERIFY(contentOf(path).startsWith("bplist00"));
        QCOMPARE(controller.path(), path);
        QVERIFY(!controller.isModified());
    }

    void savesOpenStepAsXml() {
        DocumentController controller(QStringLiteral("Untitled"));
        QSignalSpy opened(&controller, &DocumentController::opened);
        QSignalSpy saved(&controller, &DocumentController::saved);
        const QString path = fileWith("d.plist", openStepText);
        controller.open(path);
        QVERIFY(opened.wait());
        controller.save(path);
        QVERIFY(saved.wait());
        QVERIFY(contentOf(path).startsWith("<?xml"));
        QVERIFY(contentOf(path).contains("<string>North Mole</string>"));
        QVERIFY(controller.document().wasReadOnlyFormat());
    }

    /// What is changed while the file is being written is not in the file.
    void staysModifiedByEditsDuringTheWriting() {
        DocumentController controller(QStringLiteral("Untitled"));
        const PlistEditor editor = editorOf(controller);
        editor.changeType(controller.document().root(), PlistType::integer);
        QSignalSpy saved(&controller, &DocumentController::saved);
        const QString path = folder_.filePath(QStringLiteral("during.plist"));
        controller.save(path);
        editor.changeValue(controller.document().root(), PlistValue::integer(2));
        QVERIFY(saved.wait());
        QVERIFY(contentOf(path).contains("<integer>0</integer>"));
        QVERIFY(controller.isModified());
        // What was saved is what undoing leads back to.
        controller.undoManager().undo();
        QVERIFY(!controller.isModified());
        controller.undoManager().undo();
        QVERIFY(controller.isModified());
    }

    void knowsWhatTheFileHeld() {
        DocumentController controller(QStringLiteral("Untitled"));
        QVERIFY(!controller.fileState().base);
        QSignalSpy opened(&controller, &DocumentController::opened);
        const QString path = fileWith("base.plist", openStepText);
        controller.open(path);
        QVERIFY(opened.wait());
        QCOMPARE(controller.fileState().base, std::optional(digestOf(path)));

        QSignalSpy saved(&controller, &DocumentController::saved);
        controller.save(path);
        QVERIFY(saved.wait());
        QVERIFY(contentOf(path) != openStepText);
        QCOMPARE(controller.fileState().base, std::optional(digestOf(path)));

        fileWith("base.plist", "{ name = other; }");
        QSignalSpy reverted(&controller, &DocumentController::reverted);
        controller.revert();
        QVERIFY(reverted.wait());
        QCOMPARE(controller.fileState().base, std::optional(digestOf(path)));
    }

    /// What could not be read or written does not count.
    void knowsWhatTheFileHeldAfterAFailure() {
        DocumentController controller(QStringLiteral("Untitled"));
        QSignalSpy opened(&controller, &DocumentController::opened);
        const QString path = fileWith("kept.plist", openStepText);
        controller.open(path);
        QVERIFY(opened.wait());
        const std::optional<ContentDigest> base = controller.fileState().base;

        fileWith("kept.plist", "<plist>");
        QSignalSpy notReverted(&controller, &DocumentController::revertFailed);
        controller.revert();
        QVERIFY(notReverted.wait());
        QSignalSpy notSaved(&controller, &DocumentController::saveFailed);
        controller.save(folder_.filePath(QStringLiteral("missing/kept.plist")));
        QVERIFY(notSaved.wait());
        QCOMPARE(controller.fileState().base, base);
    }

    void reportsWhatCannotBeWritten() {
        DocumentController controller(QStringLiteral("Untitled"));
        editorOf(controller).changeFormat(PlistFormat::binary);
        QStringList messages;
        connect(&controller, &DocumentController::saveFailed, this,
                [&messages](const FileError& error) {
                    messages = {error.message(), error.failureReason()};
                });
        controller.save(folder_.filePath(QStringLiteral("missing/x.plist")));
        QTRY_VERIFY(!messages.isEmpty());
        QCOMPARE(messages, (QStringList{QStringLiteral("The file “x.plist” could not be written."),
                                        QStringLiteral("No such file or directory.")}));
        QCOMPARE(controller.path(), QString());
        QVERIFY(controller.isModified());
    }

    void mayEndWhileItReads() {
        const QString path = fileWith("e.plist", openStepText);
        auto* controller = new DocumentController(QStringLiteral("Untitled"));
        controller->open(path);
        delete controller;
        QVERIFY(BackgroundTask::threads().waitForDone());
    }

private:
    QString fileWith(const char* name, const QByteArray& bytes) {
        QString path = folder_.filePath(QLatin1String(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("%s cannot be written", qUtf8Printable(path));
        }
        return path;
    }

    static ContentDigest digestOf(const QString& path) {
        const QByteArray bytes = contentOf(path);
        return ContentDigest::of({reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                  static_cast<std::size_t>(bytes.size())});
    }

    static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder_;
};

const RegisteredTest<DocumentControllerTest> registered;
#include "DocumentControllerTest.moc"
