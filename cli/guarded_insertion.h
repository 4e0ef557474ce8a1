// Insertion of line numbers that keeps only what does the code no harm, and what removal can undo.
#pragma once

#include "cli/edit_target.h"
#include "cli/guarded_removal.h"
#include "cli/options.h"
#include "cli/procedure_text.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <stdexcept>
#include <vector>

namespace lintara::cli {

// A number would not have five digits, so that removal could not take it off again: the whole command is
// refused. The message names the options.
class NumbersTooWide : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class GuardedInsertion {
  public:
    explicit GuardedInsertion(const NumberOptions& numbers) : numbers_(numbers) {}

    // Whether the group was edited. Remarks go to `report`.
    // Throws NumbersTooWide.
    [[nodiscard]] std::expected<bool, Skip> Insert(const EditTarget& target, const ProcedureGroup& group,
                                                   ComponentReport& report);

  private:
    using Part = ProcedureText::Part;

    // Ahead of the library's work: what speaks against it.
    [[nodiscard]] std::optional<Skip> ClearTheWay(const EditTarget& target, const ProcedureGroup& group);
    [[nodiscard]] std::optional<Skip> RemoveFirst(const EditTarget& target, const ProcedureGroup& group);
    [[nodiscard]] std::optional<Skip> CheckForeignNumbers(const EditTarget& target) const;
    [[nodiscard]] std::optional<Skip> CheckContinuations(const EditTarget& target) const;

    // After it: takes back what must not stay.
    void BlankNumbers(const EditTarget& target, const Part& part);
    [[nodiscard]] std::optional<Skip> CheckResult(const EditTarget& target, const ProcedureGroup& group);
    [[nodiscard]] std::optional<Skip> CheckJumps(const EditTarget& target, const Part& part);
    [[nodiscard]] std::optional<Skip> CheckLimit(const EditTarget& target, const Part& part);
    [[nodiscard]] bool Settle(const EditTarget& target, const Part& part);
    void RequireFiveDigits(const EditTarget& target, const ProcedureGroup& group, const Part& part);
    void RemarkLimit(const ProcedureGroup& group, const Part& part, ComponentReport& report) const;
    // Lines that fitted into what the IDE accepts, and no longer do.
    void RemarkLongLines(const EditTarget& target, const Part& part, ComponentReport& report);
    void Undo(const EditTarget& target);

    // The number that stands in front of the line now.
    [[nodiscard]] std::optional<std::int64_t> NumberOf(const EditTarget& target, Line line);
    // The offset of the body's last line from the base, if every line is numbered.
    [[nodiscard]] std::int64_t LastOffset(const Part& part) const;

    NumberOptions numbers_;
    GuardedRemoval removal_;
    ProcedureText text_;    // as the insertion found it
    ProcedureText before_;  // ahead of the removal that came first
    bool removedFirst_ = false;
    std::vector<std::size_t> indexes_;
    Text current_;
};

}  // namespace lintara::cli
