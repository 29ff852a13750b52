#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>

#include "app/desktop/files/BackgroundTask.h"
#include "app/desktop/files/StateFolder.h"
#include "app/desktop/saving/SafetyCopy.h"
#include "app/ui/app/TabuletApp.h"
#include "app/ui/dialogs/RecoveryDialog.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/notices/NoticeStrip.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

/// What the program does about what it left behind when it ended without warning.
class CrashRecoveryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        qputenv("XDG_STATE_HOME", folder_->path().toUtf8());
        app_ = std::make_unique<TabuletApp>();
    }

    void cleanup() { app_.reset(); }

    void asksNothingWhereNothingWasLost() {
        app_->start({});
        QSignalSpy shown(&window(0), &DocumentWindow::documentShown);
        QVERIFY(shown.wait());
        // The search, which begins now, is done when this is.
        BackgroundTask::threads().waitForDone();
        QCoreApplication::processEvents();
        QVERIFY(window(0).findChild<QDialog*>() == nullptr);
    }

    void quittingWithoutAskingLosesNothing() {
        app_->start({});
        window(0).view().actions().changeFormat(PlistFormat::binary);
        endAndStartAgain({});
        QTRY_VERIFY(dialog() != nullptr);
        QCOMPARE(dialog()->parentWidget(), &window(0));
        QTest::keyClick(dialog(), Qt::Key_Return);
        QTRY_COMPARE(window(0).windowTitle(), QStringLiteral("Untitled (recovered)[*]"));
        QVERIFY(window(0).isWindowModified());
        QCOMPARE(window(0).controller().document().format(), PlistFormat::binary);
        QCOMPARE(app_->windows().size(), 1);
    }

    void theEndOfTheSessionLosesNothing() {
        app_->start({});
        window(0).view().actions().changeFormat(PlistFormat::binary);
        QTimer::singleShot(0, [] {
            QEvent end(QEvent::Quit);
            QCoreApplication::sendEvent(qApp, &end);
        });
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(window(0).findChild<QMessageBox*>() == nullptr);
        app_.reset();
        startAgain({});
        QTRY_VERIFY(dialog() != nullptr);
    }

    void aFieldThatIsOpenIsKeptToo() {
        const QString path = sample("a.plist");
        app_->start({path});
        QTRY_COMPARE(window(0).view().table().model()->rowCount(), 2);
        window(0).activateWindow();
        QTRY_VERIFY(window(0).isActiveWindow());
        PlistTable& table = window(0).view().table();
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_Down);
        QTest::keyClick(&table, Qt::Key_Down);
        QTest::keyClick(&table, Qt::Key_Return);
        QTRY_VERIFY(table.findChild<QLineEdit*>() != nullptr);
        table.findChild<QLineEdit*>()->setText(QStringLiteral("typed"));
        endAndStartAgain({});
        QTRY_VERIFY(dialog() != nullptr);
        QTest::keyClick(dialog(), Qt::Key_Return);
        QTRY_COMPARE(window(0).controller().document().root().children().size(), std::size_t{1});
        QCOMPARE(window(0).controller().document().root().children()[0]->key().view(), "typed");
    }

    void whatWasLostIsKeptUntilItHasBeenKeptAnew() {
        app_->start({});
        window(0).view().actions().changeFormat(PlistFormat::binary);
        endAndStartAgain({});
        QTRY_VERIFY(dialog() != nullptr);
        const QStringList before = keptDocuments();
        QCOMPARE(before.size(), 1);
        QTest::keyClick(dialog(), Qt::Key_Return);
        QTRY_VERIFY(keptDocuments().size() == 1 && keptDocuments() != before);
        // And then until it is discarded.
        window(0).close();
        QTRY_VERIFY(window(0).findChild<QMessageBox*>() != nullptr);
        window(0).findChild<QMessageBox*>()->button(QMessageBox::Discard)->click();
        QTRY_VERIFY(app_->windows().isEmpty());
        app_.reset();
        QCOMPARE(keptDocuments(), QStringList());
        QVERIFY(QDir(StateFolder::recoveryPath()).isEmpty());
    }

    void comesBackInTheWindowOfItsFile() {
        const QString path = sample("a.plist");
        app_->start({path});
        QTRY_COMPARE(window(0).controller().path(), path);
        window(0).view().actions().changeFormat(PlistFormat::binary);
        endAndStartAgain({path});
        QTRY_COMPARE(window(0).controller().path(), path);
        QTRY_VERIFY(dialog() != nullptr);
        QTest::keyClick(dialog(), Qt::Key_Return);
        QTRY_COMPARE(window(0).controller().document().format(), PlistFormat::binary);
        QVERIFY(window(0).isWindowModified());
        QCOMPARE(app_->windows().size(), 1);
        QSignalSpy saved(&window(0).controller(), &DocumentController::saved);
        window(0).save();
        QVERIFY(saved.wait());
        QVERIFY(Samples::readFile(path).startsWith("bplist00"));
    }

    void theNextLoginShowsEachDocumentOnce() {
        const QStringList paths = {sample("a.plist"), sample("b.plist")};
        app_->start(paths);
        QTRY_COMPARE(window(0).controller().path(), paths.at(0));
        QTRY_COMPARE(window(1).controller().path(), paths.at(1));
        app_->newDocument();
        window(1).view().actions().changeFormat(PlistFormat::binary);
        QCOMPARE(app_->openPaths(), paths);
        endAndStartAgain(app_->openPaths());
        QTRY_VERIFY(dialog() != nullptr);
        QTest::keyClick(dialog(), Qt::Key_Return);
        QTRY_VERIFY(window(1).isWindowModified());
        QCOMPARE(window(1).controller().document().format(), PlistFormat::binary);
        QVERIFY(!window(0).isWindowModified());
        QCOMPARE(app_->openPaths(), paths);
        QCOMPARE(app_->windows().size(), 2);
    }

    void comesBackInTheWindowThatIsReadingItsFile() {
        const QString path = sample("a.plist");
        app_->start({path});
        QTRY_COMPARE(window(0).controller().path(), path);
        window(0).view().actions().changeFormat(PlistFormat::binary);
        endAndStartAgain({});
        QTRY_VERIFY(dialog() != nullptr);
        app_->open({path});
        QCOMPARE(window(0).controller().activity(), DocumentController::Activity::reading);
        QCOMPARE(app_->openPaths(), QStringList(path));
        QTest::keyClick(dialog(), Qt::Key_Return);
        QTRY_VERIFY(window(0).isWindowModified());
        QCOMPARE(window(0).controller().document().format(), PlistFormat::binary);
        QCOMPARE(app_->windows().size(), 1);
    }

    void saysWhereContentLiesThatCannotBeRead() {
        app_->start({});
        window(0).view().actions().changeFormat(PlistFormat::binary);
        end();
        const QString kept = keptDocuments().first();
        Samples::writeFile(kept, "bplist00");
        startAgain({});
        QTRY_VERIFY(dialog() != nullptr);
        QTest::keyClick(dialog(), Qt::Key_Return);
        QTRY_VERIFY(window(0).findChild<QMessageBox*>() != nullptr);
        const auto* box = window(0).findChild<QMessageBox*>();
        QCOMPARE(box->text(), QStringLiteral("“Untitled” could not be recovered."));
        QCOMPARE(box->informativeText(),
                 QStringLiteral("The file ends unexpectedly.\n\nThe backup is in “%1”.").arg(kept));
        QVERIFY(QFile::exists(kept));
        // That was no crash: it is not left alone the next time.
        app_.reset();
        for (int i = 0; i < RecoverableDocument::attemptLimit; ++i) {
            const std::vector<RecoverableDocument> found =
                RecoverableDocument::find(StateFolder::recoveryPath());
            QCOMPARE(found.size(), std::size_t{1});
            QCOMPARE(found.front().record().attempts, 0);
        }
    }

    void offersTheOldContentOfAnInterruptedSave() {
        interruptSave();
        app_->start({});
        QTRY_VERIFY(box() != nullptr);
        QCOMPARE(box()->text(), QStringLiteral("Saving “a.plist” was interrupted."));
        QCOMPARE(box()->informativeText(),
                 QStringLiteral("The file may contain only part of what was being saved. Its "
                                "previous contents were backed up and can be restored."));
        QCOMPARE(buttonsOf(*box()),
                 (QStringList{QStringLiteral("Restore"), QStringLiteral("Keep Current"),
                              QStringLiteral("Show Folder")}));
        QCOMPARE(box()->defaultButton()->text(), QStringLiteral("Restore"));
        box()->defaultButton()->click();
        QCOMPARE(Samples::readFile(interrupted()), QByteArray("old bytes"));
        QVERIFY(QDir(StateFolder::recoveryPath()).isEmpty());
    }

    void offersItAlsoWhenTheFileItselfCannotBeOpened() {
        interruptSave();
        app_->start({interrupted()});
        // The window of the file only says why it cannot be opened, and goes then.
        QTRY_COMPARE(app_->windows().size(), 2);
        QCOMPARE(box()->text(),
                 QStringLiteral("The file “a.plist” is not a readable property list."));
        box()->button(QMessageBox::Ok)->click();
        QTRY_COMPARE(app_->windows().size(), 1);
        QTRY_VERIFY(box() != nullptr);
        QCOMPARE(box()->text(), QStringLiteral("Saving “a.plist” was interrupted."));
        box()->defaultButton()->click();
        QCOMPARE(Samples::readFile(interrupted()), QByteArray("old bytes"));
    }

    void keepsWhatTheFileHoldsIfTheUserWants() {
        interruptSave();
        app_->start({});
        QTRY_VERIFY(box() != nullptr);
        box()->button(QMessageBox::No)->click();
        QCOMPARE(Samples::readFile(interrupted()), QByteArray("<plist>half of"));
        QVERIFY(QDir(StateFolder::recoveryPath()).isEmpty());
    }

    void namesTheFolderWhereNoFileManagerShowsIt() {
        interruptSave();
        app_->start({});
        QTRY_VERIFY(box() != nullptr);
        const QPointer<QMessageBox> question = box();
        QTest::keyClick(question, Qt::Key_Escape);
        QTRY_VERIFY(question == nullptr && box() != nullptr);
        QCOMPARE(box()->text(), QStringLiteral("The folder can't be shown in a file manager."));
        const QStringList copies = filesIn(StateFolder::recoveryPath(), QStringLiteral("*.old"));
        QCOMPARE(copies.size(), 1);
        QCOMPARE(box()->informativeText(),
                 QStringLiteral("The backup is in “%1”.").arg(copies.first()));
        QCOMPARE(Samples::readFile(interrupted()), QByteArray("<plist>half of"));
    }

    void saysWhyAFileCannotBeRestored() {
        interruptSave();
        QVERIFY(QFile::remove(interrupted()));
        QVERIFY(QDir().mkdir(interrupted()));
        app_->start({});
        QTRY_VERIFY(box() != nullptr);
        const QPointer<QMessageBox> question = box();
        question->defaultButton()->click();
        QTRY_VERIFY(question == nullptr && box() != nullptr);
        QCOMPARE(box()->text(), QStringLiteral("The file “a.plist” could not be restored."));
        const QString copy = filesIn(StateFolder::recoveryPath(), QStringLiteral("*.old")).value(0);
        QCOMPARE(box()->informativeText(),
                 QStringLiteral("Is a directory.\n\nIts previous contents are in “%1”.").arg(copy));
    }

    void warnsAsLongAsNothingCanBeKept() {
        QDir().mkpath(StateFolder::path());
        Samples::writeFile(StateFolder::recoveryPath(), "in the way");
        app_->start({});
        window(0).view().actions().changeFormat(PlistFormat::binary);
        window(0).session().backUpNow();
        QTRY_VERIFY(window(0).findChild<NoticeStrip*>(QStringLiteral("backupWarning")) != nullptr);
        const auto* notice = window(0).findChild<NoticeStrip*>(QStringLiteral("backupWarning"));
        QTRY_VERIFY(notice->isVisible());
        QCOMPARE(
            notice->accessibleName(),
            QStringLiteral("Unsaved changes can't be backed up: Not a directory. Save often."));
        QVERIFY(QFile::remove(StateFolder::recoveryPath()));
        window(0).session().backUpNow();
        QTRY_VERIFY(window(0).findChild<NoticeStrip*>(QStringLiteral("backupWarning")) == nullptr);
    }

private:
    DocumentWindow& window(qsizetype index) const { return *app_->windows().at(index); }

    RecoveryDialog* dialog() const { return window(0).findChild<RecoveryDialog*>(); }
    QMessageBox* box() const { return window(0).findChild<QMessageBox*>(); }

    QString sample(const char* name) const {
        QString path = folder_->filePath(QLatin1String(name));
        Samples::writeFile(path, Samples::bytes(Samples::numbers(1), PlistFormat::xml));
        return path;
    }

    void startAgain(const QStringList& paths) {
        app_ = std::make_unique<TabuletApp>();
        app_->start(paths);
        window(0).activateWindow();
    }

    void end() {
        QTimer::singleShot(0, app_.get(), &TabuletApp::quitWithoutAsking);
        QCOMPARE(QCoreApplication::exec(), 0);
        app_.reset();
    }

    void endAndStartAgain(const QStringList& paths) {
        end();
        startAgain(paths);
    }

    static QStringList filesIn(const QString& folder, const QString& pattern) {
        QStringList paths;
        for (const QFileInfo& file : QDir(folder).entryInfoList({pattern}, QDir::Files)) {
            paths += file.filePath();
        }
        return paths;
    }

    static QStringList keptDocuments() {
        QStringList paths;
        const QDir place(StateFolder::recoveryPath());
        for (const QFileInfo& folder :
             place.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
            paths += filesIn(folder.filePath(), QStringLiteral("*.plist"));
        }
        return paths;
    }

    QString interrupted() const { return folder_->filePath(QStringLiteral("a.plist")); }

    void interruptSave() const {
        Samples::writeFile(interrupted(), "old bytes");
        const SafetyCopy copy(StateFolder::recoveryPath(), QFile::encodeName(interrupted()));
        Samples::writeFile(interrupted(), "<plist>half of");
    }

    static QStringList buttonsOf(const QMessageBox& box) {
        QStringList texts;
        for (const auto button : {QMessageBox::Yes, QMessageBox::No, QMessageBox::Open}) {
            texts += box.button(button)->text();
        }
        return texts;
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<TabuletApp> app_;
};

const RegisteredUiTest<CrashRecoveryTest> registered;

#include "CrashRecoveryTest.moc"
