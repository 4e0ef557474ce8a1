// One line with thousands of matches: replacing them takes the square of their number, so it is refused.
#include "cli/guards/crowded_lines.h"

#include "cli/edits/component_replace.h"
#include "cli/edits/refusal.h"
#include "tests/cli/command_run.h"
#include "tests/cli/handler_edits.h"
#include "tests/cli/skip_case.h"
#include "workspace/component_file.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string Repeated(std::string_view text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

constexpr std::string_view Off = "On Error GoTo 0: ";
constexpr std::string_view Led = "On Error GoTo hErr: ";
constexpr std::size_t TooMany = 2000;  // times more than 30,000 characters
constexpr std::size_t Many = 50;

std::string SubWith(const std::string& line) {
    return "Sub A()\n    x\n    " + line + "y\nEnd Sub\n";
}

TEST(CrowdedLines, NoLineThatTheIdeTakesIsOne) {
    static_assert(!IsCrowded(workspace::longestLine, workspace::longestLine));
    EXPECT_EQ(FindCrowdedLine(std::vector<Text>{Text(workspace::longestLine, u'a')}, u"a"), std::nullopt);
}

TEST(CrowdedLines, MatchesTimesCharactersCount) {
    const Text long1(1'000'000, u'x');
    EXPECT_EQ(FindCrowdedLine(std::vector<Text>{long1 + u"ab"}, u"AB"), std::nullopt);
    EXPECT_EQ(FindCrowdedLine(std::vector<Text>{u"ab", long1 + u"ab", Text(5000, u'b')}, u"B"), 2U);
    Text sixteen = long1;
    for (int i = 0; i < 16; ++i) {
        sixteen += u"ab";
    }
    EXPECT_EQ(FindCrowdedLine(std::vector<Text>{sixteen}, u"ab"), std::nullopt);
    EXPECT_EQ(FindCrowdedLine(std::vector<Text>{sixteen + u"ab"}, u"ab"), 0U);
}

TEST(CrowdedLines, ProceduresThatHaveOneGetNoHandler) {
    EditedModule module(SubWith(Repeated(Off, TooMany)));
    const ComponentReport report = InsertHandlers(module);
    ExpectSkipped({"", "", "crowded-line A", 3}, report, module);
    EXPECT_THAT(report.skipped[0].message,
                HasSubstr("line 3 (line 3 of the file) has 34005 characters and too many \"On Error GoTo 0\" "
                          "among them"));
    EditedModule fewer(SubWith(Repeated(Off, Many)));
    EXPECT_THAT(EditedIn(InsertHandlers(fewer)), ElementsAre("A"));
    EXPECT_THAT(fewer.Code(), HasSubstr(Repeated(Led, Many)));
}

TEST(CrowdedLines, ProceduresThatHaveOneKeepTheirHandler) {
    const std::string block = UsualBlock("Sub", "A");
    EditedModule module("Sub A()\n    " + Repeated(Led, TooMany) + "y\n" + block + "End Sub\n");
    ExpectSkipped({"", "", "crowded-line A", 2}, RemoveHandlers(module), module);
    EditedModule fewer("Sub A()\n    " + Repeated(Led, Many) + "y\n" + block + "End Sub\n");
    EXPECT_THAT(EditedIn(RemoveHandlers(fewer)), ElementsAre("A"));
    EXPECT_THAT(fewer.Code(), HasSubstr(Repeated(Off, Many)));
}

TEST(CrowdedLines, AreRefusedWhereNothingIsSkipped) {
    EditedModule off(SubWith(Repeated(Off, TooMany)));
    EXPECT_THROW((void)InsertHandlers(off, {.exact = true}), Refusal);
    EditedModule led(SubWith(Repeated(Led, TooMany)));
    EXPECT_THROW((void)RemoveHandlers(led, {.exact = true}), Refusal);
    EXPECT_THROW((void)InsertHandlers(led, {.refresh = true, .exact = true}), Refusal);
    EXPECT_EQ(led.Bytes(), led.OriginalBytes());
}

TEST(CrowdedLines, AreNotReplacedIn) {
    CommandTest test;
    test.Write("m.bas", "Attribute VB_Name = \"m\"\r\n'a\r\n'" + Repeated("ab", 250'000) + "\r\n");
    const auto before = test.Files();
    for (const char* const exact : {"", " --exact"}) {
        const Outcome outcome =
            test.Run("replace @m.bas --component m --find b --replace c" + std::string(exact));
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(
            outcome.err,
            HasSubstr("--find: line 2 (line 3 of the file) has 500001 characters and too many matches "
                      "among them"));
    }
    EXPECT_EQ(test.Files(), before);
    EXPECT_EQ(test.Run("replace @m.bas --component m --find a --replace c --to 1").status, 0);
    EXPECT_THAT(test.Read("m.bas"), HasSubstr("\r\n'c\r\n'abab"));
}

}  // namespace
}  // namespace lintara::cli
