// What is not as the team wants it.
#include "cli/output/json_text.h"
#include "tests/cli/command_run.h"
#include "tests/support/project_generator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;

struct CheckCase {
    const char* name;
    const char* code;
    const char* options;
    const char* findings;
};

void PrintTo(const CheckCase& c, std::ostream* out) {
    *out << c.name;
}

class Check : public testing::TestWithParam<CheckCase> {};

TEST_P(Check, TellsWhatIsNotAsWanted) {
    CommandTest test;
    test.Write("a.bas", GetParam().code);
    const auto before = test.Files();
    const Outcome outcome = test.Run("check @a.bas " + std::string(GetParam().options));
    EXPECT_EQ(outcome.out, Replaced(GetParam().findings, "a.bas", "DIR/a.bas"));
    EXPECT_EQ(outcome.status, outcome.out.empty() ? 0 : 1) << outcome.err;
    EXPECT_EQ(test.Files(), before);
}

const CheckCase checkCases[] = {
    {"NoNumbers", "Attribute VB_Name = \"A\"\nSub A()\n    x = 1\nEnd Sub\nSub B()\n10000: y\nEnd Sub\n",
     "--line-numbers", "a.bas:2: no-numbers: Sub A: has no line numbers\n"},
    {"NothingToNumber", "Sub A()\nEnd Sub\nSub B()\n\nhere:\nEnd Sub\n", "--line-numbers", ""},
    {"UpToDate", "Sub A()\n10000: x = 1\n\n10010: y _\n         z\nEnd Sub\n", "--line-numbers", ""},
    {"Stale", "Sub A()\n10000: x = 1\n10005: y\n10015: z\n10020: w\nEnd Sub\n", "--line-numbers",
     "a.bas:4: stale-number: Sub A: 2 numbers are not what insertion writes now; 10015 would be 10010\n"},
    {"StaleByOtherOptions", "Sub A()\n10000: x = 1\nEnd Sub\n", "--line-numbers --base 20000",
     "a.bas:2: stale-number: Sub A: 1 number is not what insertion writes now; 10000 would be 20000\n"},
    {"NumberWhereNoneIsWritten", "Sub A()\n10000: Select Case x\n10005: Case 1\n10010: End Select\nEnd Sub\n",
     "--line-numbers",
     "a.bas:3: stale-number: Sub A: 1 number is not what insertion writes now; 10005 would not be there\n"},
    {"Incomplete", "Sub A()\n10000: x = 1\ny\nz\n10015: w\nEnd Sub\n", "--line-numbers",
     "a.bas:3: incomplete-numbers: Sub A: 2 lines have no number while others have\n"},
    {"Duplicate", "Sub A()\n10000: x = 1\n10000: y\nEnd Sub\n", "--line-numbers",
     "a.bas:3: duplicate-number: Sub A: the number 10000 stands at line 2 (line 2 of the file), too\n"
     "a.bas:3: stale-number: Sub A: 1 number is not what insertion writes now; 10000 would be 10005\n"},
    {"EachProcedureOfAProperty",
     "Property Get P()\n10000: x\nEnd Property\nProperty Let P(v)\ny\nEnd Property\n", "--line-numbers",
     "a.bas:4: no-numbers: Property Let P: has no line numbers\n"},
    {"ByModule", "Sub A()\n10002: x\nEnd Sub\nSub B()\n10000: x\nEnd Sub\n",
     "--line-numbers --numbering module",
     "a.bas:5: stale-number: Sub B: 1 number is not what insertion writes now; 10000 would be 10005\n"},
    {"NumbersThatAreNotWanted", "Sub A()\n    x\nEnd Sub\nFunction B()\n10000: x\n10005: y\nEnd Function\n",
     "--line-numbers=false", "a.bas:5: numbers-present: Function B: has line numbers on 2 lines\n"},
    {"NoHandler", "Sub A()\n    x\nEnd Sub\n", "--error-handlers",
     "a.bas:1: no-handler: Sub A: has no error handler\n"},
    {"HandlersThatAreNotWanted", "Sub A()\n    x\nEnd Sub\n", "--error-handlers=false", ""},
    {"SkippedProceduresAreNoFindings", "Sub A()\n10 x\nGoTo 10\nEnd Sub\n", "--line-numbers", ""},
    {"SkippedProceduresAreWhenStrict", "Sub A()\n10 x\nGoTo 10\nEnd Sub\n", "--line-numbers --strict",
     "a.bas:2: foreign-numbers: Sub A would be skipped: line 2 (line 2 of the file) has a number that "
     "another tool "
     "wrote; remove it there first\n"},
    {"OneProcedure", "Sub A()\n    x\nEnd Sub\nSub B()\n    y\nEnd Sub\n", "--line-numbers --procedure B",
     "a.bas:4: no-numbers: Sub B: has no line numbers\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, Check, testing::ValuesIn(checkCases),
                         [](const auto& c) { return std::string(c.param.name); });

class CheckOfABuild : public testing::TestWithParam<const char*> {};

TEST_P(CheckOfABuild, FindsNothing) {
    CommandTest test;
    support::WriteProject(support::GenerateProject({.files = 6, .lines = 2000, .seed = 3}), test.folder());
    const std::string options = GetParam();
    EXPECT_EQ(test.Run("check @Generated.vbp -q " + options).status, 1);
    ASSERT_EQ(test.Run("insert @Generated.vbp -q " + options).status, 0);
    const Outcome outcome = test.Run("check @Generated.vbp " + options);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr("everything is as wanted\n"));
}

INSTANTIATE_TEST_SUITE_P(Options, CheckOfABuild,
                         testing::Values("--line-numbers", "--error-handlers",
                                         "--error-handlers --line-numbers",
                                         "--error-handlers --line-numbers --numbering module"));

TEST(CheckHandlers, FindsThoseThatAreOutOfDate) {
    CommandTest test;
    test.Write("a.bas", "Sub A()\n    x\nEnd Sub\n");
    ASSERT_EQ(test.Run("insert @a.bas --error-handlers -q").status, 0);
    const Outcome outcome = test.Run("check @a.bas --error-handlers --label Failed");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr(": stale-handler: Sub A: its error handler is out of date: "));
    EXPECT_THAT(test.Run("check @a.bas --error-handlers=false").out,
                HasSubstr(": handler-present: Sub A: has an error handler\n"));
}

TEST(CheckConvention, ComesFromTheProjectFile) {
    CommandTest test;
    test.Write("a.bas", "Sub A()\n10000: x\nEnd Sub\n");
    test.Write(".lintara.toml", "line-numbers = false\nerror-handlers = true\n");
    const Outcome outcome = test.Run("check @a.bas");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("DIR/a.bas:2: numbers-present: "));
    EXPECT_THAT(outcome.out, HasSubstr("DIR/a.bas:1: no-handler: "));
    EXPECT_EQ(test.Run("check @a.bas --line-numbers").out, "") << "the command line asks for something else";
    test.Write(".lintara.toml", "step = 5\n");
    EXPECT_EQ(test.Run("check @a.bas").status, 2);
}

TEST(CheckUsage, SaysWhatIsWrong) {
    CommandTest test;
    test.Write("a.bas", "Sub A()\n    x\nEnd Sub\n");
    EXPECT_THAT(test.Run("check @a.bas").err,
                HasSubstr("say what to check: --error-handlers, --line-numbers"));
    EXPECT_THAT(test.Run("check @a.bas --line-numbers --procedure B").err,
                HasSubstr("there is no procedure 'B'"));
    EXPECT_EQ(test.Run("check @a.bas --line-numbers --procedure B").status, 2);
    EXPECT_EQ(test.Run("check @a.bas --line-numbers --base 7").status, 2);
    EXPECT_EQ(test.Run("check @no.bas --line-numbers").status, 3);
}

TEST(CheckJson, HoldsFindingsAndNotes) {
    CommandTest test;
    test.Write("a.bas", "Attribute VB_Name = \"M\"\nSub A()\n    x\nEnd Sub\nSub B()\n10 x\nEnd Sub\n");
    const Outcome outcome = test.Run("check @a.bas --line-numbers --json");
    EXPECT_EQ(outcome.status, 1);
    const Json report = Json::parse(outcome.out);
    EXPECT_EQ(report["command"], "check");
    EXPECT_EQ(report["status"], 1);
    ASSERT_EQ(report["findings"].size(), 1U);
    EXPECT_EQ(report["findings"][0], Json::parse(R"({"file": "DIR/a.bas", "line": 2, "shownLine": 1,
        "code": "no-numbers", "project": "a", "component": "M", "procedure": "A", "kind": "Sub",
        "message": "Sub A: has no line numbers"})"));
    ASSERT_EQ(report["notes"].size(), 1U);
    EXPECT_EQ(report["notes"][0]["code"], "foreign-numbers");
    EXPECT_EQ(report["errors"], Json::array());
}

TEST(CheckNotes, AreToldOnStandardError) {
    CommandTest test;
    test.Write("a.bas", "Sub B()\n10 x\nEnd Sub\n");
    const Outcome outcome = test.Run("check @a.bas --line-numbers");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("DIR/a.bas:2: note: Sub B would be skipped: line 2"));
    EXPECT_EQ(test.Run("check @a.bas --line-numbers --quiet").err, "");
}

}  // namespace
}  // namespace lintara::cli
