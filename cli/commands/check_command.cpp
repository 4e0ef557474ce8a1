// lintara check: whether the code is as the team wants it.
#include "cli/checks/handler_check.h"
#include "cli/checks/number_check.h"
#include "cli/commands/commands.h"
#include "cli/edits/procedure_editor.h"
#include "cli/edits/refusal.h"
#include "cli/options/handler_options.h"
#include "cli/options/shared_options.h"
#include "cli/output/json_text.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/project/open_project.h"
#include "cli/scope/scope.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace lintara::cli {
namespace {

constexpr std::string_view CheckFooter =
    "\nExamples:\n"
    "  lintara check Invoicing.vbp --error-handlers --line-numbers\n"
    "      Does every procedure have its handler and its numbers, and are they up to date?\n"
    "  lintara check Invoicing.vbp --error-handlers --line-numbers=false\n"
    "      Does every procedure have its handler, and are the sources free of numbers?\n"
    "  lintara check Invoicing.vbp --json\n"
    "      The same as .lintara.toml wants it, for programs. There, error-handlers and line-numbers are\n"
    "      true, or false for what the sources must not have; what it does not mention is not looked at.\n"
    "\nNothing is written. The findings are lines \"file:line: code: message\":\n"
    "  no-handler, stale-handler                  there is no error handler; it is out of date\n"
    "  no-numbers, stale-number                   there are no numbers; insertion would write others\n"
    "  incomplete-numbers, duplicate-number       lines between numbered ones have none; one is there twice\n"
    "  handler-present, numbers-present           what the sources must not have\n"
    "  Procedures that insertion or removal would skip, to keep code from harm, are notes; findings with\n"
    "  --strict.\n"
    "\nExit status:\n"
    "  0  everything is as wanted\n"
    "  1  there are findings\n"
    "  2  wrong usage, or a name that the project does not have\n"
    "  3  the project could not be read\n";

constexpr std::string_view What = "What to check";

enum class Wish { Open, Present, Absent };

struct Convention {
    Wish handlers = Wish::Open;
    Wish numbers = Wish::Open;
};

// What the command line asks for wins over what a project file asks for.
Convention ReadConvention(const OptionReader& given) {
    const bool onCommandLine =
        given.IsOnCommandLine("error-handlers") || given.IsOnCommandLine("line-numbers");
    const auto wish = [&](std::string_view name) {
        if (!given.Has(name) || (onCommandLine && !given.IsOnCommandLine(name))) {
            return Wish::Open;
        }
        return given.Flag(name) ? Wish::Present : Wish::Absent;
    };
    const Convention convention{wish("error-handlers"), wish("line-numbers")};
    Require(convention.handlers != Wish::Open || convention.numbers != Wish::Open,
            "say what to check: --error-handlers, --line-numbers or both, =false for what must not be there");
    RequireWorkOf(given, {convention.handlers == Wish::Present, convention.numbers == Wish::Present});
    return convention;
}

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
    CheckRun(const OptionReader& given, Environment& environment)
        : given_(given),
          environment_(environment),
          convention_(ReadConvention(given)),
          read_(ReadReading(given)),
          scope_(ReadScope(given)),
          output_(ReadOutput(given)),
          messages_(environment.streams, output_.quiet) {
        if (convention_.numbers == Wish::Present) {
            numbers_ = ReadNumbers(given);
        }
        if (convention_.handlers == Wish::Present) {
            handler_ = ReadWantedHandler(given, environment);
        }
    }

    ExitStatus Run() {
        status_ = Work();
        Streams& streams = environment_.streams;
        if (output_.json) {
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
        Progress progress(environment_.streams, !output_.quiet);
        auto opened = OpenProject(workspace_, read_, environment_.streams.in, progress);
        if (!opened) {
            return Fail(opened.error().status, opened.error().errors);
        }
        for (const workspace::Diagnostic& warning : opened->warnings) {
            messages_.Warning(warning);
        }
        messages_.Errors(opened->unreadable);
        errors_ = opened->unreadable;
        const auto scope = ResolveScope(workspace_, scope_);
        if (!scope) {
            return Fail(ExitStatus::Usage, {{{}, 0, scope.error()}});
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
        // Handlers last: looking at them may change the module.
        if (convention_.numbers == Wish::Present) {
            Walk(scope, std::make_unique<NumberCheck>(numbers_, checked.findings), environment_.platform,
                 checked);
        } else if (convention_.numbers == Wish::Absent) {
            Walk(scope, std::make_unique<NumberAbsenceCheck>(checked.findings), environment_.platform,
                 checked);
        }
        if (convention_.handlers == Wish::Present) {
            Platform platform = environment_.platform;
            const auto settings = std::make_shared<LabelSettings>(platform.settings, handler_.label);
            platform.settings = settings;
            Walk(scope, std::make_unique<HandlerCheck>(handler_, settings, checked.findings),
                 std::move(platform), checked);
        } else if (convention_.handlers == Wish::Absent) {
            Walk(scope, std::make_unique<HandlerAbsenceCheck>(checked.findings), environment_.platform,
                 checked);
        }
        Arrange(checked);
    }

    void Walk(const ScopedComponent& scope, std::unique_ptr<ProcedureEdit> check, Platform platform,
              CheckedComponent& checked) {
        EditPlan plan;
        plan.edits.push_back(std::move(check));
        ProcedureEditor editor(workspace_, MakeGlobals(workspace_, environment_), std::move(platform),
                               std::move(plan));
        const ComponentReport report = editor.Edit(scope);
        std::ranges::transform(report.skipped, std::back_inserter(checked.notes), AsNote);
    }

    // Puts both lists into the order of the lines; what two checks skipped for one reason is told once.
    void Arrange(CheckedComponent& checked) const {
        const auto place = [](const Finding& f) { return std::tie(f.at, f.code, f.message); };
        std::ranges::stable_sort(checked.notes, {}, place);
        const auto twice = std::ranges::unique(checked.notes, {}, place);
        checked.notes.erase(twice.begin(), twice.end());
        if (given_.Flag("strict")) {
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
        if (!output_.json) {
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

    const OptionReader& given_;
    Environment& environment_;
    Convention convention_;
    ReadOptions read_;
    ScopeOptions scope_;
    OutputOptions output_;
    Messages messages_;
    NumberOptions numbers_;
    WantedHandler handler_;
    workspace::Workspace workspace_;
    std::vector<CheckedComponent> checked_;
    workspace::Diagnostics errors_;
    ExitStatus status_ = ExitStatus::Done;
};

ExitStatus Run(const OptionReader& given, Environment& environment) {
    return CheckRun(given, environment).Run();
}

}  // namespace

CommandInfo CheckCommand() {
    const OptionInfo strict{.name = "strict",
                            .description = "Findings also of procedures that insertion or removal would skip",
                            .group = What,
                            .inProjectFile = true};
    return {.name = "check",
            .description = "Tell what is not as the team wants it",
            .footer = CheckFooter,
            .arguments = {PathArgument()},
            .options = Joined({WorkOptionInfos(What),
                               {LabelOption(What), TemplateOption(What)},
                               NumberOptionInfos(What),
                               {strict},
                               ReadingOptions(),
                               ProjectReadingOptions(),
                               ScopeOptionInfos(),
                               ReportOptions()}),
            .run = Run};
}

}  // namespace lintara::cli
