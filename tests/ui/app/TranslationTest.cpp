#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "app/desktop/files/FileError.h"
#include "app/desktop/recovery/RecoveryFolder.h"
#include "app/model/tree/TypeName.h"
#include "app/ui/dialogs/FileDialogs.h"
#include "app/ui/dialogs/ManualWindow.h"
#include "app/ui/dialogs/MessageDialog.h"
#include "app/ui/dialogs/RecoveryDialog.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/document/MatchCount.h"
#include "app/ui/editors/DataPopover.h"
#include "app/ui/editors/LongTextEditor.h"
#include "app/ui/editors/TypeMenu.h"
#include "app/ui/menus/HelpMenu.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/RowMenu.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/text/DataText.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/PseudoLanguage.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

/// Every text of the program reaches the translator. What is not the program's own does not: the
/// names of files, keys and values, the system's reasons, and what the library says of a file.
class TranslationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        language_ = std::make_unique<PseudoLanguage>();
        app_ = std::make_unique<TabuletApp>();
    }

    void cleanup() {
        app_.reset();
        language_.reset();
    }

    void marksTexts() {
        QCOMPARE(TypeName::of(PlistType::date), QStringLiteral("\u27E6Date~~\u27E7"));
        QCOMPARE(PseudoLanguage::unmarkedIn(QStringLiteral("\u27E6A \u27E6b\u27E7\u27E7: 7")),
                 QString());
        QCOMPARE(PseudoLanguage::unmarkedIn(QStringLiteral("\u27E6A\u27E7 and")),
                 QStringLiteral(" and"));
    }

    void translatesAWindow() {
        DocumentWindow& window = *openSample();
        window.view().search().setQuery(QStringLiteral("i"));
        const auto* count = window.findChild<MatchCount*>();
        QTRY_VERIFY(count->isVisible());
        compareTexts(window, {"a.plist"});
    }

    void translatesWhatCanBeUndone() {
        DocumentWindow& window = *openSample();
        const PlistNodePtr first(&window.view().table().outlineModel().row(1).node());
        window.view().actions().rename(*first, QStringLiteral("new"));
        compareTexts(window, {"a.plist"});
        compareText(window.controller().undoManager().undoActionName());
        compareText(window.view()
                        .actions()
                        .rename(*first, QStringLiteral("uid"))
                        .value_or(QStringLiteral("none")),
                    {"uid"});
    }

    void translatesAnEmptyWindow() { compareTexts(*app_->newDocument()); }

    void translatesTheTable() {
        DocumentWindow& window = *openSample();
        const OutlineTableModel& model = window.view().table().outlineModel();
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex key = model.index(row, OutlineTableModel::keyColumn);
            compareText(key.siblingAtColumn(OutlineTableModel::typeColumn).data().toString());
            compareText(key.data(Qt::AccessibleDescriptionRole).toString());
        }
        compareText(model.index(0, OutlineTableModel::keyColumn).data().toString());
        compareText(model.index(0, OutlineTableModel::valueColumn).data().toString());
    }

    void translatesMenusOfRows() {
        DocumentWindow& window = *openSample();
        RowMenu rowMenu(window.view().actions(), &window);
        compareTexts(rowMenu);
        const PlistNodePtr root(&window.view().table().outlineModel().row(0).node());
        TypeMenu typeMenu(window.view().actions(), root, &window);
        compareTexts(typeMenu);
    }

    void translatesWhatHelps() {
        DocumentWindow* window = app_->newDocument();
        HelpMenu menu(window);
        for (QAction* action : menu.actions()) {
            if (!action->isSeparator()) {
                action->trigger();
                QWidget* help = window->findChild<ManualWindow*>();
                if (help == nullptr) {
                    help = window->findChild<QDialog*>();
                }
                compareTexts(*help, {"Tabulet"});
                delete help;
            }
        }
    }

    void translatesEditors() {
        const std::vector<std::uint8_t> bytes(2000);
        DataPopover data(
            bytes, QStringLiteral("key"), [](DataPopover::Bytes) {}, nullptr);
        data.show();
        compareTexts(data, {"key"});
        compareText(DataText::summary(std::span(bytes).first(1)));
        LongTextEditor text(QStringLiteral("a\rb\n"), {}, nullptr);
        text.show();
        compareTexts(text);
    }

    void translatesQuestions() {
        DocumentWindow& window = *app_->newDocument();
        compareBox(MessageDialog::askToSave(window, QStringLiteral("a.plist")));
        compareBox(MessageDialog::askToRestore(window, QStringLiteral("a.plist")));
        compareBox(MessageDialog::askToDiscard(window, QStringLiteral("a.plist")));
        compareBox(MessageDialog::askAboutChange(window, error(FileError::Code::changedOnDisk),
                                                 [](MessageDialog::ChangeAnswer) {}));
    }

    void translatesErrors() {
        DocumentWindow& window = *app_->newDocument();
        for (const FileError::Code code :
             {FileError::Code::readFailed, FileError::Code::corruptFile,
              FileError::Code::writeFailed, FileError::Code::changedOnDisk,
              FileError::Code::notEncoded}) {
            compareBox(MessageDialog::show(window, error(code)));
        }
        const auto wrongValue = window.view().actions().setValueFromText(
            window.view().table().outlineModel().row(0).node(), QStringLiteral("7"));
        compareText(wrongValue.value_or(QStringLiteral("none")));
    }

    void translatesFileDialogs() {
        DocumentWindow& window = *app_->newDocument();
        for (QFileDialog* dialog : {FileDialogs::opening(window, {}),
                                    FileDialogs::saving(window, {}, QStringLiteral("a"))}) {
            compareText(dialog->windowTitle());
            for (QString filter : dialog->nameFilters()) {
                compareText(filter.left(filter.indexOf(QStringLiteral(" ("))));
            }
            delete dialog;
        }
    }

    void translatesTheRecovery() {
        lose();
        RecoveryDialog dialog(RecoverableDocument::find(folder_->path()));
        dialog.show();
        compareTexts(dialog);
    }

private:
    static FileError error(FileError::Code code) {
        return {code, QStringLiteral("/a.plist"), QStringLiteral("a.plist")};
    }

    DocumentWindow* openSample() {
        const QString path = folder_->filePath(QStringLiteral("a.plist"));
        Samples::writeFile(path, Samples::bytes(Samples::allTypes(), PlistFormat::xml));
        app_->open({path});
        QSignalSpy opened(&app_->windows().last()->controller(), &DocumentController::opened);
        if (!opened.wait()) {
            qFatal("The file does not open.");
        }
        return app_->windows().last();
    }

    void lose() const {
        RecoveryFolder folder(QFile::encodeName(folder_->path()) + "/one");
        QCOMPARE(folder.create(), 0);
        RecoveryRecord record;
        QCOMPARE(folder.write("a.plist", QByteArray("{ }")), 0);
        QCOMPARE(folder.write("a.json", record.toJson()), 0);
    }

    static void compareText(QString text, const QByteArrayList& foreign = {}) {
        for (const QByteArray& word : foreign) {
            text.remove(QString::fromUtf8(word));
        }
        QCOMPARE(PseudoLanguage::unmarkedIn(text), QString());
    }

    static void compareTexts(QWidget& window, const QByteArrayList& foreign = {}) {
        const QStringList texts = PseudoLanguage::textsOf(window);
        QVERIFY(texts.size() > 3);
        for (const QString& text : texts) {
            compareText(text, foreign);
        }
    }

    static void compareBox(QMessageBox* box) {
        compareTexts(*box, {"a.plist"});
        delete box;
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<PseudoLanguage> language_;
    std::unique_ptr<TabuletApp> app_;
};

const RegisteredUiTest<TranslationTest> registered;
#include "TranslationTest.moc"
