#include "app/ui/menus/FileMenu.h"

#include <QAction>
#include <QIcon>

#include "app/ui/menus/RecentMenu.h"

FileMenu::FileMenu(QWidget* parent) : QMenu(tr("&File"), parent) {
    add(tr("&New"), Qt::CTRL | Qt::Key_N, "document-new", &FileMenu::newChosen);
    add(tr("&Open\u2026"), Qt::CTRL | Qt::Key_O, "document-open", &FileMenu::openChosen);
    auto* recent = new RecentMenu(this);
    addMenu(recent);
    connect(recent, &RecentMenu::pathChosen, this, &FileMenu::recentChosen);
    addSeparator();
    add(tr("&Close"), Qt::CTRL | Qt::Key_W, "window-close", &FileMenu::closeChosen);
    save_ = add(tr("&Save"), Qt::CTRL | Qt::Key_S, "document-save", &FileMenu::saveChosen);
    saveAs_ = add(tr("Save &As\u2026"), Qt::CTRL | Qt::SHIFT | Qt::Key_S, "document-save-as",
                  &FileMenu::saveAsChosen);
    revert_ = add(tr("&Revert to Saved"), {}, "document-revert", &FileMenu::revertChosen);
    addSeparator();
    add(tr("&Quit"), Qt::CTRL | Qt::Key_Q, "application-exit", &FileMenu::quitChosen);
}

void FileMenu::setSavingEnabled(bool isEnabled) {
    save_->setEnabled(isEnabled);
    saveAs_->setEnabled(isEnabled);
}

void FileMenu::setRevertEnabled(bool isEnabled) {
    revert_->setEnabled(isEnabled);
}

QAction* FileMenu::add(const QString& title, const QKeySequence& key, const char* icon,
                       void (FileMenu::*chosen)()) {
    QAction* action = addAction(QIcon::fromTheme(QLatin1String(icon)), title);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [this, chosen] { (this->*chosen)(); });
    return action;
}
