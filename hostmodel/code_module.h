// The source text of one component, as the IDE lets an add-in read and edit it. Lines count from 1; lines
// inside one text are joined by "\r\n". A call that fails has changed nothing.
#pragma once

#include "base/position.h"
#include "base/result.h"
#include "base/text.h"
#include "hostmodel/member_kind.h"
#include "hostmodel/members.h"

#include <cstdint>
#include <memory>

namespace lintara::hostmodel {

class VBComponent;

struct FindOptions {
    bool wholeWord = false;
    bool matchCase = false;
    bool patternSearch = false;

    friend bool operator==(const FindOptions&, const FindOptions&) = default;
};

class CodeModule {
  public:
    virtual ~CodeModule() = default;

    // The component that owns this module.
    [[nodiscard]] virtual Result<std::shared_ptr<VBComponent>> Parent() = 0;

    // `count` lines from `startLine`, without a line break at the end. Fails outside the module.
    [[nodiscard]] virtual Result<Text> Lines(Line startLine, std::int32_t count) = 0;
    // Inserts `text`, which may hold several lines, ahead of `line`.
    [[nodiscard]] virtual Result<void> InsertLines(Line line, TextView text) = 0;
    [[nodiscard]] virtual Result<void> DeleteLines(Line startLine, std::int32_t count) = 0;
    [[nodiscard]] virtual Result<void> ReplaceLine(Line line, TextView text) = 0;

    // The first line of the procedure's block: blank and comment lines ahead of its header are its own.
    [[nodiscard]] virtual Result<Line> ProcStartLine(TextView name, MemberKind kind) = 0;
    // The (first) line of the procedure's header.
    [[nodiscard]] virtual Result<Line> ProcBodyLine(TextView name, MemberKind kind) = 0;
    // The number of lines of the procedure's block.
    [[nodiscard]] virtual Result<std::int32_t> ProcCountLines(TextView name, MemberKind kind) = 0;
    // The name of the procedure whose block holds `line`, with its kind written to `kind`;
    // "" in the declarations, where `kind` stays as it was.
    [[nodiscard]] virtual Result<Text> ProcOfLine(Line line, MemberKind& kind) = 0;

    // The number of lines of the declarations section at the head of the module.
    [[nodiscard]] virtual Result<std::int32_t> CountOfDeclarationLines() = 0;
    [[nodiscard]] virtual Result<std::shared_ptr<hostmodel::Members>> Members() = 0;

    // Searches from `start` up to `end`, or to the end of the module when `end` is not after `start`.
    // Found: true, `start` is the first character of the match and `end` the place just after it.
    // Not found: false, and both positions stay.
    [[nodiscard]] virtual Result<bool> Find(TextView target, Position& start, Position& end,
                                            FindOptions options) = 0;
};

}  // namespace lintara::hostmodel
