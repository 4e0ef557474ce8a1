// lintara where: the line of the sources that had a number in a build.
#include "cli/commands/commands.h"
#include "cli/edits/insertion.h"
#include "cli/edits/refusal.h"
#include "cli/numbers/number_lookup.h"
#include "cli/options/option_values.h"
#include "cli/options/shared_options.h"
#include "cli/output/json_text.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/project/open_project.h"
#include "cli/scope/scope.h"
#include "workspace/read_file.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>

namespace lintara::cli {
namespace {

constexpr std::string_view WhereFooter =
    "\nExamples:\n"
    "  lintara where Invoicing.vbp --component Totals --procedure Add --erl 10035\n"
    "      Erl was 10035 in Totals.Add of a build that was numbered with --line-numbers: which line of the\n"
    "      sources is that?\n"
    "  lintara where Invoicing.vbp --component Totals --procedure Add --erl 10035 \\\n"
    "          --map build/numbered/lintara-map.json\n"
    "      The same, from the map that came with the build, which no later change of options deceives.\n"
    "  lintara where Invoicing.vbp --erl 10035 --json\n"
    "      Every line of the project that had the number, for programs.\n"
    "\nThe answers are lines \"file:line: Component.Procedure: code\". Without a map the numbers are "
    "inserted\n"
    "again, in memory alone, so give the options that the build had; --line-numbers=false takes the numbers\n"
    "that stand in the sources. With a map, sources that changed since the build are told.\n"
    "\nExit status:\n"
    "  0  found\n"
    "  1  no line has that number\n"
    "  2  wrong usage, or a name that the project does not have\n"
    "  3  the project or the map could not be read\n";

constexpr std::string_view Question = "What to look for";
constexpr std::string_view Build = "How the build was made";

constexpr std::string_view kindWords[] = {"get", "let", "set"};
constexpr std::string_view kindNames[] = {"Property Get", "Property Let", "Property Set"};

NumberQuery ReadQuery(const OptionReader& given) {
    NumberQuery query{.number = given.WholeNumber("erl", 0),
                      .component = given.TextOf("component").value_or(""),
                      .procedure = given.TextOf("procedure").value_or(""),
                      .kind = {}};
    Require(query.number >= 0, "--erl: line numbers are not below 0");
    if (const auto kind = given.TextOf("kind")) {
        const auto* const word = std::ranges::find(kindWords, *kind);
        Require(word != std::end(kindWords), "--kind: '" + *kind + "' is none of get, let, set");
        query.kind = kindNames[word - std::begin(kindWords)];
    }
    return query;
}

// Numbers are what the question is about, so they are inserted unless the command line says otherwise. None
// when nothing is to be inserted.
std::optional<InsertionOptions> ReadBuild(const OptionReader& given, Environment& environment) {
    if (given.IsOnCommandLine("line-numbers")) {
        const bool nothing = !given.Flag("line-numbers") && !given.Flag("error-handlers");
        return nothing ? std::nullopt : std::optional(ReadInsertion(given, environment));
    }
    GivenOptions options = given.given();
    options.Remove("line-numbers");
    options.Add("line-numbers",
                {.texts = {"true"},
                 .origin = given.IsOnCommandLine("error-handlers") ? OptionOrigin::CommandLine
                                                                   : OptionOrigin::ProjectFile});
    return ReadInsertion(given.With(std::move(options)), environment);
}

void RequireMapAlone(const OptionReader& given) {
    for (const OptionInfo& option : given.command().options) {
        Require(option.group != Build || option.name == "map" || !given.IsOnCommandLine(option.name),
                "--" + std::string(option.name) +
                    ": the map knows how the build was made; leave out one of them");
    }
}

class WhereRun {
  public:
    WhereRun(const OptionReader& given, Environment& environment)
        : given_(given),
          environment_(environment),
          messages_(environment.streams, false),
          query_(ReadQuery(given)) {
        if (given.Has("map")) {
            RequireMapAlone(given);
        } else {
            build_ = ReadBuild(given, environment);
        }
    }

    ExitStatus Run() {
        Streams& streams = environment_.streams;
        Progress progress(streams, true);
        const auto opened = OpenOrComplain(workspace_, ReadReading(given_), streams.in, progress, messages_);
        if (!opened) {
            return opened.error();
        }
        if (const auto failed = given_.Has("map") ? ReadMap() : BuildAgain()) {
            return *failed;
        }
        const auto found = FindNumber(tables_, query_);
        if (!found) {
            return Complain(ExitStatus::Usage, found.error());
        }
        Answer(*found);
        return found->empty() ? ExitStatus::NotFound : ExitStatus::Done;
    }

  private:
    ExitStatus Complain(ExitStatus status, const std::string& what, std::filesystem::path path = {}) {
        messages_.Error({std::move(path), 0, what});
        return status;
    }

    std::optional<ExitStatus> ReadMap() {
        const std::filesystem::path path = *given_.TextOf("map");
        const auto content = workspace::ReadFile(path);
        if (!content) {
            return Complain(ExitStatus::Failed, content.error(), path);
        }
        auto map = ParseNumberMap(content->bytes);
        if (!map) {
            return Complain(ExitStatus::Failed, map.error(), path);
        }
        tables_ = TablesOf(*std::move(map), workspace_);
        return std::nullopt;
    }

    // Does what the build did, in memory.
    std::optional<ExitStatus> BuildAgain() {
        if (!build_) {
            tables_ = TablesOf(workspace_);
            return std::nullopt;
        }
        ScopeOptions everything;
        everything.excluded = given_.TextsOf("exclude");
        const auto scope = ResolveScope(workspace_, everything);
        if (!scope) {
            return Complain(ExitStatus::Usage, scope.error());
        }
        try {
            const auto editor =
                MakeInsertionEditor(*build_, workspace_, MakeGlobals(workspace_, environment_), environment_);
            for (const ScopedComponent& component : *scope) {
                if (NamesComponent(query_.component, component.project->name(), component.component->name)) {
                    reports_.push_back(editor->Edit(component));
                }
            }
        } catch (const Refusal& refusal) {
            return Complain(ExitStatus::Usage, refusal.what());
        }
        tables_ = TablesOf(workspace_);
        return std::nullopt;
    }

    void Answer(const std::vector<FoundNumber>& found) {
        if (given_.Flag("json")) {
            environment_.streams.out.Write(AsJson(found));
        } else {
            environment_.streams.out.Write(AsTable(found));
        }
        for (const FoundNumber& number : found) {
            if (number.changed) {
                messages_.Warning({number.table->file, number.place.fileLine, ChangedMessage(number)},
                                  "changed");
            }
        }
        if (found.empty()) {
            messages_.Error({{}, 0, NotFoundMessage(tables_, query_)});
            TellSkipped();
        }
    }

    // Procedures that have no numbers because the insertion skips them.
    void TellSkipped() {
        for (ComponentReport& report : reports_) {
            std::erase_if(report.skipped, [&](const SkippedProcedure& skipped) {
                return query_.procedure.empty() ||
                       !workspace::SameName(workspace::FromUtf8(query_.procedure), skipped.name);
            });
            report.remarks.clear();
            messages_.WarnOf(report);
        }
    }

    [[nodiscard]] static std::string ChangedMessage(const FoundNumber& number) {
        return number.procedure->kind + " " + Printable(number.procedure->name) + " in " +
               Printable(number.table->component) +
               (number.table->now == nullptr ? " is no longer in the project"
                                             : " changed since the map was made") +
               "; the line is that of the sources which were built";
    }

    [[nodiscard]] static std::string AsTable(const std::vector<FoundNumber>& found) {
        std::string out;
        for (const FoundNumber& number : found) {
            out += PrintablePath(number.table->file) + ":" + std::to_string(number.place.fileLine) + ": " +
                   Printable(number.table->component) + "." + Printable(number.procedure->name);
            if (number.text) {
                const TextView text = *number.text;
                out += ": " + Printable(text.substr(workspace::SkipBlanks(text)));
            }
            out += number.inserted ? " (of a line that was inserted there)\n" : "\n";
        }
        return out;
    }

    [[nodiscard]] std::string AsJson(const std::vector<FoundNumber>& found) const {
        Json places = Json::array();
        for (const FoundNumber& number : found) {
            places.push_back({{"project", JsonText(number.table->project)},
                              {"component", JsonText(number.table->component)},
                              {"procedure", JsonText(number.procedure->name)},
                              {"kind", number.procedure->kind},
                              {"file", JsonPath(number.table->file)},
                              {"line", number.place.line.value()},
                              {"fileLine", number.place.fileLine},
                              {"text", number.text ? Json(JsonText(*number.text)) : Json()},
                              {"inserted", number.inserted},
                              {"changed", number.changed}});
        }
        return Dump({{"erl", query_.number},
                     {"from", given_.Has("map") ? "map" : "sources"},
                     {"found", std::move(places)}});
    }

    const OptionReader& given_;
    Environment& environment_;
    Messages messages_;
    NumberQuery query_;
    std::optional<InsertionOptions> build_;
    workspace::Workspace workspace_;
    std::vector<ComponentReport> reports_;
    std::vector<NumberTable> tables_;
};

ExitStatus Run(const OptionReader& given, Environment& environment) {
    return WhereRun(given, environment).Run();
}

std::vector<OptionInfo> QuestionOptions() {
    return {
        {.name = "component",
         .kind = OptionKind::Text,
         .valueName = "NAME",
         .description = "The component, or Project.Component; default: any",
         .group = Question},
        {.name = "procedure",
         .kind = OptionKind::Text,
         .valueName = "NAME",
         .description = "The procedure; default: any",
         .group = Question},
        {.name = "kind",
         .kind = OptionKind::Text,
         .valueName = "KIND",
         .description = "Of a property: get, let or set",
         .group = Question,
         .values = kindWords},
        {.name = "erl",
         .kind = OptionKind::Text,
         .valueName = "N",
         .description = "The number, as Erl had it",
         .group = Question,
         .required = true},
    };
}

std::vector<OptionInfo> BuildOptions() {
    const OptionInfo map{.name = "map",
                         .kind = OptionKind::Text,
                         .valueName = "FILE",
                         .description = "The map that came with the build, in place of the options below",
                         .group = Build,
                         .isPath = true};
    const OptionInfo exclude{.name = "exclude",
                             .kind = OptionKind::Texts,
                             .valueName = "PATTERN",
                             .description = "Components and procedures that the build left out",
                             .group = Build,
                             .inProjectFile = true};
    const OptionInfo exact{.name = "exact", .description = "The build was exact", .group = Build};
    return Joined({{map}, InsertionOptionInfos(Build), {exclude, exact}});
}

}  // namespace

CommandInfo WhereCommand() {
    return {.name = "where",
            .description = "Tell which line had a number in a build",
            .footer = WhereFooter,
            .arguments = {PathArgument()},
            .options = Joined({QuestionOptions(), BuildOptions(), ReadingOptions(), {JsonOption()}}),
            .run = Run};
}

}  // namespace lintara::cli
