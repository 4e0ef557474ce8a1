// lintara check: whether the code is as the team wants it.
#include "cli/checks/check_run.h"
#include "cli/commands/commands.h"
#include "cli/options/handler_options.h"
#include "cli/options/shared_options.h"

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

ExitStatus Run(const OptionReader& given, Environment& environment) {
    CheckOptions options{.convention = ReadConvention(given),
                         .numbers = {},
                         .handler = {},
                         .strict = given.Flag("strict"),
                         .read = ReadReading(given),
                         .scope = ReadScope(given),
                         .output = ReadOutput(given)};
    if (options.convention.numbers == Wish::Present) {
        options.numbers = ReadNumbers(given);
    }
    if (options.convention.handlers == Wish::Present) {
        options.handler = ReadWantedHandler(given, environment);
    }
    return RunCheck(options, environment);
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
