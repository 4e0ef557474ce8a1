// Looks whether line numbers are those that insertion would write now, or whether there are none. They walk
// the procedures like edits, but leave every module as it was.
#pragma once

#include "cli/checks/procedure_check.h"
#include "cli/edits/number_insertion.h"
#include "cli/edits/number_removal.h"
#include "cli/project/procedure_text.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <vector>

namespace lintara::cli {

// Finds procedures without numbers, and numbers that are out of date, there twice, or missing between others.
// What insertion would skip is skipped, but for numbers that are there twice: those are wrong in any case.
class NumberCheck : public ProcedureCheck {
  public:
    // `findings` must outlive this.
    NumberCheck(NumberOptions numbers, Findings& findings);

    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override {
        return insertion_.HasWork(module, procedure);
    }

  private:
    // The number in front of each line of a body.
    using Numbers = std::vector<std::optional<std::int64_t>>;

    void FindDuplicates(const EditTarget& target, const workspace::ProcedureInfo& procedure,
                        const ProcedureText::Part& part, const Numbers& numbers);
    void Compare(const EditTarget& target, const workspace::ProcedureInfo& procedure,
                 const ProcedureText::Part& part, const Numbers& before, const Numbers& after);

    NumberInsertion insertion_;
    ProcedureText text_;
    ProcedureText after_;
};

// Finds procedures that have numbers which removal would take out. What removal would skip is skipped.
class NumberAbsenceCheck : public ProcedureCheck {
  public:
    explicit NumberAbsenceCheck(Findings& findings) : ProcedureCheck(findings) {}

    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override {
        return removal_.HasWork(module, procedure);
    }

  private:
    NumberRemoval removal_;
    ProcedureText text_;
};

}  // namespace lintara::cli
