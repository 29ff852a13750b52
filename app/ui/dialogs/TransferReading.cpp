#include "app/ui/dialogs/TransferReading.h"

#include "app/desktop/pasteboard/PasteboardData.h"
#include "app/model/actions/PlistTransfer.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/NestingDepth.h"
#include "app/ui/dialogs/MessageDialog.h"

std::optional<PlistTransfer> TransferReading::read(const QMimeData& data,
                                                   const PlistNode& container, QWidget& window,
                                                   const QString& headline) {
    try {
        PlistTransfer transfer = PasteboardData::transferFrom(data);
        NestingDepth::check(transfer.entries, container);
        return transfer;
    } catch (const TransferError& error) {
        MessageDialog::show(window, headline, error.message());
    } catch (const PlistError& error) {
        MessageDialog::show(window, headline, QString::fromStdString(error.errorDescription()));
    }
    return std::nullopt;
}
