// One kind of edit that a command does to procedures, with the checks that keep code from harm. Each is
// handed one procedure name after the other; a property's procedures come together.
#pragma once

#include "cli/edits/edit_target.h"

#include <expected>

namespace lintara::cli {

class ProcedureEdit {
  public:
    virtual ~ProcedureEdit() = default;

    // Whether the group was edited; or what speaks against it, and then it is as it was. Remarks go to
    // `report`. Throws Refusal.
    [[nodiscard]] virtual std::expected<bool, Skip> Apply(const EditTarget& target,
                                                          const ProcedureGroup& group,
                                                          ComponentReport& report) = 0;

    // The library's work alone, without checks. Whether it changed anything.
    [[nodiscard]] virtual bool ApplyExactly(const EditTarget& target, const ProcedureGroup& group) = 0;

    // Whether there is anything in a procedure that this edit might change.
    [[nodiscard]] virtual bool HasWork(const workspace::Module& module,
                                       const workspace::ProcedureInfo& procedure) const = 0;

    // What becomes of a procedure that this edit leaves as it was while others may not: "gets no numbers".
    [[nodiscard]] virtual std::string_view fate() const { return "was skipped"; }
};

}  // namespace lintara::cli
