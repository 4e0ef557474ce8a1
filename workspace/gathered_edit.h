// Edits of neighbouring lines, gathered into one: these lines gave way to those. The procedure index is told
// of them at once, when somebody asks it; told of each one, it would read a statement that is continued over
// thousands of lines again for each of its lines.
#pragma once

#include "base/position.h"
#include "workspace/line_buffer.h"
#include "workspace/logical_line.h"

#include <cstdint>

namespace lintara::workspace {

class GatheredEdit {
  public:
    // The buffer must outlive it. Nothing is gathered at first.
    explicit GatheredEdit(const LineBuffer& lines) : lines_(&lines), reader_(lines) {}

    [[nodiscard]] bool empty() const { return empty_; }
    // `removed` lines from `begin` on gave way to `added` ones. The removed ones were whole logical lines;
    // the last of the new ones may go on behind them.
    [[nodiscard]] Line begin() const { return begin_; }
    [[nodiscard]] std::int32_t removed() const { return removed_; }
    [[nodiscard]] std::int32_t added() const { return added_; }

    // Whether `line` is one of the added ones, so that a new text of it alters nothing here.
    [[nodiscard]] bool Covers(Line line) const { return !empty_ && line >= begin_ && line < End(); }
    // Whether an edit that is about to be made from `line` on belongs here: among the added lines, or right
    // behind them when they may go on there.
    [[nodiscard]] bool Takes(Line line) const;

    // As ProcedureIndex::LinesChanged has it. Unless nothing is gathered, the edit belongs here.
    void Add(Line line, std::int32_t removed, std::int32_t added, bool lastContinued);
    void Clear() { empty_ = true; }

  private:
    [[nodiscard]] Line End() const { return begin_ + added_; }

    const LineBuffer* lines_;
    LogicalLineReader reader_;
    bool empty_ = true;
    Line begin_{1};
    std::int32_t removed_ = 0;
    std::int32_t added_ = 0;
};

}  // namespace lintara::workspace
