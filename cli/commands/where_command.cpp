// lintara where: the line of the sources that had a number in a build.
#include "cli/commands/commands.h"
#include "cli/numbers/where_run.h"
#include "cli/options/option_values.h"
#include "cli/options/shared_options.h"

#include <algorithm>
#include <iterator>

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
    "that stand in the sources. With a map, sources that changed since the build are told, and so is a copy\n"
    "beside the map that changed since.\n"
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

ExitStatus Run(const OptionReader& given, Environment& environment) {
    WhereOptions options{.query = ReadQuery(given),
                         .read = ReadReading(given),
                         .map = given.TextOf("map"),
                         .build = {},
                         .everything = {},
                         .json = given.Flag("json")};
    if (options.map) {
        RequireMapAlone(given);
    } else {
        options.build = ReadBuild(given, environment);
    }
    options.everything.excluded = given.TextsOf("exclude");
    options.everything.mustExclude = given.IsOnCommandLine("exclude");
    return RunWhere(options, environment);
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
