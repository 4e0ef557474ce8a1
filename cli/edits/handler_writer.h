// Writes error handlers into the procedures of a group: the part that first insertion and replacement share.
#pragma once

#include "cli/edits/handler_block.h"
#include "cli/edits/handler_removal.h"
#include "cli/project/procedure_text.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lintara::cli {

class HandlerWriter {
  public:
    using Part = ProcedureText::Part;
    using Blocks = HandlerRemoval::Blocks;

    explicit HandlerWriter(WantedHandler wanted) : wanted_(std::move(wanted)) {}

    // The group that all else is about.
    void Begin(const EditTarget& target, const ProcedureGroup& group);
    // The lines that each of its procedures gets.
    [[nodiscard]] const std::vector<Text>& block() const { return block_; }

    // What speaks against the template's code, as it would be inserted.
    [[nodiscard]] std::optional<Skip> CheckCode(const ProcedureGroup& group) const;
    // What speaks against a handler in the part, in the place of `block` when there is one.
    [[nodiscard]] std::optional<Skip> CheckLabels(const EditTarget& target, const ProcedureText& text,
                                                  const Part& part,
                                                  const std::optional<HandlerBlock>& block) const;

    // Writes into the parts of `text` that have none of `blocks`. `isLed` tells of each part whether a
    // statement led to a handler that was taken out: it leads to the new one, and no other is needed. What
    // went elsewhere is taken back, and is a Skip; throws Refusal when that is not possible.
    [[nodiscard]] std::optional<Skip> Write(const EditTarget& target, const ProcedureGroup& group,
                                            const ProcedureText& text, const Blocks& blocks,
                                            const std::vector<bool>& isLed, ComponentReport& report);

  private:
    // One call of Write.
    struct Work {
        const EditTarget& target;
        const ProcedureText& text;
        const Blocks& blocks;
        const std::vector<bool>& isLed;
        ComponentReport& report;
        std::int32_t linesBefore = 0;
        std::vector<Line> closings = {};  // of each part, as the input had them
    };

    [[nodiscard]] std::optional<Skip> CheckJumps(const EditTarget& target, const ProcedureText& text,
                                                 const Part& part,
                                                 const std::optional<HandlerBlock>& block) const;
    [[nodiscard]] std::vector<Remark> Remarks(const Work& work) const;
    // Whether the module holds the blocks where they belong and is the same around them.
    [[nodiscard]] bool IsAsForeseen(const Work& work, const ProcedureGroup& group,
                                    std::size_t proceduresBefore);
    [[nodiscard]] std::int32_t FirstLines(const Part& part, const workspace::ProcedureInfo& now) const;
    void Settle(const Work& work, const ProcedureGroup& group) const;
    void RemarkLongLines(const Work& work, const workspace::ProcedureInfo& procedure) const;
    static void Withdraw(const Work& work, const ProcedureGroup& group);

    struct CheckedCode {
        Text code;
        std::optional<std::string> objection;
    };

    WantedHandler wanted_;
    std::vector<Text> block_;
    ProcedureText after_;
    mutable std::optional<CheckedCode> checked_;  // that CheckCode has seen last
};

// Whether the line's first statement is the one that leads errors to the label.
[[nodiscard]] bool LeadsTo(TextView line, TextView label);

}  // namespace lintara::cli
