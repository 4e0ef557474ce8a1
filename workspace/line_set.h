// A set of lines of a module that keeps in step with edits: `Find` remembers in it where a text stands.
//
// The lines above the last change are stored as they are, those behind it by their distance from the end of
// the module, which no edit above them alters. So nothing is shifted, and a walk of edits through the module
// moves each line from the one side to the other once.
#pragma once

#include "base/position.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace lintara::workspace {

class LineSet {
  public:
    // Empty, for a module of so many lines.
    explicit LineSet(std::int32_t lineCount) : lineCount_(lineCount) {}

    // The first line of the set that is `line` or comes after it.
    [[nodiscard]] std::optional<Line> NextFrom(Line line) const;
    [[nodiscard]] bool Contains(Line line) const { return NextFrom(line) == line; }

    // Takes in a line of the module.
    void Insert(Line line);
    void Erase(Line line);

    // Tells the set that `removed` lines of the module from `line` on gave way to `added` new ones. The
    // removed lines leave the set; the new ones are not in it.
    void LinesMoved(Line line, std::int32_t removed, std::int32_t added);

  private:
    [[nodiscard]] Line LineAt(std::int32_t distance) const { return Line{lineCount_ - distance}; }
    [[nodiscard]] bool BeginsBehind(Line line) const {
        return !behind_.empty() && LineAt(behind_.back()) == line;
    }
    // Puts the lines from `line` on on the one side, those above it on the other.
    void DivideAt(Line line);

    std::int32_t lineCount_;
    std::vector<Line> above_;           // ascending
    std::vector<std::int32_t> behind_;  // distances from the last line, ascending: the nearest line is last
};

}  // namespace lintara::workspace
