// Insertion of error handlers that keeps only what does the code no harm, and what removal can take out
// again.
#pragma once

#include "cli/edits/handler_block.h"
#include "cli/edits/handler_removal.h"
#include "cli/edits/handler_replacement.h"
#include "cli/edits/handler_writer.h"
#include "cli/edits/label_settings.h"
#include "cli/edits/procedure_edit.h"
#include "cli/project/procedure_text.h"

#include <expected>
#include <memory>
#include <optional>

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
        : wanted_(std::move(wanted)),
          refresh_(refresh),
          settings_(settings),
          removal_(wanted_, settings),
          writer_(wanted_),
          replacement_(wanted_, refresh.numbersToo, writer_, removal_) {}

    HandlerInsertion(const HandlerInsertion&) = delete;  // its parts refer to each other
    HandlerInsertion& operator=(const HandlerInsertion&) = delete;
    HandlerInsertion(HandlerInsertion&&) = delete;
    HandlerInsertion& operator=(HandlerInsertion&&) = delete;
    ~HandlerInsertion() override = default;

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
    [[nodiscard]] bool IsOutOfDate() const;
    [[nodiscard]] std::optional<Skip> CheckBodies(const EditTarget& target) const;
    // What speaks against handlers in the procedures that have none.
    [[nodiscard]] std::optional<Skip> CheckSameLabel(const EditTarget& target,
                                                     const ProcedureText::Part& part,
                                                     const HandlerBlock& block) const;
    [[nodiscard]] std::optional<Skip> CheckOthers(const EditTarget& target,
                                                  const ProcedureGroup& group) const;

    WantedHandler wanted_;
    HandlerRefresh refresh_;
    std::shared_ptr<LabelSettings> settings_;
    HandlerRemoval removal_;
    HandlerWriter writer_;
    HandlerReplacement replacement_;

    ProcedureText text_;             // as the insertion finds it
    HandlerRemoval::Blocks blocks_;  // those that stand there already
};

}  // namespace lintara::cli
