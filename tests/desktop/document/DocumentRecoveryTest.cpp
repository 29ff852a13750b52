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
        QCOMPARE(DocumentRecovery::restPerWriting, 20);
    }

    void keepsADocumentSoonAfterAnEdit() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, soon);
        QSignalSpy kept(recovery, &DocumentRecovery::kept);
        add(*controller_, "a");
        QVERIFY(kept.wait());
        QCOMPARE(kept.at(0).at(0).value<UndoManager::State>(), controller_->undoManager().state());
        const QStringList files = keptFiles();
        QCOMPARE(files.size(), 2);
        const PlistFile content = PlistDocumentReader::read(files.at(1));
        QVERIFY(content.root == controller_->document().snapshot().root);
    }

    void keepsADocumentWhileItIsEditedWithoutAPause() {
        // An edit comes long before the pause that the other limit waits for.
        auto* recovery =
            new DocumentRecovery(*controller_, *store_, {milliseconds(60'000), milliseconds(20)});
        QSignalSpy kept(recovery, &DocumentRecovery::kept);
        QTimer edits;
        connect(&edits, &QTimer::timeout, this, [this] { add(*controller_, "a"); });
        edits.start(1);
        QVERIFY(kept.wait());
        QVERIFY(kept.wait());
    }

    void keepsNothingOfADocumentThatIsNotModified() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, never);
        QSignalSpy kept(recovery, &DocumentRecovery::kept);
        recovery->keepNow();
        store_->wait();
        QCoreApplication::processEvents();
        QCOMPARE(kept.count(), 0);
        QVERIFY(!QFile::exists(place_->filePath(QStringLiteral("recovery"))));
    }

    void writesEachStateOnce() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, never);
        QSignalSpy kept(recovery, &DocumentRecovery::kept);
        add(*controller_, "a");
        recovery->keepNow();
        recovery->keepNow();
        QVERIFY(kept.wait());
        recovery->keepNow();
        store_->wait();
        QCoreApplication::processEvents();
        QCOMPARE(kept.count(), 1);
        add(*controller_, "b");
        recovery->keepNow();
        QVERIFY(kept.wait());
        QCOMPARE(keptFiles().size(), 2);
    }

    void keepsWhatWasEditedWhileItWrote() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, soon);
        QSignalSpy kept(recovery, &DocumentRecovery::kept);
        add(*controller_, "a");
        recovery->keepNow();
        add(*controller_, "b");
        QVERIFY(kept.wait());
        QTRY_COMPARE(kept.count(), 2);
        QCOMPARE(kept.at(1).at(0).value<UndoManager::State>(), controller_->undoManager().state());
    }

    void forgetsADocumentThatIsUndoneToWhatWasSaved() {
        keepOne();
        controller_->undoManager().undo();
        store_->wait();
        QCOMPARE(keptFiles(), QStringList());
        // And knows it again when that is undone.
        QSignalSpy kept(controller_->findChild<DocumentRecovery*>(), &DocumentRecovery::kept);
        controller_->undoManager().redo();
        controller_->findChild<DocumentRecovery*>()->keepNow();
        QVERIFY(kept.wait());
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

    void keepsADocumentThoughTheFolderWasDeleted() {
        keepOne();
        QVERIFY(QDir(place_->filePath(QStringLiteral("recovery"))).removeRecursively());
        auto* recovery = controller_->findChild<DocumentRecovery*>();
        QSignalSpy kept(recovery, &DocumentRecovery::kept);
        add(*controller_, "b");
        recovery->keepNow();
        QVERIFY(kept.wait());
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

    void keepsWhatWasEditedWhileItWasSavedWithItsNewFile() {
        keepOne();
        QSignalSpy saved(controller_.get(), &DocumentController::saved);
        const QString path = place_->filePath(QStringLiteral("a.plist"));
        controller_->save(path);
        add(*controller_, "b");
        auto* recovery = controller_->findChild<DocumentRecovery*>();
        QSignalSpy kept(recovery, &DocumentRecovery::kept);
        recovery->keepNow();
        QVERIFY(saved.wait());
        QTRY_VERIFY(!kept.isEmpty());
        recovery->keepNow();
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
        recovery->keepNow();
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
        QVERIFY(record.keptAt.isValid());
        QCOMPARE(record.attempts, 0);
    }

    void saysWhyItCannotKeepADocument() {
        QFile inTheWay(place_->filePath(QStringLiteral("recovery")));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        auto* recovery = new DocumentRecovery(*controller_, *store_, soon);
        QSignalSpy failed(recovery, &DocumentRecovery::keepingFailed);
        add(*controller_, "a");
        QVERIFY(failed.wait());
        QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("Not a directory"));
    }

    void triesAgainWhenTheDiskTakesItAgain() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, never);
        QSignalSpy failed(recovery, &DocumentRecovery::keepingFailed);
        QSignalSpy kept(recovery, &DocumentRecovery::kept);
        add(*controller_, "a");
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        ::getrlimit(RLIMIT_FSIZE, &before);
        const rlimit nothing{1, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &nothing);
        recovery->keepNow();
        const bool hasFailed = failed.wait();
        ::setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY(hasFailed);
        QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("File too large"));
        recovery->keepNow();
        QVERIFY(kept.wait());
        QCOMPARE(keptFiles().size(), 2);
    }

private:
    /// Edits the document and has it kept.
    void keepOne() {
        auto* recovery = new DocumentRecovery(*controller_, *store_, never);
        QSignalSpy kept(recovery, &DocumentRecovery::kept);
        add(*controller_, "a");
        recovery->keepNow();
        QVERIFY(kept.wait());
        QCOMPARE(keptFiles().size(), 2);
    }

    /// The record and the content of each document that is kept.
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
