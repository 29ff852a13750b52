#pragma once

#include <QString>
#include <optional>

#include "app/model/actions/PlistTransfer.h"

class PlistNode;
class QMimeData;
class QWidget;

/// Items from the clipboard or a drag, from whatever program.
namespace TransferReading {

/// The items in `data`, for insertion into `container`. Nothing if they cannot be read, or would
/// nest too deep for the document to be read again; `window` then shows why, below `headline`.
std::optional<PlistTransfer> read(const QMimeData& data, const PlistNode& container,
                                  QWidget& window, const QString& headline);

}  // namespace TransferReading
