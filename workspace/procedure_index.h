// Where the procedures of a module are: kept up to date edit by edit, without scanning the module again.
//
// The procedures stand in order of appearance. An edit scans the logical lines that it touched, and goes on
// only until the module looks as it did before, which mostly is at once.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/member_kind.h"
#include "workspace/line_buffer.h"
#include "workspace/logical_line.h"
#include "workspace/shifted_sequence.h"
#include "workspace/syntax.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace lintara::workspace {

class ProcedureIndex {
  public:
    // How far a procedure reaches.
    struct Extent {
        ProcedureWord word = ProcedureWord::Sub;
        bool closed = true;  // else it reaches to the end of the module
        Line closing;

        // Whether it is still open at the logical line that begins at `line`, below its header.
        [[nodiscard]] bool IsOpenAt(Line line) const { return !closed || closing >= line; }
    };

    struct Procedure {
        Text name;
        hostmodel::MemberKind kind = hostmodel::MemberKind::vbext_pk_Proc;
        Line header;
        std::int32_t headerLines = 1;
        Extent extent;

        void ShiftBy(std::int32_t lines) {
            header += lines;
            extent.closing += lines;
        }
    };

    // Scans all lines. The buffer must outlive the index.
    explicit ProcedureIndex(const LineBuffer& lines);

    [[nodiscard]] std::size_t size() const { return procedures_.size(); }
    [[nodiscard]] Procedure operator[](std::size_t i) const;
    [[nodiscard]] Line HeaderOf(std::size_t i) const;
    // The closing line of a procedure, or the end of the module.
    [[nodiscard]] Line LastLineOf(std::size_t i) const;
    [[nodiscard]] const Text& NameOf(std::size_t i) const { return procedures_.Stored(i).name; }
    [[nodiscard]] hostmodel::MemberKind KindOf(std::size_t i) const { return procedures_.Stored(i).kind; }

    // The first procedure of that name (without regard to case), and of that kind if one is given.
    [[nodiscard]] std::optional<std::size_t> Find(TextView name,
                                                  std::optional<hostmodel::MemberKind> kind) const;
    // How many procedures have their header above `line`.
    [[nodiscard]] std::size_t CountAbove(Line line) const;

    // Whether `line`, a logical line of its own whose text is `newText` now, neither was nor is the edge of a
    // procedure. Then the index need not be told of the new text.
    [[nodiscard]] bool IsNoEdge(Line line, TextView newText) const;
    // Tells the index that `removed` lines from `line` on gave way to `added` new ones; the buffer holds the
    // new text already. `lastContinued`: in the old text, the line before line + removed was continued by it.
    void LinesChanged(Line line, std::int32_t removed, std::int32_t added, bool lastContinued);

  private:
    [[nodiscard]] Extent ExtentOf(std::size_t i) const;
    void Replace(std::size_t begin, std::size_t end, std::vector<Procedure> found);
    [[nodiscard]] bool SameNameAndKind(std::size_t i, hostmodel::MemberKind kind, TextView name) const;
    void BuildNames() const;

    const LineBuffer* lines_;
    LogicalLineReader reader_;
    ShiftedSequence<Procedure> procedures_;
    // Open addressing over the folded names; a slot holds 1 + a procedure's number. Empty when out of date.
    mutable std::vector<std::uint32_t> names_;
};

}  // namespace lintara::workspace
