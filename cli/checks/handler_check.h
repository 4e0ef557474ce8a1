// Looks whether procedures have the error handler that insertion would write now, or whether they have none.
#pragma once

#include "cli/checks/procedure_check.h"
#include "cli/edits/handler_insertion.h"
#include "cli/edits/label_settings.h"
#include "cli/project/procedure_text.h"

#include <expected>
#include <memory>

namespace lintara::cli {

// Finds procedures without a handler and handlers that are out of date. What insertion would skip is skipped.
// Where it finds something the module holds the handler afterwards, so it comes behind all other checks.
class HandlerCheck : public ProcedureCheck {
  public:
    // `settings` are those that the library reads the label of removals from; `findings` must outlive this.
    HandlerCheck(WantedHandler wanted, std::shared_ptr<LabelSettings> settings, Findings& findings)
        : ProcedureCheck(findings),
          wanted_(wanted),
          insertion_(std::move(wanted), {.wanted = true, .numbersToo = true}, std::move(settings)) {}

    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override {
        return insertion_.HasWork(module, procedure);
    }

  private:
    WantedHandler wanted_;
    HandlerInsertion insertion_;
};

// Finds procedures that have a handler.
class HandlerAbsenceCheck : public ProcedureCheck {
  public:
    explicit HandlerAbsenceCheck(Findings& findings) : ProcedureCheck(findings) {}

    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override;

  private:
    ProcedureText text_;
};

}  // namespace lintara::cli
