#pragma once

#include <QByteArray>
#include <QString>

#include "app/model/runtime/Plist.h"

/// Documents for the tests of what is on the screen.
namespace Samples {

/// A dictionary with one entry of each type under the type's name, as keys "dictionary" to "uid".
PlistValue allTypes();

/// A dictionary of `count` integers, "k0" to …
PlistValue numbers(int count);

/// The bytes of `value` in `format`.
QByteArray bytes(const PlistValue& value, PlistFormat format);

void writeFile(const QString& path, const QByteArray& bytes);
QByteArray readFile(const QString& path);

/// What the bytes hold; an empty dictionary if they are no property list.
PlistValue valueOf(const QByteArray& bytes);

}  // namespace Samples
