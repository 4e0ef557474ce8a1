// Insertion of line numbers that keeps only what does the code no harm, and what removal can undo.
#pragma once

#include "cli/edits/number_removal.h"
#include "cli/edits/procedure_edit.h"
#include "cli/options.h"
#include "cli/project/procedure_text.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

// With numbers by module, the number of a line is this and its line in the module.
inline constexpr std::int32_t moduleNumberOffset = 10000;

class NumberInsertion : public ProcedureEdit {
  public:
    explicit NumberInsertion(const NumberOptions& numbers);

    // Refuses the whole command when a number would not have five digits, so that removal could not take it
    // off again.
    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool ApplyExactly(const EditTarget& target, const ProcedureGroup& group) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override;
    [[nodiscard]] std::string_view fate() const override { return "gets no numbers"; }

  private:
    using Part = ProcedureText::Part;

    // Numbers the group that `text_` holds, once its ranges were compared. What has numbers gets new ones.
    [[nodiscard]] std::optional<Skip> Number(const EditTarget& target, const ProcedureGroup& group);
    [[nodiscard]] std::optional<Line> FirstNumber() const;
    // Whether the numbers that the group has are those that it would get; it stays as it is.
    [[nodiscard]] bool IsNumberedAlready(const EditTarget& target, const ProcedureGroup& group);

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
    void RemarkLimit(const EditTarget& target, const ProcedureGroup& group, const Part& part,
                     ComponentReport& report) const;
    // Lines that fitted into what the IDE accepts, and no longer do.
    void RemarkLongLines(const EditTarget& target, const Part& part, ComponentReport& report);
    void Undo(const EditTarget& target);

    // The number that stands in front of the line now.
    [[nodiscard]] std::optional<std::int64_t> NumberOf(const EditTarget& target, Line line);
    // What the library is to number the group from, with its procedures as they stand now.
    [[nodiscard]] std::int32_t BaseOf(const EditTarget& target, const ProcedureGroup& group) const;
    // "--base 10000 with --step 5", for messages.
    [[nodiscard]] std::string NumberingText() const;
    // The offset of the body's last line from the base, if every line is numbered.
    [[nodiscard]] std::int64_t LastOffset(const Part& part) const;

    NumberOptions numbers_;
    std::int32_t base_ = 0;  // of the group
    NumberRemoval removal_;
    ProcedureText text_;    // as the insertion found it
    ProcedureText before_;  // ahead of the removal that came first
    bool removedFirst_ = false;
    std::vector<Remark> remarks_;  // of that removal
    std::vector<std::size_t> indexes_;
    Text current_;
};

}  // namespace lintara::cli
