#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <memory>
#include <optional>

#include "app/desktop/document/DocumentController.h"
#include "app/desktop/document/DocumentRecovery.h"
#include "app/desktop/files/PlistDocumentReader.h"
#include "app/desktop/recovery/RecoverableDocument.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/tree/PlistNode.h"
#include "tests/support/TestProgram.h"

using std::chrono::milliseconds;

namespace {

constexpr DocumentRecovery::Pace soon{milliseconds(1), milliseconds(60'000)};
constexpr DocumentRecovery::Pace never{milliseconds(60'000), milliseconds(60'000)};

void add(DocumentController& controller, const char* key) {
    const PlistEditor editor(controller.document(), &controller.undoManager());
    const PlistNodePtr item = PlistNode::create(PlistString(key), PlistValue::boolean(true));
    editor.add({&item, 1}, controller.document().root(), 0);
}

}  // namespace

class DocumentRecoveryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        place_.emplace();
        store_ = std::make_unique<RecoveryStore>(place_->filePath(QStringLiteral("recovery")));
        controller_ = std::make_unique<DocumentController>(QStringLiteral("Untitled"));
    }

    void cleanup() {
        controller_.reset();
        store_.reset();
    }

    void waitsTwoSecondsButNeverMoreThanFifteen() {
        QCOMPARE(DocumentRecovery::Pace().afterEdit, milliseconds(2'000));
        QCOMPARE(DocumentRecovery::Pace().whileEditing, milliseconds(15'000));
        QCOMPARE(DocumentRecovery::pausePerWrite, 20);
    }

    void backsUpADocumentSoonAfterAnEdit() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, soon);
        QSignalSpy backedUp(recovery, &DocumentRecovery::backedUp);
        add(*controller_, "a");
        QVERIFY(backedUp.wait());
        QCOMPARE(backedUp.at(0).at(0).value<UndoManager::State>(),
                 controller_->undoManager().state());
        const QStringList files = keptFiles();
        QCOMPARE(files.size(), 2);
        const PlistFile content = PlistDocumentReader::read(files.at(1));
        QVERIFY(content.root == controller_->document().snapshot().root);
    }

    void backsUpADocumentWhileItIsEditedWithoutAPause() {
        // An edit comes long before the pause that the other limit waits for.
        auto* recovery =
            new DocumentRecovery(*controller_, *store_, {milliseconds(60'000), milliseconds(20)});
        QSignalSpy backedUp(recovery, &DocumentRecovery::backedUp);
        QTimer edits;
        connect(&edits, &QTimer::timeout, this, [this] { add(*controller_, "a"); });
        edits.start(1);
        QVERIFY(backedUp.wait());
        QVERIFY(backedUp.wait());
    }

    void backsUpNothingOfADocumentThatIsNotModified() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, never);
        QSignalSpy backedUp(recovery, &DocumentRecovery::backedUp);
        recovery->backUpNow();
        store_->wait();
        QCoreApplication::processEvents();
        QCOMPARE(backedUp.count(), 0);
        QVERIFY(!QFile::exists(place_->filePath(QStringLiteral("recovery"))));
    }

    void writesEachStateOnce() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, never);
        QSignalSpy backedUp(recovery, &DocumentRecovery::backedUp);
        add(*controller_, "a");
        recovery->backUpNow();
        recovery->backUpNow();
        QVERIFY(backedUp.wait());
        recovery->backUpNow();
        store_->wait();
        QCoreApplication::processEvents();
        QCOMPARE(backedUp.count(), 1);
        add(*controller_, "b");
        recovery->backUpNow();
        QVERIFY(backedUp.wait());
        QCOMPARE(keptFiles().size(), 2);
    }

    void backsUpWhatWasEditedWhileItWrote() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, soon);
        QSignalSpy backedUp(recovery, &DocumentRecovery::backedUp);
        add(*controller_, "a");
        recovery->backUpNow();
        add(*controller_, "b");
        QVERIFY(backedUp.wait());
        QTRY_COMPARE(backedUp.count(), 2);
        QCOMPARE(backedUp.at(1).at(0).value<UndoManager::State>(),
                 controller_->undoManager().state());
    }

    void forgetsADocumentThatIsUndoneToWhatWasSaved() {
        keepOne();
        controller_->undoManager().undo();
        store_->wait();
        QCOMPARE(keptFiles(), QStringList());
        // And knows it again when that is undone.
        QSignalSpy backedUp(controller_->findChild<DocumentRecovery*>(),
                            &DocumentRecovery::backedUp);
        controller_->undoManager().redo();
        controller_->findChild<DocumentRecovery*>()->backUpNow();
        QVERIFY(backedUp.wait());
        QCOMPARE(keptFiles().size(), 2);
    }

    void forgetsWhatIsOlderThanWhatWasSaved() {
        keepOne();
        QSignalSpy saved(controller_.get(), &DocumentController::saved);
        controller_->save(place_->filePath(QStringLiteral("a.plist")));
        add(*controller_, "b");
        QVERIFY(saved.wait());
        QVERIFY(controller_->isModified());
        controller_->undoManager().undo();
        QVERIFY(!controller_->isModified());
        store_->wait();
        QCOMPARE(keptFiles(), QStringList());
    }

    void backsUpADocumentThoughTheFolderWasDeleted() {
        keepOne();
        QVERIFY(QDir(place_->filePath(QStringLiteral("recovery"))).removeRecursively());
        auto* recovery = controller_->findChild<DocumentRecovery*>();
        QSignalSpy backedUp(recovery, &DocumentRecovery::backedUp);
        add(*controller_, "b");
        recovery->backUpNow();
        QVERIFY(backedUp.wait());
        QCOMPARE(keptFiles().size(), 2);
    }

    void forgetsADocumentThatIsSaved() {
        keepOne();
        QSignalSpy saved(controller_.get(), &DocumentController::saved);
        controller_->save(place_->filePath(QStringLiteral("a.plist")));
        QVERIFY(saved.wait());
        store_->wait();
        QCOMPARE(keptFiles(), QStringList());
    }

    void backsUpWhatWasEditedWhileItWasSavedWithItsNewFile() {
        keepOne();
        QSignalSpy saved(controller_.get(), &DocumentController::saved);
        const QString path = place_->filePath(QStringLiteral("a.plist"));
        controller_->save(path);
        add(*controller_, "b");
        auto* recovery = controller_->findChild<DocumentRecovery*>();
        QSignalSpy backedUp(recovery, &DocumentRecovery::backedUp);
        recovery->backUpNow();
        QVERIFY(saved.wait());
        QTRY_VERIFY(!backedUp.isEmpty());
        recovery->backUpNow();
        store_->wait();
        const RecoveryRecord record = onlyRecord();
        QCOMPARE(record.file, QFile::encodeName(path));
        QCOMPARE(record.baseDigest, controller_->fileState().base->hex());
    }

    void forgetsADocumentThatIsClosed() {
        keepOne();
        controller_.reset();
        store_->wait();
        QCOMPARE(keptFiles(), QStringList());
    }

    void leavesNothingAtTheEnd() {
        keepOne();
        controller_.reset();
        store_.reset();
        QVERIFY(QDir(place_->filePath(QStringLiteral("recovery"))).isEmpty());
    }

    void leavesWhatIsSealed() {
        keepOne();
        store_->seal();
        controller_.reset();
        store_.reset();
        QCOMPARE(keptFiles().size(), 2);
    }

    void sealingWaitsForTheLastWriting() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, never);
        add(*controller_, "a");
        recovery->backUpNow();
        store_->seal();
        QCOMPARE(keptFiles().size(), 2);
    }

    void remembersWhatTheDocumentIs() {
        const QString path = place_->filePath(QStringLiteral("a.plist"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{ a = b; }");
        file.close();
        QSignalSpy opened(controller_.get(), &DocumentController::opened);
        controller_->open(path);
        QVERIFY(opened.wait());
        const PlistEditor editor(controller_->document(), &controller_->undoManager());
        editor.changeFormat(PlistFormat::binary);
        keepOne();
        const RecoveryRecord record = onlyRecord();
        QCOMPARE(record.file, QFile::encodeName(path));
        QCOMPARE(record.title, QStringLiteral("a.plist"));
        QCOMPARE(record.baseDigest, controller_->fileState().base->hex());
        QCOMPARE(record.format, PlistFormat::binary);
        QVERIFY(record.wasReadOnlyFormat);
        QVERIFY(record.backedUpAt.isValid());
        QCOMPARE(record.attempts, 0);
    }

    void saysWhyItCannotBackUpADocument() {
        QFile inTheWay(place_->filePath(QStringLiteral("recovery")));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        auto* recovery = new DocumentRecovery(*controller_, *store_, soon);
        QSignalSpy failed(recovery, &DocumentRecovery::backupFailed);
        add(*controller_, "a");
        QVERIFY(failed.wait());
        QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("Not a directory"));
    }

    void triesAgainWhenTheDiskTakesItAgain() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, never);
        QSignalSpy failed(recovery, &DocumentRecovery::backupFailed);
        QSignalSpy backedUp(recovery, &DocumentRecovery::backedUp);
        add(*controller_, "a");
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        ::getrlimit(RLIMIT_FSIZE, &before);
        const rlimit nothing{1, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &nothing);
        recovery->backUpNow();
        const bool hasFailed = failed.wait();
        ::setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY(hasFailed);
        QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("File too large"));
        recovery->backUpNow();
        QVERIFY(backedUp.wait());
        QCOMPARE(keptFiles().size(), 2);
    }

private:
    /// Edits the document and has it backedUp.
    void keepOne() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, never);
        QSignalSpy backedUp(recovery, &DocumentRecovery::backedUp);
        add(*controller_, "a");
        recovery->backUpNow();
        QVERIFY(backedUp.wait());
        QCOMPARE(keptFiles().size(), 2);
    }

    /// The record and the content of each document that is backedUp.
    QStringList keptFiles() const {
        QStringList files;
        const QDir place(place_->filePath(QStringLiteral("recovery")));
        for (const QString& folder : place.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const QDir inside(place.filePath(folder));
            for (const QString& name : inside.entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
                if (name != QStringLiteral("lock")) {
                    files.append(inside.filePath(name));
                }
            }
        }
        return files;
    }

    RecoveryRecord onlyRecord() const {
        QFile file(keptFiles().value(0));
        return file.open(QIODevice::ReadOnly)
                   ? RecoveryRecord::fromJson(file.readAll()).value_or(RecoveryRecord())
                   : RecoveryRecord();
    }

    std::optional<QTemporaryDir> place_;
    std::unique_ptr<RecoveryStore> store_;
    std::unique_ptr<DocumentController> controller_;
};

const RegisteredTest<DocumentRecoveryTest> registered;
#include "DocumentRecoveryTest.moc"
