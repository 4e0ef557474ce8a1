// Remembers for a few targets of `Find` the lines where their matches begin. A walk over a module asks for
// the same few texts in procedure after procedure; the next match may be far away, or nowhere.
//
// A target is remembered once the searches for it have read as many lines as the module has, and forgotten
// once as many edits passed without a search for it. So neither costs more than the reading it stands for.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/code_module.h"
#include "workspace/line_buffer.h"
#include "workspace/line_set.h"
#include "workspace/target_search.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace lintara::workspace {

class TargetMemory {
  public:
    // The buffer must outlive the memory.
    explicit TargetMemory(const LineBuffer& lines) : lines_(&lines) {}

    // What is known of a target.
    struct Known {
        TargetSearch& search;
        const LineSet& lines;  // where its matches begin
    };
    // None when the target's lines are not remembered. Valid until the next call of another function.
    [[nodiscard]] std::optional<Known> LinesOf(TextView target, hostmodel::FindOptions options);
    // Tells the memory that a search for `target`, which spans no lines, read so many lines in vain.
    void SearchRead(TextView target, hostmodel::FindOptions options, std::int32_t lineCount);

    // Tells the memory that the text of `line` is `text` now.
    void TextChanged(Line line, TextView text);
    // Tells the memory that `removed` lines from `line` on gave way to `added` new ones, whose texts are to
    // be told by TextChanged.
    void LinesMoved(Line line, std::int32_t removed, std::int32_t added);

    void Forget() { recent_.clear(); }

  private:
    struct Target {
        TargetSearch search;
        std::int64_t linesRead = 0;  // by searches for it
        std::int64_t idleEdits = 0;  // since the last search for it
        std::optional<LineSet> lines = std::nullopt;
    };

    // The target, which becomes the last used one; null when it is not among the recent ones.
    [[nodiscard]] Target* Recall(TextView target, hostmodel::FindOptions options);
    void ReadLines(Target& target) const;

    const LineBuffer* lines_;
    std::vector<Target> recent_;  // the last used one last
};

}  // namespace lintara::workspace
