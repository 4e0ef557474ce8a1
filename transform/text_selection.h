// Arithmetic of lines and columns on texts that the host has read: the selected text, a text spliced into a
// line, and where the caret stands after a text was typed in. Nothing here touches the IDE.
//
// Lines and columns count from 1, columns in UTF-16 code units; a text separates its lines by "\r\n". A sum
// outside the 32-bit range, and a column or length that the string functions refuse, leaves what it was to be
// assigned to as it is.
#pragma once

#include "base/text.h"

#include <cstdint>

namespace lintara::transform {

// The selected text. `lines` are the lines from `startLine` to `endLine`, no others; `endColumn` is the one
// just behind the selection. Where the selection ends in front of a line, a line break is appended to `lines`
// itself. "" for a selection that ends before it begins.
[[nodiscard]] Text GetTextSelection(Text& lines, std::int32_t startLine, std::int32_t endLine,
                                    std::int32_t startColumn, std::int32_t endColumn);

// `line` with `text` in front of the character at `column`, or at its end for the column behind its last
// character. "" for any other column.
[[nodiscard]] Text InsertTextInLine(TextView line, TextView text, std::int32_t column);

// Moves the caret at `line` and `column` to where it stands when `text` was inserted there. After a text of
// several lines the column is that behind its last line.
void TranslateCarret(std::int32_t& line, std::int32_t& column, TextView text);

}  // namespace lintara::transform
