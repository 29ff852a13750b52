#include "app/ui/TransferReading.h"

#include "PlistCore/PlistError.h"
#include "app/desktop/PasteboardData.h"
#include "app/model/TransferError.h"
#include "app/ui/MessageDialog.h"

std::optional<PlistTransfer> TransferReading::read(const QMimeData& data, QWidget& window,
                                                   const QString& headline) {
    try {
        return PasteboardData::transferFrom(data);
    } catch (const TransferError& error) {
        MessageDialog::show(window, headline, error.message());
    } catch (const PlistError& error) {
        MessageDialog::show(window, headline, QString::fromStdString(error.errorDescription()));
    }
    return std::nullopt;
}
