// `Find` over the lines of a module. A search reads line by line what is near; it is spared the rest by the
// memory of targets that are sought again and again, and by the index of words when whole words are sought.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/code_module.h"
#include "workspace/line_buffer.h"
#include "workspace/target_memory.h"
#include "workspace/target_search.h"
#include "workspace/word_index.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace lintara::workspace {

class Finder {
  public:
    // The buffer must outlive the finder.
    explicit Finder(const LineBuffer& lines) : lines_(&lines), memory_(lines) {}

    // The first match of `target` that begins at or after `start` and lies wholly before `end`. An end that
    // is not after the start, or whose line is -1, is the end of the module; a column of -1 the end of its
    // line.
    [[nodiscard]] std::optional<Match> Find(TextView target, Position start, Position end,
                                            hostmodel::FindOptions options);

    // As TargetMemory has it.
    void TextChanged(Line line, TextView text);
    void LinesMoved(Line line, std::int32_t removed, std::int32_t added);

    // Drops what only speeds up further searches.
    void Forget();

  private:
    // Where a search begins, what limits it, and the last line to look at.
    struct Stretch {
        Position start;
        std::optional<Position> limit;
        Line last;
    };

    [[nodiscard]] Stretch StretchOf(Position start, Position end) const;
    [[nodiscard]] std::optional<Position> LimitOf(Position start, Position end) const;
    // In lines that the memory knows to hold a match.
    [[nodiscard]] std::optional<Match> FindInKnown(TargetSearch& search, const LineSet& known,
                                                   const Stretch& stretch) const;
    // In the lines that hold the words, or in all of them when there are none; counts them in `linesRead`.
    [[nodiscard]] std::optional<Match> FindByReading(TargetSearch& search,
                                                     std::span<const WordIndex::Word> words,
                                                     const Stretch& stretch, std::int32_t& linesRead);
    // The index for one of the words; null when there is none yet.
    [[nodiscard]] const WordIndex* IndexFor(std::span<const WordIndex::Word> words) const;
    const WordIndex& MakeIndex(TextView anchor);
    void DropOutgrown();

    const LineBuffer* lines_;
    TargetMemory memory_;
    std::vector<std::unique_ptr<WordIndex>> indexes_;  // the newest last
};

}  // namespace lintara::workspace
