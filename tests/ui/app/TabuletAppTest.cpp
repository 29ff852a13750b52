#include <unistd.h>

#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <filesystem>
#include <memory>

#include "app/desktop/files/FilePath.h"
#include "app/desktop/saving/ByteFile.h"
#include "app/desktop/session/RecentDocuments.h"
#include "app/ui/app/TabuletApp.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/DragOver.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

class TabuletAppTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
        app_ = std::make_unique<TabuletApp>();
    }

    void cleanup() { app_.reset(); }

    void startsWithANewDocument() {
        app_->start({});
        QCOMPARE(app_->windows().size(), 1);
        QVERIFY(window(0).isVisible());
        QCOMPARE(window(0).windowTitle(), QStringLiteral("Untitled[*]"));
        QVERIFY(window(0).controller().isPristine());
    }

    void opensEachFileInAWindowOfItsOwn() {
        app_->start({file("a.plist"), file("b.plist")});
        QCOMPARE(app_->windows().size(), 2);
        QTRY_COMPARE(rowsOf(0), 4);
        QTRY_COMPARE(rowsOf(1), 4);
        QCOMPARE(window(0).controller().name(), QStringLiteral("a.plist"));
        QCOMPARE(window(1).controller().name(), QStringLiteral("b.plist"));
    }

    void usesAWindowThatNobodyHasTouched() {
        app_->start({});
        app_->open({file("a.plist")});
        QCOMPARE(app_->windows().size(), 1);
        QTRY_COMPARE(rowsOf(0), 4);
        app_->open({file("b.plist")});
        QCOMPARE(app_->windows().size(), 2);
    }

    void usesNoWindowThatShowsAnError() {
        app_->start({folder_->filePath(QStringLiteral("none.plist"))});
        QTRY_VERIFY(window(0).findChild<QMessageBox*>() != nullptr);
        app_->open({file("a.plist")});
        QCOMPARE(app_->windows().size(), 2);
        window(0).findChild<QMessageBox*>()->button(QMessageBox::Ok)->click();
        QTRY_COMPARE(app_->windows().size(), 1);
        QTRY_COMPARE(rowsOf(0), 4);
    }

    void usesNoWindowThatAsksForAName() {
        app_->start({});
        window(0).save();
        QTRY_VERIFY(window(0).findChild<QFileDialog*>() != nullptr);
        app_->open({file("a.plist")});
        QCOMPARE(app_->windows().size(), 2);
    }

    void opensFilesDroppedOnAWindow() {
        app_->start({});
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file("a.plist")), QUrl::fromLocalFile(file("b.plist"))});
        const DragOver::Answer answer = DragOver(viewport(), data).enterAndDrop({50, 200});
        QVERIFY(answer.isAccepted);
        QCOMPARE(answer.action, Qt::CopyAction);
        QCOMPARE(app_->windows().size(), 2);
        QTRY_COMPARE(rowsOf(0), 4);
        QTRY_COMPARE(rowsOf(1), 4);
    }

    void takesNothingButLocalFiles_data() {
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("isTaken");
        QTest::newRow("local file") << "file:///a.plist" << true;
        QTest::newRow("remote file") << "https://example.org/a.plist" << false;
    }

    void takesNothingButLocalFiles() {
        QFETCH(const QString, url);
        app_->start({});
        QMimeData data;
        data.setUrls({QUrl(url)});
        QTEST(DragOver(viewport(), data).enter({50, 200}).isAccepted, "isTaken");
    }

    void leavesATouchedDocumentAlone() {
        app_->start({});
        window(0).view().actions().changeFormat(PlistFormat::binary);
        app_->open({file("a.plist")});
        QCOMPARE(app_->windows().size(), 2);
    }

    void showsAFileOnce() {
        const QString path = file("a.plist");
        const QString link = folder_->filePath(QStringLiteral("link.plist"));
        const QString second = folder_->filePath(QStringLiteral("second.plist"));
        QVERIFY(QFile::link(path, link));
        QCOMPARE(::link(QFile::encodeName(path).constData(), QFile::encodeName(second).constData()),
                 0);
        // While it is being read, and when it has been.
        app_->start({path, link});
        QCOMPARE(app_->windows().size(), 1);
        QTRY_COMPARE(rowsOf(0), 4);
        app_->open({link, second, path});
        QCOMPARE(app_->windows().size(), 1);
    }

    void takesFilesWhoseNamesAreNotUtf8() {
        const QByteArray name = QFile::encodeName(folder_->path()) + "/caf\xE9 %25.plist";
        const QString path = FilePath::decoded(name);
        QCOMPARE(ByteFile::write(path, Samples::bytes(Samples::numbers(3), PlistFormat::xml)),
                 QString());
        app_->start({});
        QMimeData data;
        data.setData(QStringLiteral("text/uri-list"),
                     name.toPercentEncoding("/").prepend("file://"));
        QVERIFY(DragOver(viewport(), data).enterAndDrop({50, 200}).isAccepted);
        QTRY_COMPARE(rowsOf(0), 4);
        QCOMPARE(window(0).windowTitle(), QStringLiteral("caf\uFFFD %25.plist[*]"));

        window(0).view().actions().changeFormat(PlistFormat::binary);
        window(0).save();
        QTRY_VERIFY(!window(0).controller().isModified());
        QVERIFY(ByteFile::read(path).bytes.startsWith("bplist00"));
        QCOMPARE(filesIn(folder_->path()), QByteArrayList{name});
        QCOMPARE(RecentDocuments::existingPaths().first(), path);

        app_->open(RecentDocuments::existingPaths().first(1));
        QCOMPARE(app_->windows().size(), 1);
        window(0).close();
        QTRY_COMPARE(app_->windows().size(), 0);
        app_->open(RecentDocuments::existingPaths().first(1));
        QTRY_COMPARE(rowsOf(0), 4);
        // (The temporary folder cannot delete such a file itself.)
        QCOMPARE(::unlink(name.constData()), 0);
    }

    void namesFilesThatAreNotUtf8InErrors() {
        app_->start({FilePath::decoded("/caf\xE9/gone.\xE9")});
        QTRY_VERIFY(window(0).findChild<QMessageBox*>() != nullptr);
        QCOMPARE(window(0).findChild<QMessageBox*>()->text(),
                 QStringLiteral("The file “gone.\uFFFD” could not be read."));
    }

    void takesOverFiles() {
        const QString path = file("a.plist");
        app_->start({path});
        QTRY_COMPARE(rowsOf(0), 4);
        window(0).showMinimized();
        app_->takeOver({file("b.plist"), path}, {});
        QCOMPARE(app_->windows().size(), 2);
        QVERIFY(!window(0).isMinimized());
        QTRY_VERIFY(window(0).isActiveWindow());
    }

    void takesOverAStartWithoutFiles() {
        app_->start({file("a.plist")});
        QTRY_COMPARE(rowsOf(0), 4);
        app_->takeOver({}, {});
        QCOMPARE(app_->windows().size(), 2);
        QTRY_VERIFY(window(1).isActiveWindow());
        // A second one that nobody has touched would help nobody.
        app_->takeOver({}, {});
        QCOMPARE(app_->windows().size(), 2);
    }

    void quitsNoMoreWhenItTakesOver() {
        app_->start({});
        window(0).view().actions().changeFormat(PlistFormat::binary);
        app_->quit();
        QTRY_VERIFY(window(0).findChild<QMessageBox*>() != nullptr);
        app_->takeOver({file("a.plist")}, {});
        window(0).findChild<QMessageBox*>()->button(QMessageBox::Discard)->click();
        QTRY_COMPARE(app_->windows().size(), 1);
        QTRY_COMPARE(rowsOf(0), 4);
    }

    void numbersNewDocuments() {
        app_->start({});
        Q_EMIT window(0).newChosen();
        QCOMPARE(app_->windows().size(), 2);
        QCOMPARE(window(1).windowTitle(), QStringLiteral("Untitled 2[*]"));
    }

    void asksForFiles() {
        app_->start({});
        window(0).view().actions().changeFormat(PlistFormat::binary);
        Q_EMIT window(0).openChosen();
        auto* dialog = window(0).findChild<QFileDialog*>();
        QVERIFY(dialog != nullptr);
        QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFiles);
        Q_EMIT dialog->filesSelected({file("a.plist"), file("b.plist")});
        QCOMPARE(app_->windows().size(), 3);
        delete dialog;
    }

    void opensWhatWasAskedForInTheWindowThatAsked() {
        app_->start({});
        Q_EMIT window(0).openChosen();
        auto* dialog = window(0).findChild<QFileDialog*>();
        QVERIFY(dialog->isVisible());
        Q_EMIT dialog->filesSelected({file("a.plist")});
        QCOMPARE(app_->windows().size(), 1);
        delete dialog;
        QTRY_COMPARE(rowsOf(0), 4);
    }

    void closesTheWindowOfAFileThatCannotBeOpened() {
        app_->start({folder_->filePath(QStringLiteral("gone.plist"))});
        QTRY_VERIFY(window(0).findChild<QMessageBox*>() != nullptr);
        QCOMPARE(window(0).findChild<QMessageBox*>()->text(),
                 QStringLiteral("The file “gone.plist” could not be read."));
        window(0).findChild<QMessageBox*>()->button(QMessageBox::Ok)->click();
        QTRY_COMPARE(app_->windows().size(), 0);
    }

    void endsWithTheLastWindow() {
        app_->start({});
        app_->newDocument();
        int closed = 0;
        const auto closeOne = [this, &closed] {
            // A dialog is no window of its own.
            Q_EMIT window(0).openChosen();
            window(0).findChild<QFileDialog*>()->reject();
            ++closed;
            window(0).close();
        };
        connect(&window(0), &QObject::destroyed, app_.get(),
                [this, &closeOne] { QTimer::singleShot(0, app_.get(), closeOne); });
        QTimer::singleShot(0, app_.get(), closeOne);
        QApplication::setQuitOnLastWindowClosed(true);
        QApplication::exec();
        QApplication::setQuitOnLastWindowClosed(false);
        QCOMPARE(closed, 2);
    }

    void quitClosesAllWindows() {
        app_->start({file("a.plist"), file("b.plist")});
        QTRY_COMPARE(rowsOf(0) + rowsOf(1), 8);
        Q_EMIT window(0).quitChosen();
        QTRY_COMPARE(app_->windows().size(), 0);
    }

    void quitStopsWhereTheUserRefuses() {
        app_->start({});
        app_->newDocument();
        window(1).view().actions().changeFormat(PlistFormat::binary);
        app_->newDocument();
        app_->quit();
        QTRY_COMPARE(app_->windows().size(), 2);
        QTRY_VERIFY(window(1).findChild<QMessageBox*>() != nullptr);
        window(1).findChild<QMessageBox*>()->button(QMessageBox::Cancel)->click();
        // Closing a window now is no longer a part of quitting.
        window(0).close();
        QTRY_COMPARE(app_->windows().size(), 1);
        QTRY_VERIFY(window(0).isVisible());
    }

    /// Nothing that is lost by quitting goes without a question.
    void quitAsksForEachDocument() {
        app_->start({});
        window(0).view().actions().changeFormat(PlistFormat::binary);
        app_->newDocument();
        window(1).view().actions().changeFormat(PlistFormat::binary);
        app_->newDocument();
        window(2).view().actions().changeFormat(PlistFormat::binary);
        app_->quit();
        QTRY_VERIFY(questionOf(2) != nullptr);
        QVERIFY(questionOf(0) == nullptr && questionOf(1) == nullptr);
        questionOf(2)->button(QMessageBox::Discard)->click();
        QTRY_VERIFY(app_->windows().size() == 2 && questionOf(1) != nullptr);
        questionOf(1)->button(QMessageBox::Cancel)->click();
        // No other is asked any more, and both stay.
        QCoreApplication::processEvents();
        QVERIFY(questionOf(0) == nullptr);
        QCOMPARE(app_->windows().size(), 2);
        QVERIFY(window(0).isVisible() && window(1).isVisible());
    }

    void quitStopsWhereSavingFails() {
        app_->start({file("a.plist")});
        QTRY_COMPARE(rowsOf(0), 4);
        window(0).view().actions().changeFormat(PlistFormat::binary);
        // A folder in the place of the file.
        const QString path = window(0).controller().path();
        QVERIFY(QFile::remove(path) && QDir().mkdir(path));
        app_->quit();
        QTRY_VERIFY(questionOf(0) != nullptr);
        questionOf(0)->button(QMessageBox::Save)->click();
        QTRY_VERIFY(questionOf(0) != nullptr &&
                    questionOf(0)->text() ==
                        QStringLiteral("The file “a.plist” could not be written."));
        QCOMPARE(questionOf(0)->informativeText().section(u'\n', 0, 0),
                 QStringLiteral("Is a directory."));
        questionOf(0)->button(QMessageBox::Ok)->click();
        QVERIFY(window(0).isVisible());
        QVERIFY(window(0).isWindowModified());
    }

    void quitGoesOnAfterTheAnswer() {
        app_->start({});
        app_->newDocument();
        window(1).view().actions().changeFormat(PlistFormat::binary);
        app_->quit();
        QTRY_VERIFY(window(1).findChild<QMessageBox*>() != nullptr);
        window(1).findChild<QMessageBox*>()->button(QMessageBox::Discard)->click();
        QTRY_COMPARE(app_->windows().size(), 0);
    }

private:
    /// What a window asks or says.
    QMessageBox* questionOf(qsizetype number) {
        const QList<QMessageBox*> boxes = window(number).findChildren<QMessageBox*>();
        const auto shown = std::find_if(boxes.begin(), boxes.end(),
                                        [](const QMessageBox* box) { return box->isVisible(); });
        return shown == boxes.end() ? nullptr : *shown;
    }

    /// The paths as the system has them.
    static QByteArrayList filesIn(const QString& folder) {
        QByteArrayList paths;
        for (const auto& entry : std::filesystem::directory_iterator(folder.toStdString())) {
            paths += QByteArray::fromStdString(entry.path().string());
        }
        return paths;
    }

    DocumentWindow& window(qsizetype number) { return *app_->windows().at(number); }

    QWidget& viewport() { return *window(0).view().table().viewport(); }

    int rowsOf(qsizetype number) { return window(number).view().table().model()->rowCount(); }

    QString file(const char* name) {
        QString path = folder_->filePath(QLatin1String(name));
        Samples::writeFile(path, Samples::bytes(Samples::numbers(3), PlistFormat::xml));
        return path;
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<TabuletApp> app_;
};

const RegisteredUiTest<TabuletAppTest> registered;
#include "TabuletAppTest.moc"
