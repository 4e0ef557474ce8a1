// Reads logical lines out of a line buffer.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "workspace/line_buffer.h"

#include <cstddef>
#include <vector>

namespace lintara::workspace {

class LogicalLineReader {
  public:
    explicit LogicalLineReader(const LineBuffer& lines) : lines_(&lines) {}

    // Reads the logical line that begins at the physical line `first`; returns the line after it.
    Line Read(Line first);

    // The text of the line read last, without the underscores that continue it.
    [[nodiscard]] TextView text() const { return text_; }
    // The physical line on which the character at `offset` stands.
    [[nodiscard]] Line LineOf(std::size_t offset) const;

    // The physical line on which the logical line that `line` belongs to begins.
    [[nodiscard]] Line StartOf(Line line);
    // The line after the last one of the logical line to which `line` belongs; `line` itself behind the
    // module.
    [[nodiscard]] Line EndOf(Line line);

  private:
    const LineBuffer* lines_;
    Line first_{1};
    Text text_;
    Text piece_;
    std::vector<std::size_t> continuations_;  // where the second and later physical lines begin in text_
};

}  // namespace lintara::workspace
