#pragma once

#include <QString>
#include <string_view>

/// Text from documents, for a single line among other text.
///
/// Line breaks and control characters become visible marks. So do the characters that embed,
/// override or isolate the direction of text and thereby reorder what is around them. Nothing else
/// is changed; cells show the result as plain text.
namespace SingleLineText {

/// How many bytes of a text are looked at: several times what fits on a screen, so that showing a
/// text costs the same whatever its length.
inline constexpr qsizetype longest = 4000;

/// The line for a text in UTF-8; what is longer than `longest` ends in an ellipsis.
QString fromUtf8(std::string_view utf8);

/// The line for `text`, which is not cut.
QString fromText(const QString& text);

}  // namespace SingleLineText
