#include "app/ui/menus/WindowMenu.h"

#include <QActionGroup>
#include <QPointer>
#include <utility>

#include "app/ui/text/OwnDirection.h"

namespace {

/// The name of the document, with an asterisk where it has unsaved changes.
QString titleFor(const QWidget& window) {
    QString title = window.windowTitle();
    title.replace(QStringLiteral("[*]"),
                  window.isWindowModified() ? QStringLiteral("*") : QString());
    return OwnDirection::isolated(title).replace(u'&', QStringLiteral("&&"));
}

}  // namespace

WindowMenu::WindowMenu(std::function<QList<QWidget*>()> windows, QWidget* parent)
    : QMenu(tr("&Window"), parent), windows_(std::move(windows)) {
    connect(this, &QMenu::aboutToShow, this, &WindowMenu::fill);
}

void WindowMenu::fill() {
    clear();
    auto* group = new QActionGroup(this);
    for (QWidget* window : windows_()) {
        QAction* item = addAction(titleFor(*window));
        item->setCheckable(true);
        item->setChecked(window == parentWidget());
        group->addAction(item);
        connect(item, &QAction::triggered, window, [window] {
            window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
            window->raise();
            window->activateWindow();
        });
    }
}
