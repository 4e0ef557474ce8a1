// Removal of line numbers that keeps only what does the code no harm.
#pragma once

#include "cli/edits/procedure_edit.h"
#include "cli/guards/existing_numbers.h"
#include "cli/guards/lines_to_keep.h"
#include "cli/project/procedure_text.h"

#include <array>
#include <expected>
#include <optional>
#include <vector>

namespace lintara::cli {

class NumberRemoval : public ProcedureEdit {
  public:
    // A group without numbers is left alone and not looked at closer.
    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool ApplyExactly(const EditTarget& target, const ProcedureGroup& group) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override;
    [[nodiscard]] std::string_view fate() const override { return "keeps its numbers"; }

    // The same as Apply for a group whose lines were read, and whose ranges were compared, by the caller.
    [[nodiscard]] std::expected<bool, Skip> RemoveFrom(const EditTarget& target, const ProcedureGroup& group,
                                                       const ProcedureText& text,
                                                       std::vector<Remark>& remarks);

  private:
    [[nodiscard]] bool FindNumbers(const ProcedureText& text);
    [[nodiscard]] std::optional<Skip> CheckNumbers(const EditTarget& target, const ProcedureText& text) const;
    void PutBackOthers(const EditTarget& target, const ProcedureGroup& group, const ProcedureText& text,
                       std::vector<Remark>& remarks);
    static void PutBackInserted(const EditTarget& target, const ProcedureText& text,
                                const ProcedureText::Part& part);

    ProcedureText text_;
    std::array<std::vector<NumberedLine>, 3> numbered_;  // of each part
    LinesToKeep kept_;
};

}  // namespace lintara::cli
