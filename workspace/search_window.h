// Some lines of a module and, for a target that holds line breaks, as many behind them as a match can reach,
// joined by line breaks. A search looks for matches that begin on the former, the window's own lines, or in
// their breaks.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "workspace/line_buffer.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lintara::workspace {

class SearchWindow {
  public:
    // For matches that reach at most `linesBehind` lines further than where they begin. With `fold`, the
    // window's text is the lines' case fold.
    SearchWindow(std::int32_t linesBehind, bool fold);

    // Begins the window at `line`.
    void MoveTo(const LineBuffer& lines, Line line);
    // Makes `text`, which is that of `line`, the window's one line.
    void Hold(TextView text, Line line);

    [[nodiscard]] std::int32_t ownLines() const { return ownLines_; }
    [[nodiscard]] TextView text() const { return text_; }
    // The characters at which a match can begin.
    [[nodiscard]] std::size_t ownSize() const { return ownSize_; }

    [[nodiscard]] Position PositionOf(std::size_t offset) const;
    // Of a column of the first line; a column behind its break means the beginning of the next line.
    [[nodiscard]] std::size_t OffsetOf(Column column) const;
    // Where the line ends that the offset lies on; the offset itself inside a line break.
    [[nodiscard]] std::size_t EndOfLine(std::size_t offset) const;

  private:
    // Of the line that the offset lies on, from 0.
    [[nodiscard]] std::size_t LineNumber(std::size_t offset) const;
    void FoldText();

    std::int32_t linesBehind_;
    std::int32_t ownLines_;
    bool fold_;
    Line first_{1};
    Text text_;
    Text piece_;
    std::vector<std::size_t> begins_;  // where each line begins in text_
    std::size_t ownSize_ = 0;
};

}  // namespace lintara::workspace
