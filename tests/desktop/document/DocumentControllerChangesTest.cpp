#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <cstdint>
#include <memory>
#include <optional>

#include "app/desktop/document/DocumentController.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/tree/PlistNode.h"
#include "tests/support/TestProgram.h"

namespace {

const QByteArray first = "{ name = \"North Mole\"; }";
const QByteArray second = "{ name = \"South Mole\"; light = red; }";

ContentDigest digestOf(const QByteArray& bytes) {
    return ContentDigest::of({reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                              static_cast<std::size_t>(bytes.size())});
}

}  // namespace

/// A document whose file is changed by others.
class DocumentControllerChangesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        QVERIFY(folder_.isValid());
        controller_ = std::make_unique<DocumentController>(QStringLiteral("Untitled"));
        connect(controller_.get(), &DocumentController::saveFailed, this,
                [this](const FileError& error) { failure_ = error; });
        connect(controller_.get(), &DocumentController::reloadFailed, this,
                [this](const FileError& error) { failure_ = error; });
        failure_.reset();
        write(first);
        QSignalSpy opened(controller_.get(), &DocumentController::opened);
        controller_->open(path());
        QVERIFY(opened.wait());
    }

    void cleanup() { controller_.reset(); }

    // --- Saving ---

    void savesOverWhatItHasRead() {
        QVERIFY(isSaved());
        QVERIFY(content().startsWith("<?xml"));
        // And over what it has saved.
        edit();
        QVERIFY(isSaved());
        QVERIFY(!controller_->isModified());
    }

    void leavesAloneWhatOthersHaveWritten() {
        edit();
        write(second);
        QVERIFY(!isSaved());
        QCOMPARE(failure_->code(), FileError::Code::changedOnDisk);
        QCOMPARE(failure_->message(),
                 QStringLiteral("The file “a.plist” has been changed by another program."));
        QCOMPARE(failure_->failureReason(), QStringLiteral("It has been left untouched."));
        QCOMPARE(content(), second);
        QVERIFY(controller_->isModified());
        QCOMPARE(controller_->fileState().base, std::optional(digestOf(first)));
    }

    void makesAFileThatHasGone() {
        QVERIFY(QFile::remove(path()));
        QVERIFY(isSaved());
        QVERIFY(content().startsWith("<?xml"));
    }

    void overwritesWhatWasChosen() {
        write(second);
        controller_->updateFileContent({digestOf(second)});
        controller_->overruleFile();
        QVERIFY(isSaved());
        // That choice was for once.
        write(second);
        QVERIFY(!isSaved());
        QCOMPARE(content(), second);
    }

    void overwritesNothingElseThanWhatWasChosen() {
        controller_->updateFileContent({digestOf(second)});
        controller_->overruleFile();
        write("{ other = 1; }");
        QVERIFY(!isSaved());
        QCOMPARE(content(), QByteArray("{ other = 1; }"));
    }

    /// Whoever named the file has chosen.
    void overwritesUnderANamedPath() {
        write(second);
        QSignalSpy saved(controller_.get(), &DocumentController::saved);
        controller_->save(path());
        QVERIFY(saved.wait());
        QVERIFY(content().startsWith("<?xml"));
    }

    // --- Reloading ---

    void reloadsAsOneStep() {
        write(second);
        const qint64 revision = controller_->document().revision();
        QSignalSpy about(controller_.get(), &DocumentController::aboutToReload);
        QSignalSpy reloaded(controller_.get(), &DocumentController::reloaded);
        connect(controller_.get(), &DocumentController::aboutToReload, this,
                [this] { QCOMPARE(controller_->document().root().childCount(), 1); });
        controller_->reload();
        QVERIFY(reloaded.wait());
        QCOMPARE(about.count(), 1);
        QCOMPARE(controller_->document().revision(), revision + 1);
        QCOMPARE(controller_->document().root().childCount(), 2);
        QVERIFY(!controller_->isModified());
        QCOMPARE(controller_->fileState().base, std::optional(digestOf(second)));

        QCOMPARE(controller_->undoManager().undoActionName(), QStringLiteral("Reload"));
        controller_->undoManager().undo();
        QCOMPARE(controller_->document().root().childCount(), 1);
        QVERIFY(controller_->isModified());
        controller_->undoManager().redo();
        QVERIFY(!controller_->isModified());
    }

    void keepsTheDocumentWhereTheFileCannotBeRead() {
        write("<plist><dict></array></plist>");
        QSignalSpy failed(controller_.get(), &DocumentController::reloadFailed);
        controller_->reload();
        QVERIFY(failed.wait());
        QCOMPARE(failure_->code(), FileError::Code::corruptFile);
        QCOMPARE(controller_->document().root().childCount(), 1);
        QVERIFY(!controller_->undoManager().canUndo());
        QVERIFY(!controller_->isModified());
    }

    /// Nothing that the user does meanwhile is lost.
    void doesNotReloadOverNewEdits() {
        write(second);
        QSignalSpy overtaken(controller_.get(), &DocumentController::reloadOvertaken);
        controller_->reload();
        edit();
        QVERIFY(overtaken.wait());
        QCOMPARE(controller_->document().root().childCount(), 1);
        QVERIFY(controller_->isModified());
        QCOMPARE(controller_->fileState().base, std::optional(digestOf(first)));
    }

    // --- Without a file ---

    void isModifiedWithoutItsFile() {
        controller_->updateFileContent({});
        QVERIFY(controller_->isModified());
        QVERIFY(!controller_->hasEdits());
        edit();
        QVERIFY(controller_->hasEdits());
        controller_->undoManager().undo();
        QVERIFY(controller_->isModified());
        QVERIFY(!controller_->hasEdits());
    }

    void isCleanWhenTheFileIsBack() {
        controller_->updateFileContent({});
        controller_->updateFileContent({});
        controller_->updateFileContent({digestOf(first)});
        QVERIFY(!controller_->isModified());
        edit();
        controller_->updateFileContent({digestOf(first)});
        QVERIFY(controller_->isModified());
        QVERIFY(controller_->hasEdits());
    }

    void isCleanWhenItIsSavedAgain() {
        controller_->updateFileContent({});
        edit();
        QVERIFY(isSaved());
        QVERIFY(!controller_->isModified());
        QVERIFY(!controller_->hasEdits());
    }

    void isModifiedBesideWhatCannotBeRead() {
        controller_->updateFileContent({digestOf(second)});
        QVERIFY(!controller_->isModified());
        controller_->setFileUnreadable();
        QVERIFY(controller_->isModified());
        QVERIFY(!controller_->hasEdits());
    }

private:
    QString path() const { return folder_.filePath(QStringLiteral("a.plist")); }

    void write(const QByteArray& bytes) const {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    QByteArray content() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void edit() {
        const PlistEditor editor(controller_->document(), &controller_->undoManager());
        editor.changeFormat(controller_->document().format() == PlistFormat::xml
                                ? PlistFormat::binary
                                : PlistFormat::xml);
    }

    bool isSaved() {
        failure_.reset();
        QSignalSpy saved(controller_.get(), &DocumentController::saved);
        controller_->save();
        return QTest::qWaitFor([&] { return !saved.isEmpty() || failure_; }) && !failure_;
    }

    QTemporaryDir folder_;
    std::unique_ptr<DocumentController> controller_;
    std::optional<FileError> failure_;
};

const RegisteredTest<DocumentControllerChangesTest> registered;
#include "DocumentControllerChangesTest.moc"
