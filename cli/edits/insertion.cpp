#include "cli/edits/insertion.h"

#include "cli/buffers/buffer_source.h"
#include "cli/edits/handler_insertion.h"
#include "cli/edits/label_settings.h"
#include "cli/edits/number_insertion.h"
#include "cli/edits/procedure_editor.h"
#include "cli/edits/rehearsal.h"
#include "cli/options/handler_options.h"
#include "cli/options/shared_options.h"
#include "cli/project/open_project.h"

namespace lintara::cli {
namespace {

std::unique_ptr<ProcedureEditor> MakeProcedureEditor(const InsertionOptions& options,
                                                     workspace::Workspace& workspace,
                                                     std::shared_ptr<hostmodel::Globals> globals,
                                                     const Environment& environment) {
    // Numbers by module follow from where the lines stand when everything else is in its place.
    EditPlan plan{.exact = options.exact, .inPasses = options.numbers.numbering == Numbering::Module};
    const auto settings =
        std::make_shared<LabelSettings>(environment.platform.settings, options.handler.label);
    if (options.work.errorHandlers) {
        plan.edits.push_back(std::make_unique<HandlerInsertion>(
            options.handler,
            HandlerRefresh{.wanted = options.refresh, .numbersToo = options.work.lineNumbers}, settings));
    }
    if (options.work.lineNumbers) {
        plan.edits.push_back(std::make_unique<NumberInsertion>(options.numbers));
    }
    Platform platform = environment.platform;
    platform.settings = settings;
    return std::make_unique<ProcedureEditor>(workspace, std::move(globals), std::move(platform),
                                             std::move(plan));
}

// Replaces handlers together with the numbers in them, or neither.
class HandlersWithNumbers : public ComponentEditor {
  public:
    HandlersWithNumbers(InsertionOptions options, workspace::Workspace& workspace,
                        std::shared_ptr<hostmodel::Globals> globals, const Environment& environment)
        : options_(std::move(options)),
          environment_(environment),
          editor_(MakeProcedureEditor(options_, workspace, std::move(globals), environment)) {}

    [[nodiscard]] ComponentReport Edit(const ScopedComponent& scope) override {
        return editor_->Edit(scope, NumbersAtRisk(options_, scope, environment_));
    }

  private:
    InsertionOptions options_;
    const Environment& environment_;
    std::unique_ptr<ProcedureEditor> editor_;
};

}  // namespace

KeptProcedures NumbersAtRisk(const InsertionOptions& options, const ScopedComponent& scope,
                             const Environment& environment) {
    return FindNumbersAtRisk(scope, [&](workspace::Workspace& workspace) {
        return MakeProcedureEditor(options, workspace, MakeGlobals(workspace, environment), environment);
    });
}

std::vector<OptionInfo> InsertionOptionInfos(std::string_view group) {
    const OptionInfo renumber{.name = "renumber",
                              .description = "Number procedures anew that have numbers",
                              .group = group,
                              .inProjectFile = true};
    const OptionInfo refresh{
        .name = "refresh",
        .description = "Replace handlers that label or template would write differently now",
        .group = group,
        .inProjectFile = true};
    return Joined({WorkOptionInfos(group),
                   {LabelOption(group), TemplateOption(group), BufferOption(group), refresh},
                   NumberOptionInfos(group),
                   {renumber}});
}

InsertionOptions ReadInsertion(const OptionReader& given, Environment& environment) {
    InsertionOptions options;
    options.work = ReadWork(given);
    options.exact = given.Flag("exact");
    Require(options.work.errorHandlers || options.work.lineNumbers,
            "say what to insert: --error-handlers, --line-numbers or both");
    RequireWorkOf(given, options.work);
    if (options.work.lineNumbers) {
        options.numbers = ReadNumbers(given);
    }
    if (options.work.errorHandlers) {
        options.handler = ReadWantedHandler(given, environment);
        options.refresh = given.Flag("refresh");
    }
    return options;
}

EditRules RulesOf(const InsertionOptions& options) {
    const bool replacesHandlers = options.work.errorHandlers && options.refresh;
    return {.numbers = {.in = options.work.lineNumbers,
                        .out = options.work.lineNumbers && (options.numbers.renumber || replacesHandlers),
                        .base = options.numbers.base,
                        .step = options.numbers.step,
                        .byModule = options.numbers.numbering == Numbering::Module},
            .handlers = {.in = options.work.errorHandlers,
                         .out = replacesHandlers,
                         .label = options.handler.label,
                         .code = options.handler.code},
            .exact = options.exact};
}

// To replace handlers takes a look at all handlers of the project.
bool IsIndependent(const InsertionOptions& options) {
    return !options.refresh && !HoldsOpenPlaceholder(options.handler.code);
}

std::unique_ptr<ComponentEditor> MakeInsertionEditor(const InsertionOptions& options,
                                                     workspace::Workspace& workspace,
                                                     std::shared_ptr<hostmodel::Globals> globals,
                                                     const Environment& environment) {
    const bool replacesBoth =
        options.refresh && options.work.errorHandlers && options.work.lineNumbers && !options.exact;
    if (replacesBoth) {
        return std::make_unique<HandlersWithNumbers>(options, workspace, std::move(globals), environment);
    }
    return MakeProcedureEditor(options, workspace, std::move(globals), environment);
}

}  // namespace lintara::cli
