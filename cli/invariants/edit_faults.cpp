#include "cli/invariants/edit_faults.h"

#include "cli/invariants/fault_folder.h"
#include "cli/output/terminal_text.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

namespace lintara::cli {
namespace {

std::string BytesNow(const workspace::Component& component) {
    std::string bytes;
    component.module->AppendCurrentBytes(bytes);
    return bytes;
}

std::string Sentence(const Violation& violation) {
    return (violation.line > 0 ? "line " + std::to_string(violation.line) + ": " : std::string()) +
           violation.message;
}

workspace::Diagnostic Told(const workspace::Component& component, const std::vector<Violation>& violations) {
    std::string message = "lintara would have damaged component " + Printable(component.name) + ": " +
                          violations.front().message;
    if (violations.size() > 1) {
        message += " (and at " + std::to_string(violations.size() - 1) + " more places)";
    }
    return {component.path, violations.front().line, message};
}

}  // namespace

InterruptIgnored::InterruptIgnored() {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGINT, &ignore, &before_);
}

InterruptIgnored::~InterruptIgnored() {
    sigaction(SIGINT, &before_, nullptr);
}

void EditFaults::Begin(const std::vector<ScopedComponent>& scope) {
    for (const ScopedComponent& scoped : scope) {
        Checked& checked = components_.emplace_back();
        checked.component = scoped.component;
        checked.project = scoped.project;
        for (const ProcedureGroup& group : scoped.groups) {
            for (const workspace::ProcedureInfo& procedure : group.reached) {
                checked.editable.push_back(procedure.number);
            }
        }
        std::ranges::sort(checked.editable);
    }
}

bool EditFaults::Check(std::size_t index, const FileLines& before, const FileLines& after,
                       std::size_t headLines) {
    Checked& checked = components_[index];
    const workspace::Module& module = *checked.component->module;
    const CodeNames names{checked.project->name(), checked.component->name};
    checked.violations =
        CheckEdit({before, after, headLines, module.encoding(), names}, rules_, checked.editable);
    return checked.violations.empty();
}

bool EditFaults::Found(const workspace::Workspace& workspace) {
    std::unordered_set<const workspace::Component*> inScope;
    for (const Checked& checked : components_) {
        inScope.insert(checked.component);
    }
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            const workspace::Module& module = *component->module;
            if (!inScope.contains(component.get()) && module.edited() &&
                BytesNow(*component) != module.originalBytes()) {
                components_.push_back({component.get(),
                                       project.get(),
                                       {},
                                       {{0, "it would change, though it was not to be edited"}}});
            }
        }
    }
    return std::ranges::any_of(components_, [](const Checked& c) { return !c.violations.empty(); });
}

workspace::Diagnostics EditFaults::Keep(const Environment& environment, std::string_view command) {
    interrupt_.emplace();
    workspace::Diagnostics told;
    FaultReport report{.command = command, .commandLine = environment.commandLine, .files = {}};
    for (const Checked& checked : components_) {
        if (checked.violations.empty()) {
            continue;
        }
        const workspace::Component& component = *checked.component;
        told.push_back(Told(component, checked.violations));
        FaultyFile& file = report.files.emplace_back();
        file.name = component.path.filename().string();
        file.before = component.module->originalBytes();
        file.after = BytesNow(component);
        std::ranges::transform(checked.violations, std::back_inserter(file.faults), Sentence);
    }
    std::string message = "nothing was written. This is a fault of lintara, not of your code. ";
    if (const auto folder = KeepFault(environment.stateFolder, report)) {
        message += "What led to it is kept in " + PrintablePath(*folder) +
                   ", which holds source code; please give it to the maintainers of lintara, if you may";
    } else {
        message += "What led to it could not be kept: " + folder.error();
    }
    told.push_back({{}, 0, message});
    return told;
}

}  // namespace lintara::cli
