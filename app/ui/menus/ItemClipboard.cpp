#include "app/ui/menus/ItemClipboard.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMimeData>
#include <optional>

#include "app/desktop/pasteboard/PasteboardData.h"
#include "app/model/actions/DocumentActions.h"
#include "app/model/actions/InsertionPoint.h"
#include "app/model/actions/PlistTransfer.h"
#include "app/model/editing/PlistDocument.h"
#include "app/ui/dialogs/TransferReading.h"

void ItemClipboard::copy(const DocumentActions& actions) {
    if (actions.hasSelectedTopLevelNodes()) {
        QGuiApplication::clipboard()->setMimeData(new PasteboardData(actions.copy()));
    }
}

void ItemClipboard::cut(const DocumentActions& actions) {
    copy(actions);
    actions.deleteSelected();
}

bool ItemClipboard::canPaste(const DocumentActions& actions) {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return actions.canAddItem() && data != nullptr && PasteboardData::hasTransfer(*data);
}

void ItemClipboard::paste(const DocumentActions& actions, QWidget& window) {
    const std::optional<InsertionPoint> place =
        InsertionPoint::forNewItems(actions.outline(), actions.document().root());
    if (!canPaste(actions) || !place) {
        return;
    }
    const std::optional<PlistTransfer> transfer = TransferReading::read(
        *QGuiApplication::clipboard()->mimeData(), *place->container, window,
        QCoreApplication::translate("ItemClipboard", "The clipboard's contents can't be pasted."));
    if (transfer) {
        actions.paste(*transfer);
    }
}
