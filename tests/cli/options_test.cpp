#include "cli/options/command_line.h"
#include "cli/options/option_values.h"
#include "cli/options/shared_options.h"
#include "tests/cli/command_run.h"

#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> WordsOf(const std::string& line) {
    std::istringstream words(line);
    std::vector<std::string> arguments;
    for (std::string word; words >> word;) {
        arguments.push_back(word == "''" ? "" : word);
    }
    return arguments;
}

std::expected<OptionReader, EarlyExit> Parse(const std::string& line) {
    return ParseCommandLine(WordsOf(line));
}

// What editing commands read of their options.
struct Options {
    EditCommandOptions common;
    NumberOptions numbers;
    WorkOptions work;
};

Options ReadOptionsOf(const OptionReader& given) {
    return {ReadEditCommand(given), ReadNumbers(given), ReadWork(given)};
}

Options Parsed(const std::string& line) {
    const auto given = Parse(line);
    EXPECT_TRUE(given) << line << ": " << (given ? "" : given.error().err);
    return given ? ReadOptionsOf(*given) : Options{};
}

TEST(Options, OfInsertHaveTheUsualNumbers) {
    const Options options = Parsed("insert a.vbp --line-numbers");
    EXPECT_EQ(options.common.read.path, "a.vbp");
    EXPECT_EQ(options.numbers.base, 10000);
    EXPECT_EQ(options.numbers.step, 5);
    EXPECT_EQ(options.common.scope.scope, Scope::Project);
    EXPECT_TRUE(options.common.edit.writesInPlace());
    EXPECT_EQ(options.common.edit.waitSeconds, 10);
}

TEST(Options, ThatAreFlagsAreTrueOrFalse) {
    EXPECT_TRUE(Parsed("insert a.vbp --line-numbers=true").work.lineNumbers);
    EXPECT_FALSE(Parsed("insert a.vbp --line-numbers --error-handlers=false").work.errorHandlers);
    for (const std::string value : {"maybe", "1", "yes", "True"}) {
        const auto given = Parse("insert a.vbp --error-handlers=" + value);
        ASSERT_FALSE(given) << value;
        EXPECT_EQ(given.error().status, ExitStatus::Usage);
        EXPECT_THAT(given.error().err,
                    HasSubstr("--error-handlers: '" + value + "' is neither true nor false"));
    }
}

TEST(Options, ThatACommandDoesNotHaveAreNamedWithNearOnes) {
    const std::pair<std::string, std::string> cases[] = {
        {"insert a.vbp --eror-handlers",
         "there is no option '--eror-handlers'. Did you mean --error-handlers?"},
        {"insert a.vbp --line-numbers --bsae=5", "there is no option '--bsae'. Did you mean --base"},
        {"insert a.vbp --stepp 10 --line-numbers", "there is no option '--stepp'. Did you mean --step"},
        {"settings list --jsn", "lintara settings list: there is no option '--jsn'. Did you mean --json?"},
        {"insert a.vbp --quux-of-nothing", "there is no option '--quux-of-nothing'.\n"},
        {"insert a.vbp -Z", "there is no option '-Z'.\n"},
    };
    for (const auto& [line, complaint] : cases) {
        const auto given = Parse(line);
        ASSERT_FALSE(given) << line;
        EXPECT_EQ(given.error().status, ExitStatus::Usage);
        EXPECT_THAT(given.error().err, HasSubstr(complaint));
    }
}

TEST(Options, AreTakenInAnyOrder) {
    const Options options = Parsed("insert --base 20000 --line-numbers --step=+7 a.vbp --strict -q --json");
    EXPECT_EQ(options.numbers.base, 20000);
    EXPECT_EQ(options.numbers.step, 7);
    EXPECT_EQ(options.common.read.path, "a.vbp");
    EXPECT_TRUE(options.common.edit.strict);
    EXPECT_TRUE(options.common.output.quiet);
    EXPECT_TRUE(options.common.output.json);
}

TEST(Options, OfReadingAndSaving) {
    const Options options = Parsed(
        "remove dir --line-numbers --recursive --skip-missing --code-page 1250 --backup .bak --wait 0.5");
    EXPECT_TRUE(options.common.read.recursive);
    EXPECT_TRUE(options.common.read.skipMissing);
    EXPECT_EQ(options.common.read.codePage, "1250");
    EXPECT_EQ(options.common.edit.backupSuffix, ".bak");
    EXPECT_EQ(options.common.edit.waitSeconds, 0.5);
    EXPECT_EQ(*Parsed("insert a --line-numbers -o out").common.edit.output, "out");
}

TEST(Options, TellTheScopeByWhatIsGiven) {
    EXPECT_EQ(Parsed("insert a --line-numbers --component M").common.scope.scope, Scope::Component);
    EXPECT_EQ(Parsed("insert a --line-numbers --procedure P").common.scope.scope, Scope::Procedure);
    EXPECT_EQ(Parsed("insert a --line-numbers --at M:3").common.scope.scope, Scope::Procedure);
    EXPECT_EQ(Parsed("insert a --line-numbers --scope component --at M:3").common.scope.scope,
              Scope::Component);
    EXPECT_EQ(Parsed("insert a --line-numbers --scope project").common.scope.scope, Scope::Project);
}

TEST(Options, RepeatPatternsWithoutSwallowingThePath) {
    const Options options =
        Parsed("insert --line-numbers --component A* --component B? --procedure *_Click a.vbp");
    EXPECT_THAT(options.common.scope.components, ElementsAre("A*", "B?"));
    EXPECT_THAT(options.common.scope.procedures, ElementsAre("*_Click"));
    EXPECT_EQ(options.common.read.path, "a.vbp");
}

TEST(Options, ReadCarets) {
    EXPECT_EQ(Parsed("member a --at Main:12").common.scope.at, (CaretPlace{"Main", Line(12), Column(1)}));
    EXPECT_EQ(Parsed("member a --at Main:12:3").common.scope.at, (CaretPlace{"Main", Line(12), Column(3)}));
    EXPECT_EQ(Parsed("member a --at a:b:12").common.scope.at, (CaretPlace{"a:b", Line(12), Column(1)}));
}

TEST(Options, LetAnythingPassWhenExact) {
    const Options options = Parsed("insert a --line-numbers --exact --base -3 --step -10");
    EXPECT_EQ(options.numbers.base, -3);
    EXPECT_EQ(options.numbers.step, -10);
}

struct UsageCase {
    const char* line;
    const char* complaint;
};

class UsageErrors : public testing::TestWithParam<UsageCase> {};

TEST_P(UsageErrors, AreExplained) {
    const Outcome outcome = CommandTest().Run(WordsOf(GetParam().line));
    EXPECT_EQ(outcome.status, static_cast<int>(ExitStatus::Usage)) << GetParam().line;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr(GetParam().complaint)) << GetParam().line;
    EXPECT_THAT(outcome.err, HasSubstr("--help'.\n"));
}

const UsageCase usageCases[] = {
    {"frobnicate", "there is no command 'frobnicate'."},
    {"instert a", "Did you mean insert?"},
    {"insert --line-numbers", "PATH is required"},
    {"insert a", "say what to insert: --error-handlers, --line-numbers or both"},
    {"remove a", "say what to remove: --error-handlers, --line-numbers or both"},
    {"insert a b --line-numbers", "b"},
    {"insert a --line-numbers --bse 3", "--bse"},
    {"list a --line-numbers", "--line-numbers"},
    {"remove a --line-numbers --base 3", "--base"},
    {"insert a --line-numbers --base", "--base"},
    {"insert a --line-numbers --base x", "--base: 'x' is not a whole number"},
    {"insert a --line-numbers --base 1.5", "--base: '1.5' is not a whole number"},
    {"insert a --line-numbers --base ''", "--base"},
    {"insert a --line-numbers --base +", "--base: '+' is not a whole number"},
    {"insert a --line-numbers --base 99999999999", "--base: '99999999999' lies outside"},
    {"insert a --line-numbers --base 9999", "--base: numbers must have five digits"},
    {"insert a --line-numbers --base 100000", "--base: numbers must have five digits"},
    {"insert a --line-numbers --base -10000", "--base: numbers must have five digits"},
    {"insert a --line-numbers --step 0", "--step: a step of 0"},
    {"insert a --line-numbers --step 0 --exact", "--step: a step of 0"},
    {"insert a --line-numbers --step -5", "--step: the step must be 1 or more"},
    {"insert a --line-numbers --step 5x", "--step: '5x' is not a whole number"},
    {"insert a --line-numbers --scope module", "--scope: 'module' is none of"},
    {"insert a --line-numbers --scope component", "--scope component: say which"},
    {"insert a --line-numbers --scope procedure", "--scope procedure: say which"},
    {"insert a --line-numbers --scope project --component M", "--scope project takes everything"},
    {"insert a --line-numbers --scope project --at M:1", "--scope project takes everything"},
    {"insert a --line-numbers --scope component --component M --procedure P", "leave --procedure out"},
    {"insert a --line-numbers --at M:1 --component M", "--at already says what to edit"},
    {"insert a --line-numbers --at M:1 --procedure M", "--at already says what to edit"},
    {"insert a --line-numbers --at M", "--at: 'M' is not of the form"},
    {"insert a --line-numbers --at :3", "--at: ':3' is not of the form"},
    {"insert a --line-numbers --at M:x", "--at: 'M:x' is not of the form"},
    {"insert a --line-numbers --at M:0", "both count from 1"},
    {"insert a --line-numbers --at M:1:0", "both count from 1"},
    {"insert a --line-numbers --at M:99999999999", "--at: 'M:99999999999' is not of the form"},
    {"member a", "--at is required"},
    {"insert a --line-numbers --check --output d", "--check writes nothing"},
    {"insert a --line-numbers --diff --output d", "--diff writes nothing"},
    {"insert a --line-numbers --check --backup .b", "--backup keeps"},
    {"insert a --line-numbers --output d --backup .b", "--backup keeps"},
    {"insert a --line-numbers --diff --json", "--diff, --list and --json"},
    {"insert a --line-numbers --backup x/y", "--backup: 'x/y' is no suffix"},
    {"insert a --line-numbers --backup ''", "--backup: the value is empty"},
    {"insert a --line-numbers --output ''", "--output: the value is empty"},
    {"insert a --line-numbers --component ''", "--component: the value is empty"},
    {"insert '' --line-numbers", "PATH: the value is empty"},
    {"insert a --line-numbers --check=", "--check: the value is empty"},
    {"insert a --line-numbers=", "--line-numbers: the value is empty"},
    {"list a --recursive=", "--recursive: the value is empty"},
    {"insert a --line-numbers --wait -1", "--wait: '-1' is not a number of seconds"},
    {"insert a --line-numbers --wait soon", "--wait: 'soon' is not a number of seconds"},
    {"insert a --line-numbers --wait inf", "--wait: 'inf' is not a number of seconds"},
    {"insert a --line-numbers --base 10000 --base 20000", "--base"},
};

INSTANTIATE_TEST_SUITE_P(Cases, UsageErrors, testing::ValuesIn(usageCases));

TEST(UsageErrorsOnATerminal, ShowNoRawControlCharacters) {
    const auto options = ParseCommandLine(std::vector<std::string>{"insert", "a", "--\x1b[2Jx"});
    ASSERT_FALSE(options);
    EXPECT_THAT(options.error().err, testing::Not(HasSubstr("\x1b")));
}

TEST(Help, IsPrintedForTheProgramAndEachCommand) {
    const auto program = Parse("--help");
    ASSERT_FALSE(program);
    EXPECT_EQ(program.error().status, ExitStatus::Done);
    for (const std::string verb : {"list", "insert", "remove", "member", "recover"}) {
        EXPECT_THAT(program.error().out, HasSubstr("\n  " + verb));
        const auto help = Parse(verb + " --help");
        ASSERT_FALSE(help);
        EXPECT_EQ(help.error().status, ExitStatus::Done);
        EXPECT_EQ(help.error().err, "");
        EXPECT_THAT(help.error().out, HasSubstr("lintara " + verb));
        EXPECT_THAT(help.error().out, HasSubstr("\nExample"));
        EXPECT_THAT(help.error().out, HasSubstr("\n  lintara " + verb + " Invoicing.vbp"));
        EXPECT_THAT(help.error().out, HasSubstr("\nExit status:\n  0  done\n"));
    }
}

TEST(Help, ExplainsEveryOptionOfTheEditingCommands) {
    for (const std::string verb : {"insert", "remove"}) {
        const std::string help = Parse(verb + " --help").error().out;
        for (const char* option :
             {"--line-numbers", "--scope", "--component", "--procedure", "--at", "--check", "--diff",
              "--output", "--backup", "--json", "--quiet", "--exact", "--strict", "--code-page",
              "--recursive", "--skip-missing", "--wait"}) {
            EXPECT_THAT(help, HasSubstr(option)) << verb;
        }
        for (const char* reason : {"range-mismatch", "jump-target", "duplicate-procedure", "name-clash"}) {
            EXPECT_THAT(help, HasSubstr(reason)) << verb;
        }
        std::istringstream lines(help);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(line.size(), 110U) << line;
        }
    }
}

TEST(Help, IsShownWhenNothingIsAsked) {
    const auto options = Parse("");
    ASSERT_FALSE(options);
    EXPECT_EQ(options.error().status, ExitStatus::Usage);
    EXPECT_THAT(options.error().err, HasSubstr("Usage: lintara"));
}

TEST(Version, IsPrinted) {
    for (const char* line : {"--version", "--version list"}) {
        const auto options = Parse(line);
        ASSERT_FALSE(options);
        EXPECT_EQ(options.error().status, ExitStatus::Done);
        EXPECT_THAT(options.error().out, testing::MatchesRegex("lintara [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    }
}

}  // namespace
}  // namespace lintara::cli
