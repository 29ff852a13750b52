#include "app/ui/TransferReading.h"

#include "PlistCore/PlistError.h"
#include "app/desktop/PasteboardData.h"
#include "app/model/NestingDepth.h"
#include "app/model/TransferError.h"
#include "app/ui/MessageDialog.h"

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
