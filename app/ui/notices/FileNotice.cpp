#include "app/ui/notices/FileNotice.h"

#include <QAccessible>
#include <QPushButton>

FileNotice::FileNotice(const ExternalChanges& changes, QWidget* parent)
    : NoticeStrip({}, parent),
      changes_(changes),
      reload_(addButton(tr("&Reload"))),
      keep_(addButton(tr("&Keep Mine"))),
      save_(addButton(tr("&Save"))) {
    connect(reload_, &QPushButton::clicked, this, &FileNotice::reloadChosen);
    connect(keep_, &QPushButton::clicked, this, &FileNotice::keepChosen);
    connect(save_, &QPushButton::clicked, this, &FileNotice::saveChosen);
    hide();
}

void FileNotice::showTrouble(const QString& name) {
    const ExternalChanges::Trouble trouble = changes_.trouble();
    const bool isDeleted = trouble == ExternalChanges::Trouble::deleted;
    setText(textFor(name));
    reload_->setVisible(!isDeleted);
    keep_->setVisible(!isDeleted);
    save_->setVisible(isDeleted);
    setVisible(trouble != ExternalChanges::Trouble::none);
    if (isVisible()) {
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

QString FileNotice::textFor(const QString& name) const {
    switch (changes_.trouble()) {
        case ExternalChanges::Trouble::changed:
            return tr("The file “%1” has been changed by another program.").arg(name);
        case ExternalChanges::Trouble::unreadable:
            return tr("The file “%1” has been changed by another program and can no longer be "
                      "read. %2")
                .arg(name, changes_.reason());
        case ExternalChanges::Trouble::deleted:
            return tr("The file “%1” has been deleted or moved. Save the document to create it "
                      "again.")
                .arg(name);
        case ExternalChanges::Trouble::none:
            break;
    }
    return {};
}
