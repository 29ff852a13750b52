#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <memory>
#include <optional>
#include <vector>

#include "app/desktop/document/DocumentController.h"
#include "app/desktop/document/DocumentRecovery.h"
#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/recovery/RecoverableDocument.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/tree/PlistNode.h"
#include "tests/support/TestProgram.h"

class RecoverableDocumentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder_.emplace(); }

    void findsNothingWhereNothingWasLost() {
        QVERIFY(RecoverableDocument::find(place()).empty());
        QVERIFY(QDir().mkpath(place()));
        QVERIFY(RecoverableDocument::find(place()).empty());
    }

    void findsNothingOfProgramsThatRun() {
        RecoveryFolder running(pathOf("running"));
        QCOMPARE(running.create(), 0);
        keep(running, "a", {});
        QVERIFY(RecoverableDocument::find(place()).empty());
    }

    void isFoundByOneProgramOnly() {
        lose("one", "a", {});
        const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
        QCOMPARE(found.size(), std::size_t{1});
        QVERIFY(RecoverableDocument::find(place()).empty());
    }

    void findsAllDocumentsOfAllProgramsNewestFirst() {
        lose("one", "old", recordAt(1));
        lose("one", "new", recordAt(3));
        lose("two", "other", recordAt(2));
        const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
        QCOMPARE(found.size(), std::size_t{3});
        QCOMPARE(found.at(0).record().title, QStringLiteral("title 3"));
        QCOMPARE(found.at(1).record().title, QStringLiteral("title 2"));
        QCOMPARE(found.at(2).record().title, QStringLiteral("title 1"));
    }

    void isFoundAgainUntilItIsRemoved() {
        lose("one", "a", recordAt(1));
        lose("one", "b", recordAt(2));
        {
            const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
            QCOMPARE(found.size(), std::size_t{2});
            found.front().remove();
        }
        {
            const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
            QCOMPARE(found.size(), std::size_t{1});
            QCOMPARE(found.front().record().title, QStringLiteral("title 1"));
            found.front().remove();
        }
        QVERIFY(QDir(place()).isEmpty());
    }

    void countsAttemptsOnTheDisk() {
        lose("one", "a", recordAt(1));
        for (int attempts = 0; attempts < RecoverableDocument::attemptLimit; ++attempts) {
            std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
            QCOMPARE(found.size(), std::size_t{1});
            QCOMPARE(found.front().record().attempts, attempts);
            QVERIFY(!found.front().hasFailedTooOften());
            found.front().beginAttempt();
        }
        QVERIFY(RecoverableDocument::find(place()).front().hasFailedTooOften());
    }

    void anAttemptThatEndsDoesNotCount() {
        lose("one", "a", recordAt(1));
        RecoverableDocument::find(place()).front().beginAttempt();
        std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
        QCOMPARE(found.front().record().attempts, 1);
        found.front().beginAttempt();
        found.front().endAttempt();
        found.clear();
        QCOMPARE(RecoverableDocument::find(place()).front().record().attempts, 1);
    }

    void anUnreadableRecordStaysAsItIs() {
        lose("one", "a", recordAt(1));
        const QString record = place() + QStringLiteral("/one/a.json");
        write(record, "no record");
        RecoverableDocument::find(place()).front().beginAttempt();
        QFile file(record);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("no record"));
    }

    void tellsWhetherItsFileHasChanged() {
        const QString path = folder_->filePath(QStringLiteral("base.plist"));
        write(path, "before");
        RecoveryRecord record = recordAt(1);
        record.file = QFile::encodeName(path);
        record.baseDigest = ContentDigest::of(bytesOf("before")).hex();
        lose("one", "a", record);
        {
            const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
            QVERIFY(!found.front().hasFileChanged());
            QVERIFY(found.front().hasFile());
            QCOMPARE(found.front().filePath(), path);
        }
        write(path, "after");
        QVERIFY(RecoverableDocument::find(place()).front().hasFileChanged());
        QVERIFY(!RecoverableDocument::find(place()).front().hasFile());
        QVERIFY(QFile::remove(path));
        QVERIFY(RecoverableDocument::find(place()).front().hasFileChanged());
    }

    void ofADocumentThatWasNeverSavedNoFileHasChanged() {
        lose("one", "a", recordAt(1));
        const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
        QVERIFY(!found.front().hasFileChanged());
        QVERIFY(!found.front().hasFile());
    }

    void isFoundWithoutAReadableRecord() {
        lose("one", "a", recordAt(1));
        lose("two", "b", recordAt(1));
        write(place() + QStringLiteral("/one/a.json"), "no record");
        QVERIFY(QFile::remove(place() + QStringLiteral("/two/b.json")));
        const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
        QCOMPARE(found.size(), std::size_t{2});
        for (const RecoverableDocument& document : found) {
            QCOMPARE(document.record().title, QStringLiteral("Unknown Document"));
            QVERIFY(QFile::exists(document.contentPath()));
        }
    }

    void aRecordWithoutContentIsDeleted() {
        lose("one", "a", recordAt(1));
        QVERIFY(QFile::remove(place() + QStringLiteral("/one/a.plist")));
        QVERIFY(RecoverableDocument::find(place()).empty());
        QVERIFY(QDir(place()).isEmpty());
    }

    void otherFilesAreLeftAlone() {
        lose("one", "a", recordAt(1));
        QVERIFY(QFile::rename(place() + QStringLiteral("/one/a.plist"),
                              place() + QStringLiteral("/one/a.copy")));
        QVERIFY(RecoverableDocument::find(place()).empty());
        QVERIFY(QFile::exists(place() + QStringLiteral("/one/a.copy")));
    }

    void comesBackWithItsFile() {
        const QString path = folder_->filePath(QStringLiteral("base.plist"));
        write(path, "{ a = b; }");
        loseEdited(path);
        const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
        DocumentController controller(QStringLiteral("Untitled"));
        recover(controller, found.front());
        QCOMPARE(controller.path(), path);
        QCOMPARE(controller.name(), QStringLiteral("base.plist"));
        QCOMPARE(controller.fileState().base, ContentDigest::of(bytesOf("{ a = b; }")));
        QVERIFY(controller.isModified());
        QVERIFY(controller.document().wasReadOnlyFormat());
        QCOMPARE(controller.document().root().childCount(), std::size_t{2});
        QVERIFY(QFile::exists(found.front().contentPath()));
    }

    void comesBackAsACopyWhenItsFileHasChanged() {
        const QString path = folder_->filePath(QStringLiteral("base.plist"));
        write(path, "{ a = b; }");
        loseEdited(path);
        write(path, "{ c = d; }");
        const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
        DocumentController controller(QStringLiteral("Untitled"));
        recover(controller, found.front());
        QCOMPARE(controller.path(), QString());
        QCOMPARE(controller.name(), QStringLiteral("base (recovered)"));
        QVERIFY(!controller.fileState().base);
        QVERIFY(controller.isModified());
        QCOMPARE(controller.document().root().childCount(), std::size_t{2});
    }

    void contentThatCannotBeReadIsKept() {
        lose("one", "a", recordAt(1));
        write(place() + QStringLiteral("/one/a.plist"), "bplist00 and no more");
        const std::vector<RecoverableDocument> found = RecoverableDocument::find(place());
        DocumentController controller(QStringLiteral("Untitled"));
        QSignalSpy failed(&controller, &DocumentController::openFailed);
        controller.recover(found.front());
        QVERIFY(failed.wait());
        QVERIFY(controller.isPristine());
        QVERIFY(QFile::exists(found.front().contentPath()));
    }

private:
    QString place() const { return folder_->filePath(QStringLiteral("recovery")); }

    QByteArray pathOf(const char* name) const { return QFile::encodeName(place()) + '/' + name; }

    static RecoveryRecord recordAt(int time) {
        RecoveryRecord record;
        record.title = QStringLiteral("title %1").arg(time);
        record.backedUpAt = QDateTime::fromMSecsSinceEpoch(1'700'000'000'000 + time, Qt::UTC);
        return record;
    }

    static std::span<const std::uint8_t> bytesOf(std::string_view text) {
        return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
    }

    static void keep(const RecoveryFolder& folder, const QByteArray& name,
                     const RecoveryRecord& record) {
        QCOMPARE(folder.write(name + ".plist", QByteArray("{ a = b; }")), 0);
        QCOMPARE(folder.write(name + ".json", record.toJson()), 0);
    }

    void lose(const char* program, const char* name, const RecoveryRecord& record) const {
        RecoveryFolder folder(pathOf(program));
        QVERIFY(folder.create() == 0 || folder.claim() == 0);
        keep(folder, name, record);
    }

    /// Opens a file and edits it in a program that ends without warning.
    void loseEdited(const QString& path) const {
        RecoveryStore store(place());
        DocumentController controller(QStringLiteral("Untitled"));
        QSignalSpy opened(&controller, &DocumentController::opened);
        controller.open(path);
        QVERIFY(opened.wait());
        auto* recovery = new DocumentRecovery(controller, store);
        const PlistEditor editor(controller.document(), &controller.undoManager());
        const PlistNodePtr item = PlistNode::create(PlistString("new"), PlistValue());
        editor.add({&item, 1}, controller.document().root(), 0);
        recovery->backUpNow();
        store.seal();
    }

    static void recover(DocumentController& controller, const RecoverableDocument& lost) {
        QSignalSpy opened(&controller, &DocumentController::opened);
        controller.recover(lost);
        QVERIFY(opened.wait());
    }

    static void write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    std::optional<QTemporaryDir> folder_;
};

const RegisteredTest<RecoverableDocumentTest> registered;
#include "RecoverableDocumentTest.moc"
