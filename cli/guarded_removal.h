// Removal of line numbers that keeps only what does the code no harm.
#pragma once

#include "cli/edit_target.h"
#include "cli/guards/existing_numbers.h"
#include "cli/procedure_text.h"

#include <array>
#include <expected>
#include <optional>
#include <vector>

namespace lintara::cli {

class GuardedRemoval {
  public:
    // Whether the group was edited. A group without numbers is left alone and not looked at closer.
    [[nodiscard]] std::expected<bool, Skip> Remove(const EditTarget& target, const ProcedureGroup& group);

    // The same for a group whose lines were read, and whose ranges were compared, by the caller.
    [[nodiscard]] std::expected<bool, Skip> RemoveFrom(const EditTarget& target, const ProcedureGroup& group,
                                                       const ProcedureText& text);

  private:
    [[nodiscard]] bool FindNumbers(const ProcedureText& text);
    [[nodiscard]] std::optional<Skip> CheckNumbers(const EditTarget& target, const ProcedureText& text) const;
    void PutBackOthers(const EditTarget& target, const ProcedureText& text);

    ProcedureText text_;
    std::array<std::vector<NumberedLine>, 3> numbered_;  // of each part
    std::vector<std::size_t> indexes_;
};

// The guard that insertion and removal share.
[[nodiscard]] std::optional<Skip> CheckRanges(const EditTarget& target, const ProcedureGroup& group);

}  // namespace lintara::cli
