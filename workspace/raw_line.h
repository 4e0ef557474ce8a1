// The lines of a file as ranges of its bytes.
#pragma once

#include "workspace/encoding.h"

#include <cstddef>
#include <string_view>

namespace lintara::workspace {

// A line's text and what ends it, as byte offsets: the text is [begin, end), its line ending [end, next).
// The last line of a file may have no ending; then next == end.
struct RawLine {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t next = 0;
};

// The line that begins at byte `from` (which must lie before the end of `bytes`). CR LF, LF and a lone CR
// each end a line.
[[nodiscard]] RawLine NextRawLine(std::string_view bytes, std::size_t from, const Encoding& encoding);

}  // namespace lintara::workspace
