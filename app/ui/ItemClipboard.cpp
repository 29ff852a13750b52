#include "app/ui/ItemClipboard.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMimeData>

#include "PlistCore/PlistError.h"
#include "app/desktop/PasteboardData.h"
#include "app/model/DocumentActions.h"
#include "app/model/PlistTransfer.h"
#include "app/model/TransferError.h"
#include "app/ui/MessageDialog.h"

namespace {

void explain(QWidget& window, const QString& reason) {
    MessageDialog::show(
        window, QCoreApplication::translate("ItemClipboard", "The clipboard cannot be pasted."),
        reason);
}

}  // namespace

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
    if (!canPaste(actions)) {
        return;
    }
    try {
        actions.paste(PasteboardData::transferFrom(*QGuiApplication::clipboard()->mimeData()));
    } catch (const TransferError& error) {
        explain(window, error.message());
    } catch (const PlistError& error) {
        explain(window, QString::fromStdString(error.errorDescription()));
    }
}
