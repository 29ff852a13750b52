#pragma once

#include <QString>

#include "app/model/outline/OutlineRow.h"

/// What the columns of the table say about a row. Long texts are cut: see `SingleLineText`.
namespace RowText {

/// "Root", "Item 3" or the key.
QString key(const OutlineRow& row);

/// The name of the type.
QString type(const OutlineRow& row);

/// The value, or how many items there are.
QString value(const OutlineRow& row);

/// Whether the key or the value is shown as secondary text: it does not stand in the file
/// literally.
bool isKeySecondary(const OutlineRow& row);
bool isValueSecondary(const OutlineRow& row);

/// The notice for a key that another entry has too.
QString duplicateKeyNotice();

/// What a screen reader adds to the key: the level, whether the row is expanded, and whether the
/// key is a duplicate.
QString keyDescription(const OutlineRow& row);

}  // namespace RowText
