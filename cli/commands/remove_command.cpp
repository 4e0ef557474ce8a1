// lintara remove: line numbers and error handlers out of procedures.
#include "cli/commands/commands.h"
#include "cli/edits/edit_run.h"
#include "cli/edits/handler_removal.h"
#include "cli/edits/label_settings.h"
#include "cli/edits/number_removal.h"
#include "cli/edits/procedure_editor.h"
#include "cli/edits/work_job.h"
#include "cli/help_text.h"
#include "cli/options/handler_options.h"
#include "cli/options/shared_options.h"

namespace lintara::cli {
namespace {

constexpr std::string_view RemoveFooter =
    "\nError handlers:\n"
    "  Everything from a handler's marker down to the closing line goes, and what was typed below it, too.\n"
    "  The statements that led to the label become On Error GoTo 0 and stay. With both, numbers go first.\n"
    "\nExamples:\n"
    "  lintara remove Invoicing.vbp --error-handlers --line-numbers\n"
    "      Take out handlers and numbers.\n"
    "  lintara remove Invoicing.vbp --error-handlers --label Failed\n"
    "      Take out the handlers that were inserted with this label.\n"
    "  lintara remove Invoicing.vbp --line-numbers\n"
    "      Take the numbers out of every procedure of the project again.\n"
    "  lintara remove Invoicing.vbp --line-numbers --check\n"
    "      Is any procedure numbered? Status 1 says yes; nothing is written.\n"
    "  lintara remove exported/ --recursive --line-numbers --backup .bak\n"
    "      Treat the modules of a folder as one project, and keep the originals beside them.\n" LINTARA_SCOPE
    "\nSkipped procedures:\n"
    "  A procedure whose code removal could harm is left as it was, with a warning that says why:\n"
    "  range-mismatch     its beginning and end cannot be told for certain\n"
    "  duplicate-procedure, name-clash   only the first of several of one name can be reached\n"
    "  long-name          its name has more than 255 characters\n"
    "  number-width       it has numbers that are not five digits, a colon and a blank\n"
    "  jump-target        GoTo, GoSub, Resume, On ... GoTo or If ... Then jump to one of its numbers, or\n"
    "                     into the handler\n"
    "  label-mismatch     the handler has another label; --label names it\n"
    "  label-prefix       it jumps to a label that only begins like the handler's\n"
    "  empty-body         another procedure of the property has no lines, and would lose others' handlers\n"
    "  marker-mismatch    the text of the marker stands where no handler begins, or one of #If and #End If\n"
    "                     would go with the handler\n"
    "  hidden-lines       the IDE hides attribute lines in the handler\n"
    "  crowded-line       one line of many thousand characters is full of On Error GoTo and the label\n"
    "  --exact turns these checks off.\n" LINTARA_EDITING_STATUSES;

constexpr std::string_view What = "What to remove";

// The mirror of the insertion: numbers first.
std::vector<std::unique_ptr<ProcedureEdit>> EditsOf(const WorkOptions& work, const WantedHandler& handler,
                                                    const std::shared_ptr<LabelSettings>& settings,
                                                    const std::shared_ptr<HandlerPeers>& peers) {
    std::vector<std::unique_ptr<ProcedureEdit>> edits;
    if (work.lineNumbers) {
        edits.push_back(std::make_unique<NumberRemoval>());
    }
    if (work.errorHandlers) {
        edits.push_back(std::make_unique<HandlerRemoval>(handler, settings, peers));
    }
    return edits;
}

ExitStatus Run(const OptionReader& given, Environment& environment) {
    const WorkOptions work = ReadWork(given);
    Require(work.errorHandlers || work.lineNumbers,
            "say what to remove: --error-handlers, --line-numbers or both");
    RequireWorkOf(given, work);
    const WantedHandler handler =
        work.errorHandlers ? ReadWantedHandler(given, environment) : WantedHandler{};
    const EditCommandOptions options = ReadEditCommand(given);
    EditJob job = RemovalJob(work);
    job.rules = {.numbers = {.out = work.lineNumbers},
                 .handlers = {.out = work.errorHandlers, .label = handler.label},
                 .exact = options.edit.exact};
    job.independent = true;
    // What was typed into handlers is told from all handlers of the project.
    job.asksForLoaded = work.errorHandlers;
    const auto peers = std::make_shared<HandlerPeers>();
    job.makeEditor = [&](workspace::Workspace& workspace, std::shared_ptr<hostmodel::Globals> globals) {
        Platform platform = environment.platform;
        const auto settings = std::make_shared<LabelSettings>(platform.settings, handler.label);
        platform.settings = settings;
        EditPlan plan{
            .edits = EditsOf(work, handler, settings, peers), .backwards = true, .exact = options.edit.exact};
        return std::make_unique<ProcedureEditor>(workspace, std::move(globals), std::move(platform),
                                                 std::move(plan));
    };
    return RunEdit(options, job, environment);
}

}  // namespace

CommandInfo RemoveCommand() {
    return {.name = "remove",
            .description = "Remove error handlers and line numbers from procedures",
            .footer = RemoveFooter,
            .arguments = {PathArgument()},
            .options = Joined(
                {WorkOptionInfos(What), {LabelOption(What), TemplateOption(What)}, EditCommandOptionInfos()}),
            .run = Run};
}

}  // namespace lintara::cli
