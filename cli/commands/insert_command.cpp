// lintara insert: error handlers and line numbers into procedures.
#include "cli/commands/commands.h"
#include "cli/edits/edit_run.h"
#include "cli/edits/insertion.h"
#include "cli/edits/work_job.h"
#include "cli/help_text.h"
#include "cli/numbers/number_map.h"
#include "cli/options/shared_options.h"
#include "cli/options/used_settings.h"
#include "cli/output/messages.h"

namespace lintara::cli {
namespace {

constexpr std::string_view InsertFooter =
    "\nError handlers:\n"
    "  A handler is a block in front of the closing line: a marker comment, Exit Sub (or what leaves the\n"
    "  procedure), the label, and the template's code; and On Error GoTo with the label as the first\n"
    "  statement. On Error GoTo 0 inside the procedure leads to the label, too. A procedure that has the\n"
    "  marker is left alone, so nothing is inserted twice; with --refresh, a handler that label and "
    "template\n"
    "  would write differently now is replaced, with whatever was typed into it. With both, handlers come\n"
    "  first, and their lines are numbered.\n"
    "  In a template {ProjectName}, {ComponentName}, {MemberName}, {MemberType}, {ControlName},\n"
    "  {ComputerName}, {UserName}, {Date} and {Time} stand for what they say.\n"
    "\nExamples:\n"
    "  lintara insert Invoicing.vbp --error-handlers --line-numbers\n"
    "      Give every procedure a handler, and numbers for it to tell.\n"
    "  lintara insert Invoicing.vbp --error-handlers --label Failed --template handler.txt --save-settings\n"
    "      Use this label and this template, and keep both as the user's settings.\n"
    "  lintara insert Invoicing.vbp --error-handlers --template handler.txt --refresh --diff\n"
    "      Show what a changed template changes in the handlers that are there.\n"
    "  lintara insert Invoicing.vbp --line-numbers\n"
    "      Number every procedure of the project, in place.\n"
    "  lintara insert Invoicing.vbp --line-numbers --diff\n"
    "      Show what that would change, and change nothing.\n"
    "  lintara insert Invoicing.vbp --line-numbers --output build/numbered\n"
    "      Leave the sources alone and write a numbered copy: for pipelines that number only what\n"
    "      they ship. The file lintara-map.json in the copy tells which line of the sources each\n"
    "      number stands for; see 'lintara where'.\n"
    "  lintara insert Invoicing.vbp --line-numbers --numbering module --output build/numbered\n"
    "      The same, with 10000 and the line in the module as the number of each line.\n"
    "  lintara insert Invoicing.vbp --line-numbers --component 'frm*' --procedure '*_Click'\n"
    "      Number the click events of all forms.\n"
    "  lintara insert Totals.bas --line-numbers --at Totals:42 --base 20000 --step 10\n"
    "      Number the procedure that holds line 42 from 20000 in steps of 10.\n" LINTARA_SCOPE
    "\nSkipped procedures:\n"
    "  A procedure whose code insertion could harm is left as it was, with a warning that says why:\n"
    "  range-mismatch     its beginning and end cannot be told for certain\n"
    "  duplicate-procedure, name-clash   only the first of several of one name can be reached\n"
    "  long-name          its name has more than 255 characters\n"
    "  of error handlers:\n"
    "  empty-body         it has no lines, or nothing but a handler that --refresh would replace\n"
    "  label-exists       it has the label already, or one that the template brings\n"
    "  label-prefix       it jumps to a label that only begins like the handler's\n"
    "  label-mismatch     its handlers, to be replaced, have different labels\n"
    "  marker-mismatch    the text of the marker stands where no handler begins, or the handler that is to "
    "be\n"
    "                     replaced holds custom code, or one of #If and #End If\n"
    "  breaks-procedure   it would end somewhere else with the template's code in it\n"
    "  hidden-lines       the IDE hides attribute lines in the handler that is to be replaced\n"
    "  crowded-line       one line of many thousand characters is full of On Error GoTo 0\n"
    "  of line numbers:\n"
    "  already-numbered   it has other numbers; --renumber removes them and numbers anew; --refresh of a\n"
    "                     handler wants --line-numbers, too\n"
    "  foreign-numbers    it has numbers without a colon, as other tools write them\n"
    "  jump-target        it jumps to a number that would be written, or into what would be replaced, or to\n"
    "                     a label of the handler that is nowhere yet\n"
    "  number-width       numbers to be replaced are not five digits, a colon and a blank\n"
    "  numbering-limit    the step leaves too few numbers to find them again\n"
    "  --exact turns these checks off.\n" LINTARA_EDITING_STATUSES;

constexpr std::string_view What = "What to insert";

// After a run that wrote what it was asked for.
ExitStatus SaveSettings(const InsertionOptions& insertion, Environment& environment) {
    SettingsStore* store = environment.platform.settings.get();
    const auto saved = store == nullptr ? Failure(ErrorNumber::ObjectNotSet, "there is no settings store")
                                        : SaveUsedSettings(*store, insertion);
    if (saved) {
        return ExitStatus::Done;
    }
    Messages(environment.streams, true)
        .Error({{}, 0, "--save-settings: the settings were not saved: " + std::string(saved.error().reason)});
    return ExitStatus::Failed;
}

ExitStatus Run(const OptionReader& given, Environment& environment) {
    const InsertionOptions insertion = ReadInsertion(given, environment);
    const EditCommandOptions options = ReadEditCommand(given);
    EditJob job = InsertionJob(insertion.work);
    job.makeEditor = [&](workspace::Workspace& workspace, std::shared_ptr<hostmodel::Globals> globals) {
        return MakeInsertionEditor(insertion, workspace, std::move(globals), environment);
    };
    job.rules = RulesOf(insertion);
    job.independent = IsIndependent(insertion);
    if (insertion.work.lineNumbers) {
        job.addedToCopy = [&](const workspace::Workspace& workspace) {
            return std::vector<workspace::AddedFile>{
                {std::string(numberMapName), NumberMapText(workspace, insertion.numbers)}};
        };
    }
    const ExitStatus status = RunEdit(options, job, environment);
    if (!given.Flag("save-settings") || !WroteWhatWasAsked(status, options.edit)) {
        return status;
    }
    const ExitStatus saved = SaveSettings(insertion, environment);
    return saved == ExitStatus::Done ? status : saved;
}

}  // namespace

CommandInfo InsertCommand() {
    const OptionInfo saveSettings{
        .name = "save-settings", .description = "Keep what was used as the user's settings", .group = What};
    return {.name = "insert",
            .description = "Insert error handlers and line numbers into procedures",
            .footer = InsertFooter,
            .arguments = {PathArgument()},
            .options = Joined({InsertionOptionInfos(What), {saveSettings}, EditCommandOptionInfos()}),
            .run = Run};
}

}  // namespace lintara::cli
