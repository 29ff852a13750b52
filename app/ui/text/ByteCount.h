#pragma once

#include <QString>

/// Sizes of data for people.
namespace ByteCount {

/// "Zero kB", "1 byte", "12 bytes", then decimal units: whole kB, one decimal for MB, two from GB
/// on, without zeros at the end ("66 kB", "1.2 MB", "3 GB"). A figure that rounds up to 1000 moves
/// to the next unit. The decimal sign is the user's.
QString text(qint64 count);

}  // namespace ByteCount
