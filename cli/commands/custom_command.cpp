// lintara custom: a block of the user's own code into procedures, and out of them again.
#include "base/constants.h"
#include "base/settings_table.h"
#include "cli/buffers/buffer_source.h"
#include "cli/commands/commands.h"
#include "cli/edits/custom_code_insertion.h"
#include "cli/edits/custom_code_removal.h"
#include "cli/edits/edit_run.h"
#include "cli/edits/procedure_editor.h"
#include "cli/guards/inserted_code.h"
#include "cli/help_text.h"
#include "cli/options/shared_options.h"
#include "cli/output/messages.h"
#include "workspace/encoding.h"

#include <limits>
#include <stdexcept>

namespace lintara::cli {
namespace {

using transform::CodePlace;

constexpr std::string_view InsertFooter =
    "\nExamples:\n"
    "  lintara custom insert Invoicing.vbp --id 5 --code trace.txt\n"
    "      Put the code of trace.txt in front of the body of every procedure.\n"
    "  echo 'Debug.Print \"{ComponentName}.{MemberName}\"' |\n"
    "    lintara custom insert Invoicing.vbp --id 5 --code - --component 'frm*' --where last\n"
    "      Have all procedures of all forms print their names when they end.\n"
    "  lintara custom insert Totals.bas --id 5 --code trace.txt --at Totals:42 --line 3 --diff\n"
    "      Show what a block ahead of the third line of one procedure's body would look like.\n"
    "\nThe code:\n"
    "  It may hold {ProjectName}, {ComponentName}, {MemberName}, {MemberType}, {ControlName},\n"
    "  {ComputerName}, {UserName}, {Date} and {Time}. Two comment lines with the number stand around\n"
    "  the block; 'lintara custom remove' finds it by them. A property gets a block into each of its\n"
    "  procedures.\n" LINTARA_SCOPE
    "\nSkipped procedures:\n"
    "  A procedure that the code could harm is left as it was, with a warning that says why:\n"
    "  range-mismatch     its beginning and end cannot be told for certain\n"
    "  empty-body         there is no line between its first and its last\n"
    "  outside-body       the place lies outside its body, or inside a continued statement\n"
    "  already-inserted   it has a block of that number\n"
    "  breaks-procedure   it would not end where it ends now\n"
    "  label-exists       it has a label that the code brings\n"
    "  duplicate-procedure, name-clash   only the first of several of one name can be reached\n"
    "  long-name          its name has more than 255 characters\n"
    "  --exact turns these checks off.\n" LINTARA_EDITING_STATUSES;

constexpr std::string_view RemoveFooter =
    "\nExamples:\n"
    "  lintara custom remove Invoicing.vbp --id 5\n"
    "      Take block 5 out of every procedure of the project again.\n"
    "  lintara custom remove Invoicing.vbp --id 5 --check\n"
    "      Does any procedure have a block 5? Status 1 says yes; nothing is written.\n" LINTARA_SCOPE
    "\nSkipped procedures:\n"
    "  A procedure whose code removal could harm is left as it was, with a warning that says why:\n"
    "  range-mismatch     its beginning and end cannot be told for certain\n"
    "  empty-body         one procedure of the property has no lines to search in\n"
    "  marker-prefix      the markers of another number, which begins like this one, come first\n"
    "  marker-mismatch    a marker is alone, out of order, or shares its line with code; or one of #If and\n"
    "                     #End If would go\n"
    "  hidden-lines       attribute lines that the IDE hides would go with the block\n"
    "  jump-target        code outside the block jumps to a label or number inside\n"
    "  duplicate-procedure, name-clash   only the first of several of one name can be reached\n"
    "  long-name          its name has more than 255 characters\n"
    "  --exact turns these checks off.\n" LINTARA_EDITING_STATUSES;

constexpr std::string_view What = "What to insert";
constexpr std::string_view RememberedCode = "the user's setting LastCustomCode";

SettingName NameOf(TextView key) {
    return FindSetting(key)->name();
}

std::int16_t ReadId(const OptionReader& given) {
    using Limits = std::numeric_limits<std::int16_t>;
    const std::int32_t id = given.WholeNumber("id", 0);
    Require(id >= Limits::min() && id <= Limits::max(),
            given.LabelOf("id") + ": give a number from -32768 to 32767");
    return static_cast<std::int16_t>(id);
}

struct GivenCode {
    Text text;
    std::string label;  // how messages name where it comes from
    bool remembered = false;
};

GivenCode ReadCode(const OptionReader& given, Environment& environment) {
    if (auto text = ReadBufferSource(given, "code", environment)) {
        return {*std::move(text), given.LabelOf("buffer")};
    }
    if (const auto argument = given.TextOf("code")) {
        auto text = ReadText(SourceFromArgument(*argument), environment.streams.in);
        Require(text.has_value(), given.LabelOf("code") + ": " + (text ? "" : text.error()));
        return {*std::move(text), given.LabelOf("code")};
    }
    SettingsStore* settings = environment.platform.settings.get();
    Result<std::optional<Text>> stored = std::nullopt;
    if (settings != nullptr) {
        stored = settings->Find(NameOf(constants::LastCustomCodeKey));
    }
    if (!stored) {
        throw std::runtime_error(std::string(RememberedCode) +
                                 " cannot be read: " + std::string(stored.error().reason));
    }
    Require(*stored && !(*stored)->empty(),
            "say with --code what to insert; " + std::string(RememberedCode) + " holds no code");
    return {WithLineBreaks(**stored), std::string(RememberedCode), true};
}

void CheckCode(const GivenCode& code, bool exact) {
    Require(!code.text.empty(), code.label + ": there is no code to insert");
    if (const auto problem = ProblemOfSize(code.text)) {
        throw UsageError(code.label + ": " + *problem);
    }
    if (exact) {
        return;
    }
    if (const auto objection = ObjectionToCode(code.text)) {
        throw UsageError(code.label + ": " + *objection);
    }
}

// As the command line says, else as the user has set it.
bool ReadNoMarkers(const OptionReader& given, SettingsStore* settings) {
    if (given.Has("no-markers") || settings == nullptr) {
        return given.Flag("no-markers");
    }
    const Result<std::int32_t> use = ReadCheckBox(*settings, NameOf(constants::UseDelimitersKey));
    Require(use.has_value(), "the user's setting UseDelimiters is neither 0 (off) nor 1 (on)");
    return *use == 0;
}

constexpr std::string_view placeWords[] = {"first", "last", "line"};

std::expected<CodePlace, std::string> ParseCodePlace(std::string_view option, std::string_view text) {
    if (text == "first") {
        return CodePlace::AfterFirstLine;
    }
    if (text == "last") {
        return CodePlace::BeforeLastLine;
    }
    if (text == "line") {
        return CodePlace::AtLine;
    }
    return std::unexpected(std::string(option) + ": '" + std::string(text) +
                           "' is none of first, last and line");
}

void ReadPlace(const OptionReader& given, CustomCodeOptions& block) {
    const auto where = given.Parsed("where", ParseCodePlace);
    block.where = where.value_or(given.Has("line") ? CodePlace::AtLine : CodePlace::AfterFirstLine);
    if (block.where != CodePlace::AtLine) {
        Require(!given.Has("line"), "--line goes with --where line");
        return;
    }
    Require(given.Has("line"), "--where line: say with --line which");
    block.line = given.WholeNumber("line", 1);
    Require(block.line >= 1, given.LabelOf("line") + ": 1 is the first line of the body");
}

void Remember(const CustomCodeOptions& block, SettingsStore* settings) {
    if (settings == nullptr) {
        throw std::runtime_error("--save-settings: there is no place for settings");
    }
    Result<void> saved = settings->Save(NameOf(constants::LastCustomCodeKey), block.code);
    if (saved) {
        saved = SaveCheckBox(*settings, NameOf(constants::UseDelimitersKey), block.noMarkers ? 0 : 1);
    }
    if (!saved) {
        throw std::runtime_error("--save-settings: " + std::string(saved.error().reason));
    }
}

// What the command takes from the user's settings, for those who wonder.
void NoteOrigins(const OptionReader& given, const GivenCode& code, bool noMarkers, Environment& environment) {
    Messages messages(environment.streams, given.Flag("quiet"));
    if (code.remembered) {
        messages.Note("the code is that of " + std::string(RememberedCode));
    }
    if (noMarkers && !given.Has("no-markers")) {
        messages.Note(
            "the user's setting UseDelimiters is 0: there will be no marker lines, and the block cannot be "
            "removed again; --no-markers=false writes them");
    }
}

ExitStatus RunInsertion(const OptionReader& given, Environment& environment) {
    SettingsStore* settings = environment.platform.settings.get();
    const EditCommandOptions options = ReadEditCommand(given);
    CustomCodeOptions block;
    ReadPlace(given, block);
    block.noMarkers = ReadNoMarkers(given, settings);
    Require(block.noMarkers || given.Has("id"), "say with --id which number the block gets");
    block.id = ReadId(given);
    Require(given.Argument(0) != "-" || given.TextOf("code") != "-",
            "--code -: standard input holds the component already");
    const GivenCode code = ReadCode(given, environment);
    CheckCode(code, options.edit.exact);
    block.code = code.text;
    NoteOrigins(given, code, block.noMarkers, environment);
    const EditJob job{.command = "custom insert",
                      .stage = "inserting",
                      .done = "Inserted code into",
                      .wouldDo = "Would insert code into",
                      .makeEditor =
                          [&](workspace::Workspace& workspace, std::shared_ptr<hostmodel::Globals> globals) {
                              EditPlan plan{.exact = options.edit.exact};
                              plan.edits.push_back(std::make_unique<CustomCodeInsertion>(block));
                              return std::make_unique<ProcedureEditor>(workspace, std::move(globals),
                                                                       environment.platform, std::move(plan));
                          },
                      .rules = {.customCode = {.in = true,
                                               .markers = !block.noMarkers,
                                               .place = block.where,
                                               .line = block.line,
                                               .number = MarkerNumber(block.id),
                                               .code = block.code},
                                .exact = options.edit.exact}};
    const ExitStatus status = RunEdit(options, job, environment);
    if (given.Flag("save-settings") && WroteWhatWasAsked(status, options.edit)) {
        Remember(block, settings);
    }
    return status;
}

ExitStatus RunRemoval(const OptionReader& given, Environment& environment) {
    const std::int16_t id = ReadId(given);
    const EditCommandOptions options = ReadEditCommand(given);
    const EditJob job{
        .command = "custom remove",
        .stage = "removing",
        .done = "Removed code from",
        .wouldDo = "Would remove code from",
        .makeEditor =
            [&](workspace::Workspace& workspace, std::shared_ptr<hostmodel::Globals> globals) {
                EditPlan plan{.backwards = true, .exact = options.edit.exact};
                plan.edits.push_back(std::make_unique<CustomCodeRemoval>(id));
                return std::make_unique<ProcedureEditor>(workspace, std::move(globals), environment.platform,
                                                         std::move(plan));
            },
        .rules = {.customCode = {.out = true, .number = MarkerNumber(id)}, .exact = options.edit.exact}};
    return RunEdit(options, job, environment);
}

std::vector<OptionInfo> InsertionOptions() {
    return {
        ValueOption("id", "N", "The number of the block, -32768 to 32767", What),
        ValueOption("code", "FILE", "The code, - for standard input; default: what was saved last", What),
        BufferOption(What),
        {.name = "where",
         .kind = OptionKind::Text,
         .valueName = "PLACE",
         .description = "first (default), last, or line: where in the body",
         .group = What,
         .values = placeWords},
        ValueOption("line", "N", "Ahead of this line of the body, 1 is its first; implies --where line",
                    What),
        {.name = "no-markers",
         .description = "Leave the marker lines out; default: the user's setting, or markers",
         .group = What},
        {.name = "save-settings",
         .description = "Keep the code and --no-markers in the user's settings",
         .group = What},
    };
}

}  // namespace

CommandInfo CustomInsertCommand() {
    return {.name = "custom insert",
            .description = "Insert a block of code into procedures",
            .footer = InsertFooter,
            .arguments = {PathArgument()},
            .options = Joined({InsertionOptions(), EditCommandOptionInfos()}),
            .run = RunInsertion};
}

CommandInfo CustomRemoveCommand() {
    OptionInfo id = ValueOption("id", "N", "The number of the block", "What to remove");
    id.required = true;
    return {.name = "custom remove",
            .description = "Remove a block of code from procedures",
            .footer = RemoveFooter,
            .arguments = {PathArgument()},
            .options = Joined({{id}, EditCommandOptionInfos()}),
            .run = RunRemoval};
}

}  // namespace lintara::cli
