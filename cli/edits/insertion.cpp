#include "cli/edits/insertion.h"

#include "cli/edits/handler_insertion.h"
#include "cli/edits/label_settings.h"
#include "cli/edits/number_insertion.h"
#include "cli/edits/procedure_editor.h"
#include "cli/options/handler_options.h"
#include "cli/options/shared_options.h"

namespace lintara::cli {

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
                   {LabelOption(group), TemplateOption(group), refresh},
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

std::unique_ptr<ComponentEditor> MakeInsertionEditor(const InsertionOptions& options,
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

}  // namespace lintara::cli
