#include "app/ui/dialogs/RecoveryDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/desktop/files/FilePath.h"
#include "app/ui/dialogs/MessageDialog.h"

namespace {

/// Where rows remember the number of their document.
constexpr int numberRole = Qt::UserRole;

/// Wide enough for most paths, in device-independent pixels.
constexpr int dialogWidth = 520;

/// Keeps the lines of one document together.
constexpr int rowSpacing = 3;

QString placeOf(const RecoverableDocument& document) {
    const QString path = document.filePath();
    return path.isEmpty() ? RecoveryDialog::tr("Never saved")
                          : FilePath::shown(FilePath::folder(path));
}

QString describe(const RecoverableDocument& document) {
    const RecoveryRecord& record = document.record();
    QString text = record.title + QLatin1Char('\n') + placeOf(document);
    if (record.backedUpAt.isValid()) {
        const QString time =
            QLocale().toString(record.backedUpAt.toLocalTime(), QLocale::ShortFormat);
        text += RecoveryDialog::tr(" · Changed %1").arg(time);
    }
    if (document.hasFailedTooOften()) {
        text += QLatin1Char('\n') +
                RecoveryDialog::tr(
                    "Tabulet quit unexpectedly twice while recovering it. The backup is in “%1”.")
                    .arg(FilePath::shown(document.contentPath()));
    } else if (document.hasFileChanged()) {
        text += QLatin1Char('\n') +
                RecoveryDialog::tr("Its file has changed since then, so it will open as a copy.");
    }
    return text;
}

QLabel* explanation(QWidget* parent) {
    auto* label = new QLabel(
        RecoveryDialog::tr("Tabulet quit unexpectedly. These documents have unsaved changes:"),
        parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

}  // namespace

RecoveryDialog::RecoveryDialog(std::vector<RecoverableDocument> documents, QWidget* parent)
    : QDialog(parent), documents_(std::move(documents)), list_(new QListWidget(this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Recover Documents"));
    list_->setAccessibleName(tr("Documents"));
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setWordWrap(true);
    list_->setSpacing(rowSpacing);
    list_->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    for (int number = 0; number < static_cast<int>(documents_.size()); ++number) {
        addRow(number);
    }
    list_->selectAll();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(explanation(this));
    layout->addWidget(list_);
    layout->addWidget(createButtons());
    connect(list_, &QListWidget::itemSelectionChanged, this, &RecoveryDialog::updateButtons);
    updateButtons();
    resize(dialogWidth, sizeHint().height());
    recover_->setFocus();
}

void RecoveryDialog::addRow(int number) {
    auto* row =
        new QListWidgetItem(describe(documents_.at(static_cast<std::size_t>(number))), list_);
    row->setData(numberRole, number);
}

QWidget* RecoveryDialog::createButtons() {
    auto* buttons = new QDialogButtonBox(this);
    recover_ = buttons->addButton(tr("Recover"), QDialogButtonBox::AcceptRole);
    recover_->setDefault(true);
    QPushButton* later = buttons->addButton(tr("Later"), QDialogButtonBox::RejectRole);
    discard_ = buttons->addButton(tr("Discard…"), QDialogButtonBox::DestructiveRole);
    showFolder_ = buttons->addButton(tr("Show Folder"), QDialogButtonBox::ActionRole);
    connect(recover_, &QPushButton::clicked, this, &RecoveryDialog::recover);
    connect(later, &QPushButton::clicked, this, &QDialog::reject);
    connect(discard_, &QPushButton::clicked, this, &RecoveryDialog::askToDiscard);
    connect(showFolder_, &QPushButton::clicked, this, [this] {
        const int number = selectedNumbers().first();
        Q_EMIT showFolderChosen(documents_.at(static_cast<std::size_t>(number)).contentPath());
    });
    return buttons;
}

QList<int> RecoveryDialog::selectedNumbers() const {
    QList<int> numbers;
    for (const QListWidgetItem* row : list_->selectedItems()) {
        numbers.append(row->data(numberRole).toInt());
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

void RecoveryDialog::updateButtons() {
    const QList<int> numbers = selectedNumbers();
    recover_->setEnabled(std::any_of(numbers.begin(), numbers.end(), [this](int number) {
        return !documents_.at(static_cast<std::size_t>(number)).hasFailedTooOften();
    }));
    discard_->setEnabled(!numbers.isEmpty());
    showFolder_->setEnabled(numbers.size() == 1);
}

void RecoveryDialog::recover() {
    QList<int> numbers = selectedNumbers();
    numbers.removeIf([this](int number) {
        return documents_.at(static_cast<std::size_t>(number)).hasFailedTooOften();
    });
    for (const int number : numbers) {
        Q_EMIT recoverChosen(documents_.at(static_cast<std::size_t>(number)));
    }
    removeRows(numbers);
}

void RecoveryDialog::askToDiscard() {
    const QList<int> numbers = selectedNumbers();
    const QString question =
        numbers.size() == 1
            ? tr("Do you want to discard the changes to “%1”?")
                  .arg(documents_.at(static_cast<std::size_t>(numbers.first())).record().title)
            : tr("Do you want to discard the changes to %n documents?", nullptr,
                 static_cast<int>(numbers.size()));
    QMessageBox* box = MessageDialog::askToDiscard(*this, question);
    connect(box, &QMessageBox::finished, this, [this](int answer) {
        if (answer == QMessageBox::Discard) {
            discard();
        }
    });
}

void RecoveryDialog::discard() {
    const QList<int> numbers = selectedNumbers();
    for (const int number : numbers) {
        documents_.at(static_cast<std::size_t>(number)).remove();
    }
    removeRows(numbers);
}

void RecoveryDialog::removeRows(const QList<int>& numbers) {
    for (int row = list_->count() - 1; row >= 0; --row) {
        if (numbers.contains(list_->item(row)->data(numberRole).toInt())) {
            delete list_->takeItem(row);
        }
    }
    if (list_->count() == 0) {
        accept();
    }
}
