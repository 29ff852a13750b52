#include "app/ui/DataPopover.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <optional>
#include <string>
#include <utility>

#include "PlistCore/Base64.h"
#include "PlistCore/PlistText.h"
#include "app/desktop/BackgroundTask.h"
#include "app/desktop/ByteFile.h"
#include "app/ui/ErrorColor.h"
#include "app/ui/FileName.h"
#include "app/ui/HexDump.h"
#include "app/ui/MessageDialog.h"
#include "app/ui/ProgressPage.h"
#include "app/ui/SecondaryLabel.h"

namespace {

constexpr qsizetype base64LineLength = 76;

/// The widest line of the dump: offset, blanks, and 16 bytes in four groups.
constexpr int dumpColumns = 8 + 2 + 32 + 3;

QPlainTextEdit* makeEditor(const QString& name, QWidget* parent) {
    auto* editor = new QPlainTextEdit(parent);
    editor->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    editor->setAccessibleName(name);
    editor->setTabChangesFocus(true);
    return editor;
}

/// In lines: an editor is slow with a single line of megabytes.
QString base64Lines(std::span<const std::uint8_t> bytes) {
    const QString text = QString::fromStdString(Base64::encoded(bytes));
    QString lines;
    lines.reserve(text.size() + text.size() / base64LineLength + 1);
    for (qsizetype at = 0; at < text.size(); at += base64LineLength) {
        if (at > 0) {
            lines += u'\n';
        }
        lines += QStringView(text).mid(at, base64LineLength);
    }
    return lines;
}

}  // namespace

DataPopover::DataPopover(Bytes bytes, const QString& name, std::function<void(Bytes)> apply,
                         QWidget* parent)
    : QDialog(parent),
      name_(name),
      apply_(std::move(apply)),
      dump_(makeEditor(tr("Bytes"), this)),
      note_(new SecondaryLabel({}, this)),
      base64_(makeEditor(tr("Base64"), this)),
      problem_(new QLabel(tr("This is not valid Base64."), this)),
      buttons_(new QDialogButtonBox(this)),
      progress_(new QProgressBar(this)) {
    setWindowTitle(name);
    dump_->setReadOnly(true);
    dump_->setLineWrapMode(QPlainTextEdit::NoWrap);
    makeLayout();
    setBytes(bytes);
}

void DataPopover::makeLayout() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(dump_, 2);
    layout->addWidget(note_);
    auto* label = new QLabel(tr("Base64"), this);
    label->setBuddy(base64_);
    layout->addWidget(label);
    layout->addWidget(base64_, 1);
    layout->addWidget(problem_);
    QPushButton* import = buttons_->addButton(tr("Import…"), QDialogButtonBox::ActionRole);
    QPushButton* save = buttons_->addButton(tr("Export…"), QDialogButtonBox::ActionRole);
    QPushButton* apply = buttons_->addButton(tr("Apply"), QDialogButtonBox::ActionRole);
    connect(import, &QPushButton::clicked, this, &DataPopover::askForImport);
    connect(save, &QPushButton::clicked, this, &DataPopover::askForExport);
    connect(apply, &QPushButton::clicked, this, &DataPopover::applyText);
    // Else Return in the dump would ask for a file: dialogs press their first button.
    apply->setDefault(true);
    layout->addWidget(progress_);
    layout->addWidget(buttons_);
    // How long it will take is not known: a bar that only moves.
    progress_->setRange(0, 0);
    progress_->hide();
    patience_.setSingleShot(true);
    patience_.setInterval(ProgressPage::delay);
    connect(&patience_, &QTimer::timeout, progress_, &QWidget::show);
    const int character = dump_->fontMetrics().horizontalAdvance(u'0');
    resize((dumpColumns + 10) * character, 30 * dump_->fontMetrics().height());
}

void DataPopover::setBytes(Bytes bytes) {
    bytes_.assign(bytes.begin(), bytes.end());
    dump_->setPlainText(HexDump::text(bytes_));
    note_->setText(HexDump::note(bytes_));
    note_->setVisible(!note_->text().isEmpty());
    base64_->setPlainText(base64Lines(bytes_));
    setInvalid(false);
}

void DataPopover::applyText() {
    const std::string text = base64_->toPlainText().toStdString();
    const std::optional<std::vector<std::uint8_t>> bytes = PlistText::parseBase64(text);
    setInvalid(!bytes);
    if (bytes) {
        apply_(*bytes);
    }
}

void DataPopover::setInvalid(bool isInvalid) {
    isInvalid_ = isInvalid;
    problem_->setVisible(isInvalid);
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, ErrorColor::of(colors));
    problem_->setPalette(colors);
    base64_->setAccessibleDescription(isInvalid ? problem_->text() : QString());
}

// --- Files ---

void DataPopover::askForImport() {
    auto* dialog = new QFileDialog(this, tr("Import"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, &DataPopover::importFrom);
    dialog->open();
}

void DataPopover::askForExport() {
    auto* dialog = new QFileDialog(this, tr("Export"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->selectFile(FileName::safe(name_));
    connect(dialog, &QFileDialog::fileSelected, this, &DataPopover::exportTo);
    dialog->open();
}

void DataPopover::importFrom(const QString& path) {
    begin(tr("Importing\u2026"));
    BackgroundTask::run(
        *this, [path] { return ByteFile::read(path); },
        [this](const ByteFile::Content& content) {
            finish();
            if (content.error.isEmpty()) {
                apply_({reinterpret_cast<const std::uint8_t*>(content.bytes.constData()),
                        static_cast<std::size_t>(content.bytes.size())});
            } else {
                MessageDialog::show(*this, tr("The file could not be read."), content.error);
            }
        });
}

void DataPopover::exportTo(const QString& path) {
    begin(tr("Exporting\u2026"));
    const QByteArray bytes(reinterpret_cast<const char*>(bytes_.data()),
                           static_cast<qsizetype>(bytes_.size()));
    BackgroundTask::run(
        *this, [path, bytes] { return ByteFile::write(path, bytes); },
        [this](const QString& error) {
            finish();
            if (!error.isEmpty()) {
                MessageDialog::show(*this, tr("The file could not be written."), error);
            }
        });
}

/// One thing at a time: until it is done, the buttons have to wait.
void DataPopover::begin(const QString& activity) {
    buttons_->setEnabled(false);
    progress_->setAccessibleName(activity);
    progress_->setFormat(activity);
    patience_.start();
}

void DataPopover::finish() {
    patience_.stop();
    progress_->hide();
    buttons_->setEnabled(true);
}
