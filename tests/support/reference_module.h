// What a code module must answer, written down as plainly as can be: every answer is worked out from the
// lines, with nothing remembered and no regard to speed. Tests compare the real module with it.
//
// It shares with the real one the character classes and nothing else.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/code_module.h"
#include "hostmodel/member_kind.h"
#include "workspace/module.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace lintara::support {

class ReferenceModule {
  public:
    std::vector<Text> lines;

    [[nodiscard]] std::int32_t CountOfLines() const { return static_cast<std::int32_t>(lines.size()); }
    [[nodiscard]] std::int32_t CountOfDeclarationLines() const;
    [[nodiscard]] std::vector<workspace::ProcedureInfo> Procedures() const;
    [[nodiscard]] std::vector<workspace::MemberInfo> Members() const;

    // False, with nothing changed, when the lines do not exist. No keyword is recased.
    bool InsertLines(std::int32_t line, TextView text);
    bool DeleteLines(std::int32_t line, std::int32_t count);
    bool ReplaceLine(std::int32_t line, TextView text);

    [[nodiscard]] std::optional<std::pair<Position, Position>> Find(TextView target, Position start,
                                                                    Position end,
                                                                    hostmodel::FindOptions options) const;

    // How many lines of `procedures`, which are all of this module, number `i` has.
    [[nodiscard]] std::int32_t CountLinesOf(const std::vector<workspace::ProcedureInfo>& procedures,
                                            std::size_t i) const;

  private:
    // A line with those that continue it, joined; `begins` tells where in it each physical line begins.
    struct LogicalLine {
        Text text;
        std::int32_t first = 1;
        std::int32_t last = 1;
        std::vector<std::size_t> begins;
    };
    [[nodiscard]] std::vector<LogicalLine> LogicalLines() const;
    [[nodiscard]] std::int32_t FirstHeader() const;
};

// The parts of `text` between line breaks.
[[nodiscard]] std::vector<Text> SplitAtBreaks(TextView text);

}  // namespace lintara::support
