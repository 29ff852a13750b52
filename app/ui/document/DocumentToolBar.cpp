#include "app/ui/document/DocumentToolBar.h"

#include <QAction>
#include <QIcon>

#include "app/ui/document/FormatPicker.h"
#include "app/ui/document/SearchField.h"
#include "app/ui/look/Glyph.h"

DocumentToolBar::DocumentToolBar(QWidget* parent)
    : QToolBar(tr("Document"), parent),
      add_(addButton(Glyph::plusIcon(), tr("Add Item"), tr("Add an item (⇧⌘N)"))),
      delete_(addButton(Glyph::minusIcon(), tr("Delete"), tr("Delete the selected items (⌫)"))),
      formatPicker_(new FormatPicker(this)),
      searchField_(new SearchField(this)) {
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    connect(add_, &QAction::triggered, this, &DocumentToolBar::addChosen);
    connect(delete_, &QAction::triggered, this, &DocumentToolBar::deleteChosen);

    addSeparator();
    addWidget(formatPicker_);
    auto* space = new QWidget(this);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(space);
    addWidget(searchField_);
}

QAction* DocumentToolBar::addButton(const QIcon& icon, const QString& title,
                                    const QString& tooltip) {
    QAction* action = addAction(icon, title);
    action->setToolTip(tooltip);
    return action;
}

void DocumentToolBar::setAddEnabled(bool isEnabled) {
    add_->setEnabled(isEnabled);
}

void DocumentToolBar::setDeleteEnabled(bool isEnabled) {
    delete_->setEnabled(isEnabled);
}
