// The logical lines among lines that were read already: a physical line with those that continue it.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <span>

namespace lintara::cli {

class LogicalLines {
  public:
    explicit LogicalLines(std::span<const Text> lines) : lines_(lines) {}

    // Goes to the next logical line, at first to the first one. False when there is none.
    bool Next();

    // The indexes of its first physical line and of the one after its last.
    [[nodiscard]] std::size_t first() const { return first_; }
    [[nodiscard]] std::size_t end() const { return end_; }
    // Its text, without the underscores that continue it; valid until Next.
    [[nodiscard]] TextView text() const { return first_ + 1 == end_ ? TextView(lines_[first_]) : joined_; }

  private:
    std::span<const Text> lines_;
    std::size_t first_ = 0;
    std::size_t end_ = 0;
    Text joined_;
};

}  // namespace lintara::cli
