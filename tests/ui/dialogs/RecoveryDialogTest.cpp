#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <optional>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/recovery/RecoveryStore.h"
#include "app/ui/dialogs/RecoveryDialog.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

class RecoveryDialogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        QLocale::setDefault(QLocale::c());
        folder_.emplace();
    }

    void cleanup() { delete dialog_; }

    void tellsWhatWasLost() {
        loseAll();
        show();
        QCOMPARE(dialog_->windowTitle(), QStringLiteral("Recover Documents"));
        QCOMPARE(
            dialog_->findChild<QLabel*>()->text(),
            QStringLiteral("Tabulet quit unexpectedly. These documents have unsaved changes:"));
        QCOMPARE(list().accessibleName(), QStringLiteral("Documents"));
        QCOMPARE(
            texts(),
            (QStringList{
                QStringLiteral("Untitled\nNever saved · Changed 14 Nov 2023 22:13:24"),
                QStringLiteral("a.plist\n%1 · Changed 14 Nov 2023 22:13:23").arg(folder_->path()),
                QStringLiteral("b.plist\n%1 · Changed 14 Nov 2023 22:13:22\nIts file has changed "
                               "since then, so it will open as a copy.")
                    .arg(folder_->path()),
                QStringLiteral("c.plist\nNever saved · Changed 14 Nov 2023 22:13:21\nTabulet quit "
                               "unexpectedly twice while recovering it. The backup is in “%1”.")
                    .arg(folder_->filePath(QStringLiteral("recovery/one/c.plist"))),
            }));
    }

    void offersEachChoiceByName() {
        loseAll();
        show();
        for (const char* text : {"Recover", "Later", "Discard…", "Show Folder"}) {
            QVERIFY2(button(text) != nullptr, text);
        }
        QVERIFY(button("Recover")->isDefault());
    }

    void recoversAllAtOnce() {
        loseAll();
        show();
        QCOMPARE(list().selectedItems().size(), 4);
        QSignalSpy recovered(dialog_, &RecoveryDialog::recoverChosen);
        QTest::keyClick(dialog_, Qt::Key_Return);
        QCOMPARE(recovered.count(), 3);
        // What has failed before stays.
        QCOMPARE(list().count(), 1);
        QVERIFY(!button("Recover")->isEnabled());
    }

    void recoversWhatIsSelected() {
        loseAll();
        show();
        QStringList titles;
        connect(dialog_, &RecoveryDialog::recoverChosen, this,
                [&titles](const RecoverableDocument& lost) { titles += lost.record().title; });
        list().clearSelection();
        list().item(1)->setSelected(true);
        button("Recover")->click();
        QCOMPARE(titles, QStringList{QStringLiteral("a.plist")});
        QCOMPARE(list().count(), 3);
        QVERIFY(dialog_->isVisible());
    }

    void closesWhenNothingIsLeft() {
        lose("a", recordAt("a.plist", 1));
        show();
        button("Recover")->click();
        QVERIFY(!dialog_->isVisible());
        QTRY_VERIFY(dialog_ == nullptr);
    }

    void discardsWhenTheUserIsSure() {
        loseAll();
        show();
        list().clearSelection();
        list().item(0)->setSelected(true);
        button("Discard…")->click();
        QCOMPARE(box().text(), QStringLiteral("Do you want to discard the changes to “Untitled”?"));
        QCOMPARE(box().informativeText(), QStringLiteral("Discarded changes can't be recovered."));
        QCOMPARE(box().defaultButton(), box().button(QMessageBox::Cancel));
        box().button(QMessageBox::Cancel)->click();
        QCOMPARE(list().count(), 4);
        QTRY_VERIFY(dialog_->findChild<QMessageBox*>() == nullptr);

        button("Discard…")->click();
        box().button(QMessageBox::Discard)->click();
        QCOMPARE(list().count(), 3);
        QVERIFY(!QFile::exists(folder_->filePath(QStringLiteral("recovery/one/u.plist"))));
        QVERIFY(QFile::exists(folder_->filePath(QStringLiteral("recovery/one/a.plist"))));
    }

    void countsWhatIsDiscardedTogether() {
        loseAll();
        show();
        button("Discard…")->click();
        QCOMPARE(box().text(),
                 QStringLiteral("Do you want to discard the changes to 4 documents?"));
    }

    void keepsEverythingForLater() {
        loseAll();
        show();
        QTest::keyClick(dialog_, Qt::Key_Escape);
        QTRY_VERIFY(dialog_ == nullptr);
        QCOMPARE(RecoverableDocument::find(place()).size(), std::size_t{4});
    }

    void showsTheFolderOfOneDocument() {
        loseAll();
        show();
        QVERIFY(!button("Show Folder")->isEnabled());
        list().clearSelection();
        QVERIFY(!button("Recover")->isEnabled());
        QVERIFY(!button("Discard…")->isEnabled());
        list().item(1)->setSelected(true);
        QSignalSpy shown(dialog_, &RecoveryDialog::showFolderChosen);
        button("Show Folder")->click();
        QCOMPARE(shown.at(0).at(0).toString(),
                 folder_->filePath(QStringLiteral("recovery/one/a.plist")));
        QCOMPARE(list().count(), 4);
    }

private:
    QString place() const { return folder_->filePath(QStringLiteral("recovery")); }

    static RecoveryRecord recordAt(const char* title, int time) {
        RecoveryRecord record;
        record.title = QString::fromLatin1(title);
        record.backedUpAt = QDateTime::fromSecsSinceEpoch(1'700'000'000 + time, Qt::UTC);
        return record;
    }

    void lose(const char* name, const RecoveryRecord& record) const {
        RecoveryFolder folder(QFile::encodeName(place()) + "/one");
        QVERIFY(folder.create() == 0 || folder.claim() == 0);
        QCOMPARE(folder.write(QByteArray(name) + ".plist", QByteArray("{ }")), 0);
        QCOMPARE(folder.write(QByteArray(name) + ".json", record.toJson()), 0);
    }

    /// A document that was never saved, one whose file is as it was, one whose file has changed,
    /// and one that has been tried too often.
    void loseAll() {
        Samples::writeFile(folder_->filePath(QStringLiteral("a.plist")), QByteArray());
        lose("u", recordAt("Untitled", 4));
        RecoveryRecord same = recordAt("a.plist", 3);
        same.file = QFile::encodeName(folder_->filePath(QStringLiteral("a.plist")));
        same.baseDigest = ContentDigest().hex();
        lose("a", same);
        RecoveryRecord changed = recordAt("b.plist", 2);
        changed.file = QFile::encodeName(folder_->filePath(QStringLiteral("b.plist")));
        changed.baseDigest = ContentDigest().hex();
        lose("b", changed);
        RecoveryRecord failed = recordAt("c.plist", 1);
        failed.attempts = 2;
        lose("c", failed);
    }

    void show() {
        dialog_ = new RecoveryDialog(RecoverableDocument::find(place()));
        dialog_->show();
        QVERIFY(QTest::qWaitForWindowActive(dialog_));
    }

    QListWidget& list() const { return *dialog_->findChild<QListWidget*>(); }
    QMessageBox& box() const { return *dialog_->findChild<QMessageBox*>(); }

    QStringList texts() const {
        QStringList all;
        for (int row = 0; row < list().count(); ++row) {
            all += list().item(row)->text();
        }
        return all;
    }

    QPushButton* button(const char* text) const {
        for (QPushButton* one : dialog_->findChildren<QPushButton*>()) {
            if (one->text() == QString::fromUtf8(text)) {
                return one;
            }
        }
        return nullptr;
    }

    std::optional<QTemporaryDir> folder_;
    QPointer<RecoveryDialog> dialog_;
};

const RegisteredUiTest<RecoveryDialogTest> registered;

#include "RecoveryDialogTest.moc"
