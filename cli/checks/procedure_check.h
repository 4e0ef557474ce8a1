// The part that all checks share: each walks the procedures like an edit, and keeps findings in place of its
// edits.
#pragma once

#include "cli/checks/finding.h"
#include "cli/edits/procedure_edit.h"
#include "cli/output/terminal_text.h"

#include <string>
#include <string_view>

namespace lintara::cli {

class ProcedureCheck : public ProcedureEdit {
  public:
    // Checks look at what guarded edits do.
    [[nodiscard]] bool ApplyExactly(const EditTarget&, const ProcedureGroup&) final { return false; }

  protected:
    // `findings` must outlive this.
    explicit ProcedureCheck(Findings& findings) : findings_(findings) {}

    // `at` is a line of the input. `about` names the procedures with their kind: one of a property, or all.
    template <class Procedures>
    void Find(const Procedures& about, std::string_view code, Line at, const std::string& message) {
        findings_.push_back({code, at, about.name, KindWord(about), TitleOf(about) + ": " + message});
    }

  private:
    template <class Procedures>
    [[nodiscard]] static std::string TitleOf(const Procedures& about) {
        return std::string(KindWord(about)) + " " + Printable(about.name);
    }

    Findings& findings_;
};

}  // namespace lintara::cli
