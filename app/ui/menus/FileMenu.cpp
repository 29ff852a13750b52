#include "app/ui/menus/FileMenu.h"

#include <QAction>
#include <QHash>
#include <QIcon>

#include "app/desktop/files/FilePath.h"
#include "app/desktop/session/RecentDocuments.h"
#include "app/ui/text/OwnDirection.h"

namespace {

/// The name of a file, with its folder where other files have the same name.
QString titleFor(const QString& path, const QHash<QString, int>& namesakes) {
    const QString name = FilePath::shownName(path);
    const QString title = namesakes[name] > 1 ? FileMenu::tr("%1 (%2)").arg(
                                                    name, FilePath::shown(FilePath::folder(path)))
                                              : name;
    // A single ampersand would underline the letter after it.
    return OwnDirection::isolated(title).replace(u'&', QStringLiteral("&&"));
}

}  // namespace

FileMenu::FileMenu(QWidget* parent) : QMenu(tr("&File"), parent) {
    add(tr("&New"), Qt::CTRL | Qt::Key_N, "document-new", &FileMenu::newChosen);
    add(tr("&Open\u2026"), Qt::CTRL | Qt::Key_O, "document-open", &FileMenu::openChosen);
    recent_ = addMenu(tr("Open &Recent"));
    connect(recent_, &QMenu::aboutToShow, this, &FileMenu::fillRecent);
    fillRecent();
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

void FileMenu::fillRecent() {
    recent_->clear();
    const QStringList paths = RecentDocuments::existingPaths();
    QHash<QString, int> namesakes;
    for (const QString& path : paths) {
        ++namesakes[FilePath::shownName(path)];
    }
    for (const QString& path : paths) {
        QAction* item = recent_->addAction(titleFor(path, namesakes));
        item->setStatusTip(FilePath::shown(path));
        connect(item, &QAction::triggered, this, [this, path] { Q_EMIT recentChosen(path); });
    }
    recent_->addSeparator();
    QAction* clearing = recent_->addAction(tr("&Clear Menu"));
    clearing->setEnabled(!paths.isEmpty());
    connect(clearing, &QAction::triggered, this, [] { RecentDocuments::clear(); });
}
