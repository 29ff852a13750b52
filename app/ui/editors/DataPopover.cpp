#include "app/ui/editors/DataPopover.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/desktop/files/BackgroundTask.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/saving/ByteFile.h"
#include "app/model/runtime/Plist.h"
#include "app/ui/dialogs/MessageDialog.h"
#include "app/ui/look/Colors.h"
#include "app/ui/look/SecondaryLabel.h"
#include "app/ui/notices/ProgressPage.h"
#include "app/ui/text/DataText.h"
#include "app/ui/text/FileName.h"

namespace {

/// The widest line of the dump: offset, spaces, and 16 bytes in four groups.
constexpr int dumpColumns = 8 + 2 + 32 + 3;

QPlainTextEdit* makeEditor(const QString& name, QWidget* parent) {
    auto* editor = new QPlainTextEdit(parent);
    editor->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    editor->setAccessibleName(name);
    // Bytes are written from left to right in every language.
    editor->setLayoutDirection(Qt::LeftToRight);
    editor->setTabChangesFocus(true);
    return editor;
}

/// Their Base64 has 76 characters, the longest line in mail (RFC 2045, section 6.8).
constexpr std::size_t bytesPerLine = 57;
static_assert(DataPopover::bytesPerTurn % bytesPerLine == 0);

/// Longer than anything typed: decoding it takes so long that the window would not respond.
constexpr qsizetype longText = 1'000'000;

std::optional<std::vector<std::uint8_t>> bytesOf(QString text) {
    text.replace(QChar::ParagraphSeparator, u'\n');
    return PlistText::parseBase64(text.toStdString());
}

}  // namespace

// --- The Base64 of many bytes ---

/// Fills a text editor with the Base64 of bytes, in lines: an editor is slow with a single line of
/// megabytes. Many bytes are added in several turns of the event loop, because with millions of
/// lines the window would not respond.
class DataPopover::Base64Filler {
public:
    /// `editor` must outlive the filler. `done` is called when all bytes are shown, if that took
    /// more than one turn.
    Base64Filler(QPlainTextEdit& editor, std::function<void()> done);

    /// Replaces the text. The bytes must stay unchanged until all are shown; until then the editor
    /// is read-only. Starting again abandons what is left.
    void start(Bytes bytes);

    bool isDone() const noexcept { return rest_.empty(); }

private:
    void addSome();
    QString takeLines();

    QPlainTextEdit& editor_;
    std::function<void()> done_;
    Bytes rest_;
    QTimer next_;
};

DataPopover::Base64Filler::Base64Filler(QPlainTextEdit& editor, std::function<void()> done)
    : editor_(editor), done_(std::move(done)) {
    next_.setInterval(0);
    QObject::connect(&next_, &QTimer::timeout, &editor, [this] { addSome(); });
}

void DataPopover::Base64Filler::start(Bytes bytes) {
    next_.stop();
    rest_ = bytes;
    const bool isLong = bytes.size() > bytesPerTurn;
    // If wrapped, all lines would be laid out again whenever the window is resized.
    editor_.setLineWrapMode(isLong ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
    editor_.setReadOnly(isLong);
    editor_.setPlainText(takeLines());
    if (isLong) {
        editor_.setUndoRedoEnabled(false);
        next_.start();
    }
}

void DataPopover::Base64Filler::addSome() {
    QTextCursor end(editor_.document());
    end.movePosition(QTextCursor::End);
    end.insertText(u'\n' + takeLines());
    if (isDone()) {
        next_.stop();
        editor_.setUndoRedoEnabled(true);
        editor_.setReadOnly(false);
        done_();
    }
}

QString DataPopover::Base64Filler::takeLines() {
    const Bytes taken = rest_.first(std::min(rest_.size(), bytesPerTurn));
    rest_ = rest_.subspan(taken.size());
    QString lines;
    for (std::size_t at = 0; at < taken.size(); at += bytesPerLine) {
        const Bytes line = taken.subspan(at, std::min(bytesPerLine, taken.size() - at));
        lines += QLatin1String(at > 0 ? "\n" : "") + QString::fromStdString(Base64::encoded(line));
    }
    return lines;
}

// --- The popover ---

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
    createLayout();
    connect(base64_, &QPlainTextEdit::textChanged, this, [this] { isEdited_ = true; });
    filler_ = std::make_unique<Base64Filler>(*base64_, [this] {
        isEdited_ = false;
        endActivity();
    });
    setBytes(bytes);
}

DataPopover::~DataPopover() = default;

void DataPopover::createLayout() {
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
    // Otherwise Return in the dump would open a file dialog: dialogs press their first button.
    apply->setDefault(true);
    layout->addWidget(progress_);
    layout->addWidget(buttons_);
    // The duration is not known: an indeterminate bar.
    progress_->setRange(0, 0);
    progress_->hide();
    progressDelay_.setSingleShot(true);
    progressDelay_.setInterval(ProgressPage::delay);
    connect(&progressDelay_, &QTimer::timeout, progress_, &QWidget::show);
    const int character = dump_->fontMetrics().horizontalAdvance(u'0');
    resize((dumpColumns + 10) * character, 30 * dump_->fontMetrics().height());
}

void DataPopover::setBytes(Bytes bytes) {
    const bool wasFilling = !filler_->isDone();
    bytes_.assign(bytes.begin(), bytes.end());
    dump_->setPlainText(DataText::dump(bytes_));
    note_->setText(DataText::dumpNote(bytes_));
    note_->setVisible(!note_->text().isEmpty());
    filler_->start(bytes_);
    isEdited_ = false;
    if (wasFilling) {
        endActivity();
    }
    if (!filler_->isDone()) {
        beginActivity(tr("Showing the bytes as Base64\u2026"));
    }
    setInvalid(false);
}

void DataPopover::applyText() {
    if (!isEdited_) {
        apply(bytes_);
        return;
    }
    const QString text = base64_->document()->toRawText();
    if (text.size() <= longText) {
        apply(bytesOf(text));
        return;
    }
    beginActivity(tr("Applying\u2026"));
    base64_->setReadOnly(true);
    BackgroundTask::run(
        *this, [text] { return bytesOf(text); },
        [this](const std::optional<std::vector<std::uint8_t>>& bytes) {
            base64_->setReadOnly(false);
            endActivity();
            apply(bytes);
        });
}

/// Without bytes: the text was not valid Base64.
void DataPopover::apply(const std::optional<std::vector<std::uint8_t>>& bytes) {
    setInvalid(!bytes);
    if (bytes) {
        apply_(*bytes);
    }
}

void DataPopover::setInvalid(bool isInvalid) {
    problem_->setVisible(isInvalid);
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, Colors::error(colors));
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
    beginActivity(tr("Importing\u2026"));
    BackgroundTask::run(
        *this, [path] { return ByteFile::read(path); },
        [this, path](const ByteFile::Content& content) {
            endActivity();
            if (content.error.isEmpty()) {
                apply_({reinterpret_cast<const std::uint8_t*>(content.bytes.constData()),
                        static_cast<std::size_t>(content.bytes.size())});
            } else {
                MessageDialog::show(*this,
                                    FileError(FileError::Code::readFailed, path, content.error));
            }
        });
}

void DataPopover::exportTo(const QString& path) {
    beginActivity(tr("Exporting\u2026"));
    const QByteArray bytes(reinterpret_cast<const char*>(bytes_.data()),
                           static_cast<qsizetype>(bytes_.size()));
    BackgroundTask::run(
        *this, [path, bytes] { return ByteFile::write(path, bytes); },
        [this, path](const QString& error) {
            endActivity();
            if (!error.isEmpty()) {
                const FileError failure(FileError::Code::writeFailed, path, error);
                MessageDialog::show(
                    *this, failure.message(),
                    tr("%1\n\nThe data is still in the document. Export it somewhere else.")
                        .arg(failure.failureReason()));
            }
        });
}

/// The buttons are disabled until everything has ended: what they began, and the filling with
/// Base64.
void DataPopover::beginActivity(const QString& activity) {
    ++activities_;
    buttons_->setEnabled(false);
    progress_->setAccessibleName(activity);
    progress_->setFormat(activity);
    progressDelay_.start();
}

void DataPopover::endActivity() {
    if (--activities_ > 0) {
        return;
    }
    progressDelay_.stop();
    progress_->hide();
    buttons_->setEnabled(true);
}
