#include "app/ui/menus/HelpMenu.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeySequence>
#include <QLabel>
#include <QVBoxLayout>

#include "app/ui/dialogs/AboutBox.h"
#include "app/ui/dialogs/ManualWindow.h"

namespace {

struct KeyHelp {
    QString keys;
    QString meaning;
};

QString nameOf(const QKeySequence& keys) {
    return keys.toString(QKeySequence::NativeText);
}

/// The keys of the table and its fields, and second shortcuts of commands: what no menu shows.
QList<KeyHelp> keyHelp() {
    const auto pair = [](int one, int other) {
        return HelpMenu::tr("%1 or %2").arg(nameOf(one), nameOf(other));
    };
    return {
        {pair(Qt::Key_Return, Qt::Key_F2), HelpMenu::tr("Edit the key of the selected item")},
        {nameOf(Qt::Key_Tab), HelpMenu::tr("Go from a key to its value")},
        {nameOf(Qt::Key_F4), HelpMenu::tr("Choose the type of the current item")},
        {pair(Qt::Key_Menu, static_cast<int>(Qt::SHIFT) | Qt::Key_F10),
         HelpMenu::tr("Show the context menu of the selected items")},
        {nameOf(Qt::Key_Space),
         HelpMenu::tr("Switch the current item between true and false, or edit its date or data")},
        {nameOf(Qt::Key_Escape), HelpMenu::tr("Cancel editing")},
        {pair(Qt::Key_Right, Qt::Key_Left), HelpMenu::tr("Expand or collapse the selected items")},
        {pair(static_cast<int>(Qt::ALT) | Qt::Key_Right, static_cast<int>(Qt::ALT) | Qt::Key_Left),
         HelpMenu::tr("Expand or collapse them with everything inside")},
        {pair(static_cast<int>(Qt::ALT) | Qt::Key_Up, static_cast<int>(Qt::ALT) | Qt::Key_Down),
         HelpMenu::tr("Move the selected items up or down")},
        {pair(static_cast<int>(Qt::CTRL | Qt::SHIFT) | Qt::Key_Right,
              static_cast<int>(Qt::CTRL | Qt::SHIFT) | Qt::Key_Left),
         HelpMenu::tr("Expand or collapse everything")},
        {pair(Qt::Key_Delete, Qt::Key_Backspace), HelpMenu::tr("Delete the selected items")},
        {pair(Qt::Key_F3, static_cast<int>(Qt::SHIFT) | Qt::Key_F3),
         HelpMenu::tr("Go to the next or previous match")},
    };
}

QLabel* plainLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

}  // namespace

HelpMenu::HelpMenu(QWidget* window) : QMenu(tr("&Help"), window) {
    QAction* manual = addAction(tr("Tabulet &Manual"));
    manual->setShortcut(Qt::Key_F1);
    connect(manual, &QAction::triggered, window, [window] { ManualWindow::showFor(*window); });
    connect(addAction(tr("&Keyboard Shortcuts")), &QAction::triggered, this, &HelpMenu::showKeys);
    addSeparator();
    connect(addAction(tr("&About Tabulet")), &QAction::triggered, window,
            [window] { AboutBox::show(*window); });
}

void HelpMenu::showKeys() {
    auto* dialog = new QDialog(parentWidget());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Keyboard Shortcuts"));
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(plainLabel(tr("Keys that are not shown in the menus:"), dialog));
    auto* table = new QFormLayout;
    table->setHorizontalSpacing(24);
    table->setContentsMargins(0, 8, 0, 8);
    for (const KeyHelp& help : keyHelp()) {
        table->addRow(plainLabel(help.keys, dialog), plainLabel(help.meaning, dialog));
    }
    layout->addLayout(table);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    layout->addWidget(buttons);
    dialog->open();
}
