#pragma once

#include <QString>
#include <optional>

#include "app/model/PlistTransfer.h"

class QMimeData;
class QWidget;

/// Items that come from the clipboard or out of a drag, from whatever program.
namespace TransferReading {

/// The items in `data`. Nothing if they cannot be read, which is explained in `window` below
/// `headline`.
std::optional<PlistTransfer> read(const QMimeData& data, QWidget& window, const QString& headline);

}  // namespace TransferReading
