// `Find` over the lines of a module.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/code_module.h"
#include "workspace/line_buffer.h"
#include "workspace/word_index.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace lintara::workspace {

struct Match {
    Position start;  // its first character
    Position end;    // the place just after its last one
};

class Finder {
  public:
    // The buffer must outlive the finder.
    explicit Finder(const LineBuffer& lines) : lines_(&lines) {}

    // The first match of `target` that begins at or after `start` and lies wholly before `end`. An end that
    // is not after the start, or whose line is -1, is the end of the module; a column of -1 the end of its
    // line.
    [[nodiscard]] std::optional<Match> Find(TextView target, Position start, Position end,
                                            hostmodel::FindOptions options);

    // As WordIndex has it; without indexes there is nothing to do.
    void TextChanged(Line line, TextView text);
    void LinesMoved(Line line, std::int32_t removed, std::int32_t added);

    // Drops what only speeds up further searches.
    void Forget() { indexes_.clear(); }

  private:
    [[nodiscard]] std::optional<Position> LimitOf(Position start, Position end) const;
    // The index for one of the words; null when there is none yet.
    [[nodiscard]] const WordIndex* IndexFor(std::span<const WordIndex::Word> words) const;
    const WordIndex& MakeIndex(TextView anchor);
    void DropOutgrown();

    const LineBuffer* lines_;
    std::vector<std::unique_ptr<WordIndex>> indexes_;  // the newest last
};

}  // namespace lintara::workspace
