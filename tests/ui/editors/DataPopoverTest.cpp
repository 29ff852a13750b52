#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>
#include <numeric>
#include <vector>

#include "app/desktop/files/BackgroundTask.h"
#include "app/ui/editors/DataPopover.h"
#include "app/ui/text/DataText.h"
#include "app/ui/text/FileName.h"
#include "tests/ui/support/ByName.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

std::vector<std::uint8_t> counting(std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}

using Applications = std::vector<std::vector<std::uint8_t>>;

/// The popover of an item that takes what is applied.
struct Item {
    explicit Item(std::vector<std::uint8_t> content)
        : popover(
              content, QStringLiteral("name"),
              [this](DataPopover::Bytes applied) {
                  applications.emplace_back(applied.begin(), applied.end());
                  popover.setBytes(applied);
              },
              nullptr) {
        popover.show();
        QVERIFY(QTest::qWaitForWindowActive(&popover));
    }

    QPlainTextEdit* editor(const char* name) const {
        return ByName::find<QPlainTextEdit>(popover, name);
    }
    QString dump() const { return editor("Bytes")->toPlainText(); }
    QString base64() const { return editor("Base64")->toPlainText(); }
    void press(const char* name) const { ByName::press(popover, name); }
    bool isIdle() const { return popover.findChild<QDialogButtonBox*>()->isEnabled(); }
    bool shows(const char* text) const { return ByName::find<QLabel>(popover, text) != nullptr; }

    Applications applications;
    DataPopover popover;
};

}  // namespace

class DataPopoverTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dumpsSixteenBytesALine() {
        QCOMPARE(DataText::dump({}), QString());
        QCOMPARE(DataText::dump(counting(16)),
                 QStringLiteral("00000000  00010203 04050607 08090A0B 0C0D0E0F"));
        const QStringList lines = DataText::dump(counting(17)).split(u'\n');
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.at(1), QStringLiteral("00000010  10"));
        QCOMPARE(DataText::dump(counting(0x10000)).split(u'\n').last(),
                 QStringLiteral("0000FFF0  F0F1F2F3 F4F5F6F7 F8F9FAFB FCFDFEFF"));
    }

    void dumpsNoMoreThanTheLimit() {
        QCOMPARE(DataText::dumpNote(counting(65'536)), QString());
        QCOMPARE(DataText::dump(counting(65'537)).count(u'\n') + 1, 4096);
        QCOMPARE(DataText::dumpNote(counting(65'537)), QStringLiteral("Showing the first 66 kB."));
        const Item item(counting(65'537));
        QVERIFY(item.shows("Showing the first 66 kB."));
    }

    /// Return in the dump does not ask for a file.
    void returnApplies() {
        const Item item(counting(3));
        QVERIFY(ByName::find<QPushButton>(item.popover, "Apply")->isDefault());
        QVERIFY(!ByName::find<QPushButton>(item.popover, "Import…")->isDefault());
        QVERIFY(!ByName::find<QPushButton>(item.popover, "Export…")->isDefault());
    }

    void showsBytesAndBase64() {
        const Item item(counting(3));
        QCOMPARE(item.dump(), QStringLiteral("00000000  000102"));
        QCOMPARE(item.base64(), QStringLiteral("AAEC"));
        QVERIFY(item.editor("Bytes")->isReadOnly());
        QVERIFY(item.shows("Base64"));
        for (const char* name : {"Import…", "Export…", "Apply"}) {
            QVERIFY2(ByName::find<QPushButton>(item.popover, name) != nullptr, name);
        }
    }

    void appliesBase64() {
        const Item item(counting(3));
        item.editor("Base64")->setPlainText(QStringLiteral(" AA\nEC Aw== "));
        item.press("Apply");
        QCOMPARE(item.applications, Applications{counting(4)});
        QCOMPARE(item.dump(), QStringLiteral("00000000  00010203"));
        QVERIFY(!item.shows("This is not valid Base64."));
    }

    void marksWhatIsNoBase64() {
        const Item item(counting(3));
        item.editor("Base64")->setPlainText(QStringLiteral("Q"));
        item.press("Apply");
        QVERIFY(item.shows("This is not valid Base64."));
        QVERIFY(item.applications.empty());
        item.editor("Base64")->setPlainText(QStringLiteral("QUJD"));
        item.press("Apply");
        QVERIFY(!item.shows("This is not valid Base64."));
        QCOMPARE(item.applications.size(), std::size_t{1});
    }

    void breaksLongBase64IntoLines() {
        const Item item(counting(200));
        QCOMPARE(item.base64().split(u'\n').first().size(), 76);
        item.press("Apply");
        QCOMPARE(item.applications, Applications{counting(200)});
    }

    /// The window answers meanwhile, and nobody applies half of the bytes.
    void showsManyBytesInTurns() {
        constexpr std::size_t turns = 4;
        const auto bytes = counting(turns * DataPopover::bytesPerTurn);
        Item item(bytes);
        const QPlainTextEdit* text = item.editor("Base64");
        QVERIFY(!item.isIdle());
        QVERIFY(text->isReadOnly());
        const qsizetype shown = item.base64().size();
        QVERIFY(shown > 0);
        QTRY_VERIFY(item.isIdle());
        QVERIFY(item.base64().size() > shown);
        QVERIFY(!text->isReadOnly());
        QCOMPARE(item.base64().remove(u'\n').size(), static_cast<qsizetype>(bytes.size() / 3 * 4));
        item.press("Apply");
        QCOMPARE(item.applications, Applications{bytes});
        // Given up for other bytes in the middle, to which the text is Base64 again.
        QVERIFY(!item.isIdle());
        item.popover.setBytes(bytes);
        QVERIFY(!item.isIdle());
        item.popover.setBytes(counting(3));
        QVERIFY(item.isIdle());
        QVERIFY(!text->isReadOnly());
        QCOMPARE(item.base64(), QStringLiteral("AAEC"));
    }

    void readsLongTextsInTheBackground() {
        constexpr std::size_t size = 900'000;
        const auto bytes = counting(size);
        Item item(bytes);
        QTRY_VERIFY(item.isIdle());
        item.editor("Base64")->appendPlainText(QStringLiteral("AAEC"));
        item.press("Apply");
        QVERIFY(!item.isIdle());
        QVERIFY(item.editor("Base64")->isReadOnly());
        QTRY_COMPARE(item.applications.size(), std::size_t{1});
        QCOMPARE(item.applications.front().size(), size + 3);
        QTRY_VERIFY(item.isIdle());
        item.editor("Base64")->appendPlainText(QStringLiteral("Q"));
        item.press("Apply");
        QTRY_VERIFY(item.shows("This is not valid Base64."));
        QVERIFY(item.isIdle());
        QCOMPARE(item.applications.size(), std::size_t{1});
    }

    void importsAndExportsFiles() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("bytes"));
        const Item item(counting(3));
        item.press("Export…");
        auto* saving = item.popover.findChild<QFileDialog*>();
        QVERIFY(saving != nullptr);
        QCOMPARE(saving->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(QFileInfo(saving->selectedFiles().value(0)).fileName(), QStringLiteral("name"));
        Q_EMIT saving->fileSelected(path);
        QTRY_VERIFY(item.isIdle());
        QCOMPARE(Samples::readFile(path), QByteArray("\0\1\2", 3));
        delete saving;

        Samples::writeFile(path, QByteArray("\0\1\2\3", 4));
        item.press("Import…");
        auto* opening = item.popover.findChild<QFileDialog*>();
        QVERIFY(opening != nullptr);
        QCOMPARE(opening->fileMode(), QFileDialog::ExistingFile);
        Q_EMIT opening->fileSelected(path);
        QTRY_COMPARE(item.applications, Applications{counting(4)});
        delete opening;
    }

    void changesNothingWhenNoFileIsChosen() {
        const Item item(counting(3));
        item.press("Import…");
        item.popover.findChild<QFileDialog*>()->reject();
        QVERIFY(item.isIdle());
        QVERIFY(item.applications.empty());
    }

    void showsThatAFileTakesItsTime() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("bytes"));
        Samples::writeFile(path, QByteArray("\0\1\2\3", 4));
        // Nobody has time to read the file as long as others have work.
        QSemaphore otherWork;
        QThreadPool& workers = BackgroundTask::threads();
        for (int worker = 0; worker < workers.maxThreadCount(); ++worker) {
            workers.start([&otherWork] { otherWork.acquire(); });
        }
        const Item item(counting(3));
        item.press("Import…");
        auto* opening = item.popover.findChild<QFileDialog*>();
        Q_EMIT opening->fileSelected(path);
        delete opening;
        const auto* bar = item.popover.findChild<QProgressBar*>();
        const bool isHiddenFirst = !bar->isVisible();
        const bool isBusy = !item.isIdle();
        const bool isShown = QTest::qWaitFor([bar] { return bar->isVisible(); });
        const QString name = bar->accessibleName();
        otherWork.release(workers.maxThreadCount());
        QVERIFY(isHiddenFirst);
        QVERIFY(isBusy);
        QVERIFY(isShown);
        QCOMPARE(name, QStringLiteral("Importing…"));
        QTRY_COMPARE(item.applications, Applications{counting(4)});
        QVERIFY(!bar->isVisible());
        QVERIFY(item.isIdle());
    }

    void explainsWhatCannotBeReadOrWritten() {
        const QTemporaryDir folder;
        const Item item(counting(3));
        item.press("Import…");
        auto* opening = item.popover.findChild<QFileDialog*>();
        Q_EMIT opening->fileSelected(folder.filePath(QStringLiteral("missing")));
        delete opening;
        QTRY_VERIFY(item.popover.findChild<QMessageBox*>() != nullptr);
        auto* box = item.popover.findChild<QMessageBox*>();
        QCOMPARE(box->text(), QStringLiteral("The file “missing” could not be read."));
        QCOMPARE(box->informativeText(),
                 QStringLiteral("No such file or directory.\n\nCheck that the file exists and that "
                                "you have permission to read it."));
        delete box;
        item.press("Export…");
        auto* saving = item.popover.findChild<QFileDialog*>();
        Q_EMIT saving->fileSelected(folder.filePath(QStringLiteral("missing/x")));
        delete saving;
        QTRY_VERIFY(item.popover.findChild<QMessageBox*>() != nullptr);
        box = item.popover.findChild<QMessageBox*>();
        QCOMPARE(box->text(), QStringLiteral("The file “x” could not be written."));
        QCOMPARE(box->informativeText(),
                 QStringLiteral("No such file or directory.\n\nThe data is still in the document. "
                                "Export it somewhere else."));
        QVERIFY(item.applications.empty());
    }

    void makesNamesOfFiles_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << QStringLiteral("icon") << QStringLiteral("icon");
        QTest::newRow("path") << QStringLiteral("../a/b") << QStringLiteral("ab");
        QTest::newRow("dots") << QStringLiteral("..") << QStringLiteral("Untitled");
        QTest::newRow("control") << QStringLiteral("a\nb\t") << QStringLiteral("ab");
        QTest::newRow("long") << QString(300, u'x') << QString(255, u'x');
        QTest::newRow("long characters") << QString(200, u'ä') << QString(127, u'ä');
        QTest::newRow("empty") << QString() << QStringLiteral("Untitled");
    }

    void makesNamesOfFiles() {
        QFETCH(QString, text);
        QFETCH(QString, name);
        QCOMPARE(FileName::safe(text), name);
    }
};

const RegisteredUiTest<DataPopoverTest> registered;
#include "DataPopoverTest.moc"
