#pragma once

#include <QString>
#include <optional>

#include "app/model/actions/PlistTransfer.h"

class PlistNode;
class QMimeData;
class QWidget;

/// Items that come from the clipboard or out of a drag, from whatever program.
namespace TransferReading {

/// The items in `data`, which are to go into `container`. Nothing if they cannot be read, or would
/// make a document that nests too deep to be read again, which is explained in `window` below
/// `headline`.
std::optional<PlistTransfer> read(const QMimeData& data, const PlistNode& container,
                                  QWidget& window, const QString& headline);

}  // namespace TransferReading
