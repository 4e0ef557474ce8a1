// Replacement of error handlers by those that label and template give now. What was there comes back when the
// new ones cannot stand.
#pragma once

#include "cli/edits/handler_block.h"
#include "cli/edits/handler_removal.h"
#include "cli/edits/handler_writer.h"
#include "cli/edits/number_removal.h"
#include "cli/project/procedure_text.h"

#include <expected>
#include <optional>
#include <span>
#include <vector>

namespace lintara::cli {

class HandlerReplacement {
  public:
    using Blocks = HandlerRemoval::Blocks;

    // `numbersToo`: line numbers that stand in the way are taken out. `writer` and `removal` must outlive
    // this.
    HandlerReplacement(WantedHandler wanted, bool numbersToo, HandlerWriter& writer, HandlerRemoval& removal)
        : wanted_(std::move(wanted)), numbersToo_(numbersToo), writer_(writer), removal_(removal) {}

    // For a group whose ranges and bodies were checked and that `writer` has begun with. A property gets a
    // handler into each of its procedures. `text` and `blocks` are not what the module holds any more
    // afterwards.
    [[nodiscard]] std::optional<Skip> Replace(const EditTarget& target, const ProcedureGroup& group,
                                              ProcedureText& text, Blocks& blocks, ComponentReport& report);

  private:
    using Part = ProcedureText::Part;

    [[nodiscard]] std::optional<Skip> ReplaceUnnumbered(const EditTarget& target, const ProcedureGroup& group,
                                                        ProcedureText& text, Blocks& blocks, TextView label,
                                                        ComponentReport& report);
    [[nodiscard]] std::optional<Skip> TakeNumbersOut(const EditTarget& target, const ProcedureGroup& group,
                                                     ProcedureText& text, Blocks& blocks,
                                                     std::vector<Remark>& remarks);
    // That of the handlers that are there.
    [[nodiscard]] std::expected<Text, Skip> LabelOf(const EditTarget& target, const ProcedureText& text,
                                                    const Blocks& blocks) const;
    [[nodiscard]] std::optional<Skip> CheckBody(const EditTarget& target, const ProcedureText& text,
                                                const Part& part,
                                                const std::optional<HandlerBlock>& block) const;

    WantedHandler wanted_;
    bool numbersToo_;
    HandlerWriter& writer_;
    HandlerRemoval& removal_;
    NumberRemoval numberRemoval_;
    ProcedureText numbered_;  // ahead of the removal of its numbers
};

}  // namespace lintara::cli
