// Insertion of error handlers that keeps only what does the code no harm, and what removal can take out
// again.
#pragma once

#include "cli/edits/handler_block.h"
#include "cli/edits/handler_removal.h"
#include "cli/edits/label_settings.h"
#include "cli/edits/number_removal.h"
#include "cli/edits/procedure_edit.h"
#include "cli/project/procedure_text.h"

#include <expected>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace lintara::cli {

struct HandlerRefresh {
    bool wanted = false;  // handlers that are out of date are replaced
    bool numbersToo =
        false;  // line numbers that stand in the way are taken out; the next edit writes new ones
};

class HandlerInsertion : public ProcedureEdit {
  public:
    // `settings` are those that the library reads the label of removals from.
    HandlerInsertion(WantedHandler wanted, HandlerRefresh refresh, std::shared_ptr<LabelSettings> settings)
        : wanted_(std::move(wanted)), refresh_(refresh), settings_(settings), removal_(wanted_, settings) {}

    // A property gets a handler into each of its procedures that has none.
    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool ApplyExactly(const EditTarget& target, const ProcedureGroup& group) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override;
    [[nodiscard]] std::string_view fate() const override {
        return refresh_.wanted ? "gets no new error handler" : "gets no error handler";
    }

  private:
    using Part = ProcedureText::Part;
    using Blocks = HandlerRemoval::Blocks;

    [[nodiscard]] bool IsOutOfDate() const;
    // What speaks against handlers in the parts that get one, whose other lines are `bodies`.
    [[nodiscard]] std::optional<Skip> Check(const EditTarget& target, const ProcedureGroup& group) const;
    [[nodiscard]] std::optional<Skip> CheckBodies(const EditTarget& target) const;
    [[nodiscard]] std::optional<Skip> CheckBlock(const ProcedureGroup& group) const;
    [[nodiscard]] std::optional<Skip> CheckLabels(const EditTarget& target, const Part& part,
                                                  std::span<const Text> body) const;
    [[nodiscard]] std::vector<Remark> Remarks(const EditTarget& target) const;

    [[nodiscard]] std::expected<bool, Skip> Insert(const EditTarget& target, const ProcedureGroup& group,
                                                   ComponentReport& report);
    [[nodiscard]] std::expected<bool, Skip> Replace(const EditTarget& target, const ProcedureGroup& group,
                                                    ComponentReport& report);
    [[nodiscard]] std::optional<Skip> TakeNumbersOut(const EditTarget& target, const ProcedureGroup& group);
    [[nodiscard]] std::expected<Text, Skip> LabelOfBlocks(const EditTarget& target) const;

    [[nodiscard]] std::int32_t FirstLines(const Part& part, const workspace::ProcedureInfo& now) const;
    // Whether the module holds the blocks where they belong and is the same around them.
    [[nodiscard]] bool IsAsForeseen(const EditTarget& target, const ProcedureGroup& now,
                                    std::size_t proceduresBefore) const;
    void Settle(const EditTarget& target, const ProcedureGroup& now, ComponentReport& report) const;
    void RemarkLongLines(const EditTarget& target, const workspace::ProcedureInfo& procedure,
                         ComponentReport& report) const;
    // Throws Refusal when that is not possible.
    void Withdraw(const EditTarget& target, const ProcedureGroup& group) const;

    WantedHandler wanted_;
    HandlerRefresh refresh_;
    std::shared_ptr<LabelSettings> settings_;
    HandlerRemoval removal_;
    NumberRemoval numberRemoval_;

    ProcedureText text_;          // as the insertion finds it
    Blocks blocks_;               // those that stand there already and stay
    std::vector<Text> block_;     // the wanted one
    std::vector<Line> closings_;  // of each part, as the input had them
    std::int32_t linesBefore_ = 0;
    ProcedureText numbered_;  // ahead of the removal of its numbers
    bool numbersOut_ = false;
    bool replacing_ = false;
};

}  // namespace lintara::cli
