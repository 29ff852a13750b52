#include "app/ui/menus/RecentMenu.h"

#include <QHash>

#include "app/desktop/files/FilePath.h"
#include "app/desktop/session/RecentDocuments.h"

namespace {

/// The name of a file, with its folder where other files have the same name.
QString titleFor(const QString& path, const QHash<QString, int>& namesakes) {
    const QString name = FilePath::shownName(path);
    const QString title = namesakes[name] > 1 ? RecentMenu::tr("%1 (%2)").arg(
                                                    name, FilePath::shown(FilePath::folder(path)))
                                              : name;
    // A single one would underline the letter behind it.
    return QString(title).replace(u'&', QStringLiteral("&&"));
}

}  // namespace

RecentMenu::RecentMenu(QWidget* parent) : QMenu(tr("Open &Recent"), parent) {
    connect(this, &QMenu::aboutToShow, this, &RecentMenu::fill);
    fill();
}

void RecentMenu::fill() {
    clear();
    const QStringList paths = RecentDocuments::existingPaths();
    QHash<QString, int> namesakes;
    for (const QString& path : paths) {
        ++namesakes[FilePath::shownName(path)];
    }
    for (const QString& path : paths) {
        QAction* item = addAction(titleFor(path, namesakes));
        item->setStatusTip(FilePath::shown(path));
        connect(item, &QAction::triggered, this, [this, path] { Q_EMIT pathChosen(path); });
    }
    addSeparator();
    QAction* clearing = addAction(tr("&Clear Menu"));
    clearing->setEnabled(!paths.isEmpty());
    connect(clearing, &QAction::triggered, this, [] { RecentDocuments::clear(); });
}
