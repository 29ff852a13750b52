#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <memory>

#include "app/desktop/document/DocumentController.h"
#include "app/desktop/document/ExternalChanges.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/tree/PlistNode.h"
#include "tests/support/TestProgram.h"

namespace {

using Trouble = ExternalChanges::Trouble;

constexpr std::chrono::milliseconds shortRest{20};

/// A list of so many words.
QByteArray words(int count) {
    return "(" + QByteArray("word,").repeated(count) + ")";
}

}  // namespace

class ExternalChangesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
        write(words(1));
        controller_ = std::make_unique<DocumentController>(QStringLiteral("Untitled"));
        follower_ = std::make_unique<ExternalChanges>(*controller_, shortRest);
        QSignalSpy opened(controller_.get(), &DocumentController::opened);
        controller_->open(path());
        QVERIFY(opened.wait());
    }

    void cleanup() {
        follower_.reset();
        controller_.reset();
    }

    // --- Nothing of the user's ---

    void reloadsByItself_data() {
        QTest::addColumn<bool>("isReplaced");
        QTest::newRow("replaced") << true;
        QTest::newRow("in place") << false;
    }

    void reloadsByItself() {
        QFETCH(bool, isReplaced);
        for (const int count : {2, 3, 4}) {
            const qint64 revision = controller_->document().revision();
            isReplaced ? replace(words(count)) : write(words(count));
            QTRY_COMPARE(items(), count);
            QCOMPARE(controller_->document().revision(), revision + 1);
            QVERIFY(!controller_->isModified());
            QCOMPARE(follower_->trouble(), Trouble::none);
        }
        controller_->undoManager().undo();
        QCOMPARE(items(), 3);
        QVERIFY(controller_->isModified());
    }

    void doesNotReloadWhatItSaved() {
        const QSignalSpy reloaded(controller_.get(), &DocumentController::reloaded);
        edit();
        save();
        // What is heard of the save is heard before what comes after it.
        write(words(5));
        QTRY_COMPARE(items(), 5);
        QCOMPARE(reloaded.count(), 1);
        QCOMPARE(follower_->trouble(), Trouble::none);
    }

    /// A save can fail when the content is in place.
    void knowsWhatAFailedSaveHasWritten() {
        edit();
        save();
        const QByteArray ours = content();
        write(words(1));
        QTRY_COMPARE(controller_->document().format(), PlistFormat::xml);
        edit();
        write(words(2));
        QSignalSpy failed(controller_.get(), &DocumentController::saveFailed);
        controller_->save();
        QVERIFY(failed.wait());
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        write(ours);
        QTRY_COMPARE(follower_->trouble(), Trouble::none);
        QVERIFY(controller_->isModified());
        controller_->undoManager().undo();
        QVERIFY(controller_->isModified());
        save();
        QVERIFY(!controller_->isModified());
    }

    // --- Edits on both sides ---

    void asksWhereTheUserHasEdited() {
        edit();
        write(words(2));
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        QCOMPARE(items(), 1);
        QVERIFY(controller_->isModified());
        controller_->reload();
        QTRY_COMPARE(items(), 2);
        QCOMPARE(follower_->trouble(), Trouble::none);
        QVERIFY(!controller_->isModified());
    }

    void asksWhileTheUserTypes() {
        follower_->setInputCheck([] { return true; });
        write(words(2));
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        QCOMPARE(items(), 1);
    }

    void asksWhereAnEditCameFirst() {
        connect(controller_.get(), &DocumentController::activityChanged, this, [this] {
            if (controller_->activity() == DocumentController::Activity::reading) {
                edit();
            }
        });
        write(words(2));
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        QCOMPARE(items(), 1);
    }

    void doesNotAskWhenTheChangeIsTakenBack() {
        edit();
        write(words(2));
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        write(words(1));
        QTRY_COMPARE(follower_->trouble(), Trouble::none);
        QVERIFY(controller_->isModified());
    }

    void keepsMine() {
        edit();
        write(words(2));
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        follower_->keepMine();
        QCOMPARE(follower_->trouble(), Trouble::none);
        save();
        QCOMPARE(content().left(5), QByteArray("bplis"));
        QVERIFY(!controller_->isModified());
    }

    /// In no state is the document what the file holds.
    void isModifiedAfterKeepingMine() {
        edit();
        write(words(2));
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        follower_->keepMine();
        controller_->undoManager().undo();
        QVERIFY(controller_->isModified());
        write(words(1));
        QTRY_VERIFY(!controller_->isModified());
    }

    void asksAgainAboutAnotherChange() {
        edit();
        write(words(2));
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        follower_->keepMine();
        controller_->undoManager().undo();
        write(words(3));
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        QCOMPARE(items(), 1);
        QSignalSpy failed(controller_.get(), &DocumentController::saveFailed);
        controller_->save();
        QVERIFY(failed.wait());
        QCOMPARE(content(), words(3));
    }

    // --- What cannot be read ---

    void keepsTheDocumentWhereTheFileIsNone() {
        write("<plist><dict></array></plist>");
        QTRY_COMPARE(follower_->trouble(), Trouble::unreadable);
        QVERIFY2(follower_->reason().startsWith(QStringLiteral("Line 1, column 14: ")),
                 qPrintable(follower_->reason()));
        QCOMPARE(items(), 1);
        QVERIFY(!controller_->undoManager().canUndo());
        QVERIFY2(controller_->isModified(), "the content is nowhere else");
        // The other program corrects it.
        write(words(2));
        QTRY_COMPARE(items(), 2);
        QCOMPARE(follower_->trouble(), Trouble::none);
        QCOMPARE(follower_->reason(), QString());
        QVERIFY(!controller_->isModified());
    }

    void isUnmodifiedWhenWhatCouldBeReadIsBack() {
        const QSignalSpy failed(controller_.get(), &DocumentController::reloadFailed);
        for (const int count : {1, 2}) {
            write(QByteArray("<half ").repeated(count));
            QTRY_COMPARE(failed.count(), count);
            QCOMPARE(follower_->trouble(), Trouble::unreadable);
            QVERIFY(controller_->isModified());
        }
        write(words(1));
        QTRY_COMPARE(follower_->trouble(), Trouble::none);
        QVERIFY(!controller_->isModified());
    }

    void keepsMineInsteadOfWhatIsNone() {
        write("<plist>");
        QTRY_COMPARE(follower_->trouble(), Trouble::unreadable);
        follower_->keepMine();
        QVERIFY(controller_->isModified());
        save();
        QCOMPARE(content().left(5), QByteArray("<?xml"));
    }

    // --- Deleted files ---

    void isModifiedWithoutItsFile() {
        QVERIFY(QFile::remove(path()));
        QTRY_COMPARE(follower_->trouble(), Trouble::deleted);
        QVERIFY(controller_->isModified());
        write(words(1));
        QTRY_COMPARE(follower_->trouble(), Trouble::none);
        QVERIFY(!controller_->isModified());
    }

    void makesADeletedFileAgain() {
        QVERIFY(QFile::remove(path()));
        QTRY_COMPARE(follower_->trouble(), Trouble::deleted);
        save();
        QCOMPARE(follower_->trouble(), Trouble::none);
        QVERIFY(!controller_->isModified());
        QVERIFY(QFile::exists(path()));
        // And follows that one.
        write(words(2));
        QTRY_COMPARE(items(), 2);
    }

    void takesOverWhatComesInPlaceOfADeletedFile() {
        QVERIFY(QFile::remove(path()));
        QTRY_COMPARE(follower_->trouble(), Trouble::deleted);
        write(words(2));
        QTRY_COMPARE(items(), 2);
        QCOMPARE(follower_->trouble(), Trouble::none);
        QVERIFY(!controller_->isModified());
    }

    void asksAboutWhatComesInPlaceOfADeletedFile() {
        edit();
        QVERIFY(QFile::remove(path()));
        QTRY_COMPARE(follower_->trouble(), Trouble::deleted);
        write(words(2));
        QTRY_COMPARE(follower_->trouble(), Trouble::changed);
        QVERIFY(controller_->isModified());
    }

private:
    QString path() const { return folder_->filePath(QStringLiteral("a.plist")); }

    void write(const QByteArray& bytes) const { writeTo(path(), bytes); }

    void replace(const QByteArray& bytes) const {
        const QString fresh = folder_->filePath(QStringLiteral("fresh"));
        writeTo(fresh, bytes);
        QCOMPARE(std::rename(QFile::encodeName(fresh).constData(),
                             QFile::encodeName(path()).constData()),
                 0);
    }

    static void writeTo(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    QByteArray content() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    qint64 items() const { return controller_->document().root().childCount(); }

    void edit() {
        const PlistEditor editor(controller_->document(), &controller_->undoManager());
        editor.changeFormat(PlistFormat::binary);
    }

    void save() {
        QSignalSpy saved(controller_.get(), &DocumentController::saved);
        controller_->save();
        QVERIFY(saved.wait());
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<DocumentController> controller_;
    std::unique_ptr<ExternalChanges> follower_;
};

const RegisteredTest<ExternalChangesTest> registered;
#include "ExternalChangesTest.moc"
