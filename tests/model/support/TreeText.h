#pragma once

#include <QString>
#include <string_view>

#include "app/model/runtime/Plist.h"

class OutlineState;
class OutlineRow;
class PlistNode;

/// The value that `TreeText::whole` writes in this way: `{name: 0, items: ["x", true, data 0aff]}`.
/// A number with a point is real, one without is an integer. Keys that are empty are
/// quoted, and whitespace between the parts is ignored. Anything else stops the test.
PlistValue tree(std::string_view text);

/// Trees and rows as text, one line per node, so that a failing comparison shows the whole picture.
namespace TreeText {

/// A scalar, or the type of a container: `"text"`, `5`, `1.5`, `true`, `date 0`, `data 0aff`,
/// `uid 7`, `dictionary`, `array`.
QString ofValue(const PlistValue& value);

/// A whole value, nested: `{a: 1, b: [true]}`.
QString whole(const PlistValue& value);

/// The node and what has been made below it, indented by two more spaces on each level: `key:
/// value`, with the number of children behind a container and "..." if they were not made yet.
/// Children whose parent link is wrong are marked with "!".
QString ofTree(PlistNode& node);

/// `  key: value` at the depth of the row, with `[+]` or `[-]` for containers, the index in front
/// ("2 key: ...", the root has none) and "(duplicate)" behind.
QString ofRow(const OutlineRow& row);

QString ofRows(const OutlineState& outline);

/// For each child of a dictionary "x" if an outline shows its key as repeated, else ".".
QString repeatedKeys(PlistNode& dictionary);

}  // namespace TreeText
