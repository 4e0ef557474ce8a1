// Gathers what is wrong with the edits of one command, for the course of editing commands: checks each
// component, keeps what is needed to repeat a fault, and says it.
#pragma once

#include "cli/environment.h"
#include "cli/invariants/edit_check.h"
#include "cli/invariants/edit_rules.h"
#include "cli/output/line_changes.h"
#include "cli/scope/scope.h"
#include "workspace/diagnostic.h"
#include "workspace/workspace.h"

#include <csignal>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace lintara::cli {

// While it lives, Ctrl-C does not end the process: what is being told must reach the user, and the exit
// status whoever started the command.
class InterruptIgnored {
  public:
    InterruptIgnored();
    ~InterruptIgnored();
    InterruptIgnored(const InterruptIgnored&) = delete;
    InterruptIgnored& operator=(const InterruptIgnored&) = delete;

  private:
    struct sigaction before_ {};
};

class EditFaults {
  public:
    // `rules` must outlive this.
    explicit EditFaults(const EditRules& rules) : rules_(rules) {}

    // Which components and procedures may be edited; ahead of the first edit.
    void Begin(const std::vector<ScopedComponent>& scope);
    // The component of that index in the scope, whose bytes were those lines and are to be these. Several
    // threads may call it at a time, each for another component. Whether nothing is wrong with it.
    bool Check(std::size_t index, const FileLines& before, const FileLines& after, std::size_t headLines);

    // Once all components were checked: whether anything is wrong. Looks at those that are not in the scope,
    // too.
    [[nodiscard]] bool Found(const workspace::Workspace& workspace);
    // Keeps what was found, and says what it is and where it is kept. From then on, as long as this lives,
    // Ctrl-C is ignored.
    [[nodiscard]] workspace::Diagnostics Keep(const Environment& environment, std::string_view command);

  private:
    struct Checked {
        const workspace::Component* component = nullptr;
        const workspace::Project* project = nullptr;
        EditableProcedures editable = {};
        std::vector<Violation> violations = {};
    };

    const EditRules& rules_;
    std::vector<Checked> components_;
    std::optional<InterruptIgnored> interrupt_;
};

}  // namespace lintara::cli
