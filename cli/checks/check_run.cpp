#include "cli/checks/check_run.h"

#include "cli/checks/handler_check.h"
#include "cli/checks/number_check.h"
#include "cli/edits/insertion.h"
#include "cli/edits/procedure_editor.h"
#include "cli/edits/refusal.h"
#include "cli/output/json_text.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/project/open_project.h"
#include "cli/scope/exclusions.h"
#include "cli/scope/scope.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>
#include <vector>

namespace lintara::cli {
namespace {

struct CheckedComponent {
    const workspace::Project* project = nullptr;
    const workspace::Component* component = nullptr;
    Findings findings;
    Findings notes;
};

// Guards speak of what they kept from harm; here nothing is edited.
Finding AsNote(const SkippedProcedure& skipped) {
    return {
        CodeOf(skipped.reason), skipped.at, skipped.name, skipped.kind,
        std::string(skipped.kind) + " " + Printable(skipped.name) + " would be skipped: " + skipped.message};
}

class CheckRun {
  public:
    CheckRun(const CheckOptions& options, Environment& environment)
        : options_(options),
          environment_(environment),
          messages_(environment.streams, options.output.quiet) {}

    ExitStatus Run() {
        status_ = Work();
        Streams& streams = environment_.streams;
        if (options_.output.json) {
            streams.out.Write(AsJson());
        } else {
            streams.out.Write(AsLines());
        }
        return status_;
    }

  private:
    ExitStatus Fail(ExitStatus status, const workspace::Diagnostics& errors) {
        messages_.Errors(errors);
        errors_.insert(errors_.end(), errors.begin(), errors.end());
        checked_.clear();
        return status;
    }

    ExitStatus Work() {
        Progress progress(environment_.streams, !options_.output.quiet);
        auto opened = OpenProject(workspace_, options_.read, environment_.streams.in, progress);
        if (!opened) {
            return Fail(opened.error().status, opened.error().errors);
        }
        for (const workspace::Diagnostic& warning : opened->warnings) {
            messages_.Warning(warning);
        }
        messages_.Errors(opened->unreadable);
        errors_ = opened->unreadable;
        const auto scope = ResolveScope(workspace_, options_.scope);
        if (!scope) {
            return Fail(ExitStatus::Usage, {{{}, 0, scope.error()}});
        }
        for (const std::string& warning : UnmatchedExclusions(workspace_, options_.scope)) {
            messages_.Warning({{}, 0, warning});
        }
        try {
            for (const ScopedComponent& component : *scope) {
                progress.Update("checking", checked_.size(), scope->size());
                Check(component);
            }
        } catch (const Refusal& refusal) {
            return Fail(ExitStatus::Usage, {{{}, 0, refusal.what()}});
        }
        progress.Clear();
        Tell();
        if (!errors_.empty()) {
            return ExitStatus::Failed;
        }
        return CountOf(&CheckedComponent::findings) > 0 ? ExitStatus::NotFound : ExitStatus::Done;
    }

    void Check(const ScopedComponent& scope) {
        CheckedComponent& checked = checked_.emplace_back(scope.project, scope.component);
        const KeptProcedures kept = FindKept(scope);
        // Handlers last: looking at them may change the module.
        if (options_.convention.numbers == Wish::Present) {
            Walk(scope, std::make_unique<NumberCheck>(options_.numbers, checked.findings),
                 environment_.platform, kept, checked);
        } else if (options_.convention.numbers == Wish::Absent) {
            Walk(scope, std::make_unique<NumberAbsenceCheck>(checked.findings), environment_.platform, kept,
                 checked);
        }
        if (options_.convention.handlers == Wish::Present) {
            Platform platform = environment_.platform;
            const auto settings = std::make_shared<LabelSettings>(platform.settings, options_.handler.label);
            platform.settings = settings;
            Walk(scope, std::make_unique<HandlerCheck>(options_.handler, settings, checked.findings),
                 std::move(platform), kept, checked);
        } else if (options_.convention.handlers == Wish::Absent) {
            Walk(scope, std::make_unique<HandlerAbsenceCheck>(checked.findings), environment_.platform, kept,
                 checked);
        }
        Arrange(checked);
    }

    // Procedures that insertion leaves alone as a whole: handler and numbers go together.
    [[nodiscard]] KeptProcedures FindKept(const ScopedComponent& scope) const {
        if (options_.convention.numbers != Wish::Present || options_.convention.handlers != Wish::Present) {
            return {};
        }
        InsertionOptions insertion{.work = {.errorHandlers = true, .lineNumbers = true},
                                   .numbers = options_.numbers,
                                   .handler = options_.handler,
                                   .refresh = true};
        insertion.numbers.renumber = true;
        return NumbersAtRisk(insertion, scope, environment_);
    }

    void Walk(const ScopedComponent& scope, std::unique_ptr<ProcedureEdit> check, Platform platform,
              const KeptProcedures& kept, CheckedComponent& checked) {
        EditPlan plan;
        plan.edits.push_back(std::move(check));
        ProcedureEditor editor(workspace_, MakeGlobals(workspace_, environment_), std::move(platform),
                               std::move(plan));
        const ComponentReport report = editor.Edit(scope, kept);
        std::ranges::transform(report.skipped, std::back_inserter(checked.notes), AsNote);
    }

    // Puts both lists into the order of the lines; what two checks skipped for one reason is told once.
    void Arrange(CheckedComponent& checked) const {
        const auto place = [](const Finding& f) { return std::tie(f.at, f.code, f.message); };
        std::ranges::stable_sort(checked.notes, {}, place);
        const auto twice = std::ranges::unique(checked.notes, {}, place);
        checked.notes.erase(twice.begin(), twice.end());
        if (options_.strict) {
            std::ranges::move(checked.notes, std::back_inserter(checked.findings));
            checked.notes.clear();
        }
        std::ranges::stable_sort(checked.findings, {}, &Finding::at);
    }

    [[nodiscard]] std::size_t CountOf(Findings CheckedComponent::*list) const {
        std::size_t count = 0;
        for (const CheckedComponent& checked : checked_) {
            count += (checked.*list).size();
        }
        return count;
    }

    void Tell() {
        for (const CheckedComponent& checked : checked_) {
            for (const Finding& note : checked.notes) {
                messages_.NoteAt({checked.component->path, FileLineOf(checked, note), note.message},
                                 note.code);
            }
        }
        if (!options_.output.json) {
            const std::size_t count = CountOf(&CheckedComponent::findings);
            messages_.Note(count == 0   ? "everything is as wanted"
                           : count == 1 ? "1 finding"
                                        : std::to_string(count) + " findings");
        }
    }

    [[nodiscard]] static std::int64_t FileLineOf(const CheckedComponent& checked, const Finding& finding) {
        return checked.component->module->OriginalFileLine(finding.at);
    }

    [[nodiscard]] std::string AsLines() const {
        std::string out;
        for (const CheckedComponent& checked : checked_) {
            for (const Finding& finding : checked.findings) {
                out += PrintablePath(checked.component->path) + ":" +
                       std::to_string(FileLineOf(checked, finding)) + ": " + std::string(finding.code) +
                       ": " + Printable(std::string_view(finding.message)) + "\n";
            }
        }
        return out;
    }

    [[nodiscard]] Json ArrayOf(Findings CheckedComponent::*list) const {
        Json array = Json::array();
        for (const CheckedComponent& checked : checked_) {
            for (const Finding& finding : checked.*list) {
                array.push_back({{"file", JsonPath(checked.component->path)},
                                 {"line", FileLineOf(checked, finding)},
                                 {"shownLine", finding.at.value()},
                                 {"code", finding.code},
                                 {"project", JsonText(checked.project->name())},
                                 {"component", JsonText(checked.component->name)},
                                 {"procedure", JsonText(finding.procedure)},
                                 {"kind", finding.kind},
                                 {"message", finding.message}});
            }
        }
        return array;
    }

    [[nodiscard]] std::string AsJson() const {
        Json errors = Json::array();
        for (const workspace::Diagnostic& error : errors_) {
            errors.push_back(DiagnosticObject(error));
        }
        return Dump({{"command", "check"},
                     {"status", static_cast<int>(status_)},
                     {"findings", ArrayOf(&CheckedComponent::findings)},
                     {"notes", ArrayOf(&CheckedComponent::notes)},
                     {"errors", std::move(errors)}});
    }

    const CheckOptions& options_;
    Environment& environment_;
    Messages messages_;
    workspace::Workspace workspace_;
    std::vector<CheckedComponent> checked_;
    workspace::Diagnostics errors_;
    ExitStatus status_ = ExitStatus::Done;
};

}  // namespace

ExitStatus RunCheck(const CheckOptions& options, Environment& environment) {
    return CheckRun(options, environment).Run();
}

}  // namespace lintara::cli
