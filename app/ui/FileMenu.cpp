#include "app/ui/FileMenu.h"

#include <QAction>
#include <QIcon>

FileMenu::FileMenu(QWidget* parent) : QMenu(tr("&File"), parent) {
    add(tr("&New"), Qt::CTRL | Qt::Key_N, "document-new", &FileMenu::newChosen);
    add(tr("&Open\u2026"), Qt::CTRL | Qt::Key_O, "document-open", &FileMenu::openChosen);
    addSeparator();
    add(tr("&Close"), Qt::CTRL | Qt::Key_W, "window-close", &FileMenu::closeChosen);
    save_ = add(tr("&Save"), Qt::CTRL | Qt::Key_S, "document-save", &FileMenu::saveChosen);
    saveAs_ = add(tr("Save &As\u2026"), Qt::CTRL | Qt::SHIFT | Qt::Key_S, "document-save-as",
                  &FileMenu::saveAsChosen);
    addSeparator();
    add(tr("&Quit"), Qt::CTRL | Qt::Key_Q, "application-exit", &FileMenu::quitChosen);
}

void FileMenu::setSavingEnabled(bool isEnabled) {
    save_->setEnabled(isEnabled);
    saveAs_->setEnabled(isEnabled);
}

QAction* FileMenu::add(const QString& title, const QKeySequence& key, const char* icon,
                       void (FileMenu::*chosen)()) {
    QAction* action = addAction(QIcon::fromTheme(QLatin1String(icon)), title);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [this, chosen] { (this->*chosen)(); });
    return action;
}
