// insert and remove over projects on disk: what is written, printed and returned.
#include "tests/cli/command_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* OddWarning =
    "DIR/lib/Stock.bas:9: warning: Sub Odd in Stock was skipped: its code is line 8, but no lines would be "
    "edited; they differ at line 8 (line 9 of the file) [range-mismatch]\n";

class EditCommand : public testing::Test {
  protected:
    void SetUp() override {
        test.WriteShop();
        before = test.Files();
    }

    CommandTest test;
    std::map<std::string, std::string> before;
};

TEST_F(EditCommand, NumbersInPlaceAndRemovesAgain) {
    const Outcome inserted = test.Run("insert @Shop.vbp --line-numbers");
    EXPECT_EQ(inserted.status, 0);
    EXPECT_EQ(inserted.out, "Numbered 3 procedures in 2 files, 5 lines; skipped 1 procedure.\n");
    EXPECT_EQ(inserted.err, OddWarning);
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("\r\n10000:     count = 1\r\n10005:     Sell count\r\n"));
    EXPECT_THAT(test.Read("lib/Stock.bas"), HasSubstr("\r\n10000:     Debug.Print v\r\n"));

    const Outcome removed = test.Run("remove @Shop.vbp --line-numbers");
    EXPECT_EQ(removed.status, 0);
    EXPECT_EQ(removed.out, "Removed the numbers of 3 procedures in 2 files, 5 lines.\n");
    EXPECT_EQ(removed.err, "");
    EXPECT_EQ(test.Files(), before);
}

TEST_F(EditCommand, TakesBaseAndStep) {
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers --base 20000 --step 7").status, 0);
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("\r\n20000:     count = 1\r\n20007:     Sell count\r\n"));
}

TEST_F(EditCommand, RefusesNumbersOfSixDigitsAndWritesNothing) {
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --base 99998");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err,
                AllOf(HasSubstr("--base 99998"), HasSubstr("Sub Main in Main"), HasSubstr("100003")));
    EXPECT_EQ(test.Files(), before);
}

TEST_F(EditCommand, ExactTakesAnyNumbers) {
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --exact --base 7 --step 100000");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("\r\n7:     count = 1\r\n    Sell count\r\n"));
}

TEST_F(EditCommand, CheckWritesNothingAndTellsByItsStatus) {
    const Outcome changes = test.Run("insert @Shop.vbp --line-numbers --check");
    EXPECT_EQ(changes.status, 1);
    EXPECT_EQ(changes.out,
              "DIR/Main.bas: 3 lines would change\n"
              "DIR/lib/Stock.bas: 2 lines would change\n"
              "Would number 3 procedures in 2 files, 5 lines; skipped 1 procedure.\n");
    EXPECT_EQ(test.Files(), before);

    const Outcome nothing = test.Run("remove @Shop.vbp --line-numbers --check");
    EXPECT_EQ(nothing.status, 0);
    EXPECT_EQ(nothing.out, "Nothing to change.\n");
}

TEST_F(EditCommand, RenumberingWithTheSameNumbersChangesNothing) {
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    const Outcome same = test.Run("insert @Shop.vbp --line-numbers --renumber --check --quiet");
    EXPECT_EQ(same.status, 0);
    const Outcome other = test.Run("insert @Shop.vbp --line-numbers --renumber --step 10 --check --quiet");
    EXPECT_EQ(other.status, 1);
}

TEST_F(EditCommand, DiffShowsTheChangesAndWritesNothing) {
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --component Main --diff");
    EXPECT_EQ(outcome.status, 0);
    const std::string label = "DIR";
    EXPECT_EQ(Replaced(outcome.out, "\r\n", "\n"), "--- a" + label +
                                                       "/Main.bas\n"
                                                       "+++ b" +
                                                       label +
                                                       "/Main.bas\n"
                                                       "@@ -3,11 +3,11 @@\n"
                                                       " Private count As Long\n"
                                                       " \n"
                                                       " Public Sub Main()\n"
                                                       "-    count = 1\n"
                                                       "-    Sell count\n"
                                                       "+10000:     count = 1\n"
                                                       "+10005:     Sell count\n"
                                                       " End Sub\n"
                                                       " \n"
                                                       " ' takes one away\n"
                                                       " Private Function Sell(ByVal n As Long) As Long\n"
                                                       "-    Sell = n - 1\n"
                                                       "+10000:     Sell = n - 1\n"
                                                       " End Function\n");
    EXPECT_EQ(test.Files(), before);
}

TEST_F(EditCommand, DiffAndCheckGoTogether) {
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --diff --check");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("@@ "));
    EXPECT_THAT(outcome.out, Not(HasSubstr("would change")));
    EXPECT_EQ(test.Files(), before);
}

TEST_F(EditCommand, DiffIsColoredOnTerminalsThatWantIt) {
    test.outIsTerminal = true;
    EXPECT_THAT(test.Run("insert @Shop.vbp --line-numbers --diff").out,
                AllOf(HasSubstr("\x1b[32m+10000:     count = 1\x1b[m\n"), Not(HasSubstr("\r"))));
    test.wantsColor = false;
    EXPECT_THAT(test.Run("insert @Shop.vbp --line-numbers --diff").out,
                AllOf(HasSubstr("\n+10000:     count = 1\n"), Not(HasSubstr("\x1b"))));
}

TEST_F(EditCommand, PatchAppliesTheDiff) {
    if (std::system("patch --version > /dev/null 2>&1") != 0) {
        GTEST_SKIP() << "there is no patch";
    }
    const Outcome shown = test.Run("insert @Shop.vbp --line-numbers --diff");
    test.Write("numbers.diff", Replaced(shown.out, "DIR/", "/"));
    const std::string command = "cd '" + test.folder().string() + "' && patch --binary -s -p1 < numbers.diff";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string main = test.Read("Main.bas");
    const std::string stock = test.Read("lib/Stock.bas");
    test.WriteShop();
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    EXPECT_EQ(main, test.Read("Main.bas"));
    EXPECT_EQ(stock, test.Read("lib/Stock.bas"));
}

TEST_F(EditCommand, TheDiffHoldsTheBytesOfTheFile) {
    test.Write("Texts.bas", "Public Sub Greet()\r\n    MsgBox \"Gr\xfc\xdf Gott\"\r\nEnd Sub\r\n");
    const Outcome shown = test.Run("insert @Texts.bas --line-numbers --diff");
    EXPECT_THAT(shown.out, HasSubstr("\r\n+10000:     MsgBox \"Gr\xfc\xdf Gott\"\r\n"));
    test.outIsTerminal = true;
    test.wantsColor = false;
    EXPECT_THAT(test.Run("insert @Texts.bas --line-numbers --diff").out,
                HasSubstr("\n+10000:     MsgBox \"Gr\xc3\xbc\xc3\x9f Gott\"\n"));
}

TEST_F(EditCommand, AProjectIsTheSameThroughALink) {
    std::filesystem::create_directory(test.Path("links"));
    std::filesystem::create_symlink(test.Path("Shop.vbp"), test.Path("links/Here.vbp"));
    const Outcome outcome = test.Run("insert @links/Here.vbp --line-numbers");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("Numbered 3 procedures in 2 files"));
    EXPECT_TRUE(std::filesystem::is_symlink(test.Path("links/Here.vbp")));
}

TEST_F(EditCommand, OutputWritesACopyAndLeavesTheSources) {
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --output @out/numbered");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "Numbered 3 procedures in 2 files, 5 lines; skipped 1 procedure; wrote 4 files to "
              "DIR/out/numbered.\n");
    std::filesystem::rename(test.Path("out"), test.folder().string() + "-out");
    EXPECT_EQ(test.Files(), before);
    std::filesystem::rename(test.folder().string() + "-out", test.Path("out"));

    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    for (const char* name : {"Shop.vbp", "Main.bas", "lib/Stock.bas"}) {
        EXPECT_EQ(test.Read(name), test.Read(std::string("out/numbered/") + name));
    }
}

TEST_F(EditCommand, BackupKeepsTheOriginalsOfChangedFiles) {
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers --component Main --backup .orig").status, 0);
    EXPECT_EQ(test.Read("Main.bas.orig"), before["Main.bas"]);
    EXPECT_NE(test.Read("Main.bas"), before["Main.bas"]);
    EXPECT_FALSE(std::filesystem::exists(test.Path("lib/Stock.bas.orig")));
}

TEST_F(EditCommand, StrictTellsOfSkippedProceduresByItsStatus) {
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers --strict --component Main").status, 0);
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --strict --component Stock");
    EXPECT_EQ(outcome.status, 4);
    EXPECT_THAT(test.Read("lib/Stock.bas"), HasSubstr("10000:     Size = 3")) << "the others are edited";
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers --strict --check --procedure Odd").status, 4);
}

TEST_F(EditCommand, QuietPrintsErrorsOnly) {
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --quiet");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(test.Run("insert @nothing.vbp --line-numbers --quiet").err, Not(IsEmpty()));
}

TEST_F(EditCommand, TheReportIsOneJsonObject) {
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --json");
    EXPECT_EQ(outcome.status, 0);
    const auto expected = nlohmann::ordered_json::parse(R"json({
        "command": "insert",
        "status": 0,
        "written": true,
        "linesChanged": 5,
        "proceduresEdited": 3,
        "proceduresSkipped": 1,
        "components": [
            {"project": "Shop", "component": "Main", "kind": "module", "file": "DIR/Main.bas",
             "linesChanged": 3,
             "edited": [
                {"name": "Main", "kind": "Sub", "line": 4, "fileLine": 5},
                {"name": "Sell", "kind": "Function", "line": 10, "fileLine": 11}],
             "skipped": []},
            {"project": "Shop", "component": "Stock", "kind": "module", "file": "DIR/lib/Stock.bas",
             "linesChanged": 2,
             "edited": [{"name": "Size", "kind": "Property", "line": 1, "fileLine": 2}],
             "skipped": [
                {"name": "Odd", "kind": "Sub", "line": 7, "fileLine": 8, "reason": "range-mismatch",
                 "message": "its code is line 8, but no lines would be edited; they differ at line 8 (line 9 of the file)"}]}],
        "warnings": [
            {"file": "DIR/lib/Stock.bas", "line": 9, "code": "range-mismatch",
             "message": "Sub Odd in Stock was skipped: its code is line 8, but no lines would be edited; they differ at line 8 (line 9 of the file)"}],
        "errors": [],
        "files": ["DIR/Main.bas", "DIR/lib/Stock.bas"]
    })json");
    EXPECT_EQ(nlohmann::ordered_json::parse(outcome.out), expected) << outcome.out;
    EXPECT_EQ(nlohmann::ordered_json::parse(outcome.out).dump(), expected.dump())
        << "the order of the members";
}

TEST_F(EditCommand, TheReportTellsOfErrors) {
    const Outcome outcome = test.Run("insert @nothing.vbp --line-numbers --json");
    EXPECT_EQ(outcome.status, 3);
    const auto report = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(report["status"], 3);
    EXPECT_EQ(report["written"], false);
    EXPECT_EQ(report["components"], nlohmann::json::array());
    ASSERT_EQ(report["errors"].size(), 1U);
    EXPECT_EQ(report["errors"][0]["file"], "DIR/nothing.vbp");
}

struct ScopeCase {
    const char* options;
    std::vector<std::string> edited;
};

class EditScope : public EditCommand, public testing::WithParamInterface<ScopeCase> {};

TEST_P(EditScope, SaysWhatIsEdited) {
    const Outcome outcome =
        test.Run("insert @Shop.vbp --line-numbers --check --json " + std::string(GetParam().options));
    const auto report = nlohmann::json::parse(outcome.out);
    std::vector<std::string> edited;
    for (const auto& component : report["components"]) {
        for (const auto& procedure : component["edited"]) {
            edited.push_back(procedure["name"]);
        }
    }
    EXPECT_EQ(edited, GetParam().edited) << outcome.err;
}

const ScopeCase scopeCases[] = {
    {"", {"Main", "Sell", "Size"}},
    {"--scope project", {"Main", "Sell", "Size"}},
    {"--component main", {"Main", "Sell"}},
    {"--component M* --component ST???", {"Main", "Sell", "Size"}},
    {"--component shop.stock", {"Size"}},
    {"--procedure S*", {"Sell", "Size"}},
    {"--procedure size --procedure MAIN", {"Main", "Size"}},
    {"--procedure S* --component Main", {"Sell"}},
    {"--at Main:5", {"Main"}},
    {"--at Main:8", {"Sell"}},
    {"--at Main:9:3", {"Sell"}},
    {"--at Shop.Stock:2", {"Size"}},
    {"--at Main:1 --scope component", {"Main", "Sell"}},
};

INSTANTIATE_TEST_SUITE_P(Cases, EditScope, testing::ValuesIn(scopeCases));

TEST_F(EditCommand, NamesThatTheProjectLacksAreUsageErrors) {
    const std::pair<const char*, const char*> cases[] = {
        {"--component Stok", "--component: there is no component 'Stok'. Did you mean Stock?"},
        {"--component Main --component X*", "--component: there is no component 'X*'."},
        {"--procedure Sel", "--procedure: there is no procedure 'Sel'. Did you mean Sell?"},
        {"--component Main --procedure Size", "--procedure: there is no procedure 'Size'."},
        {"--at Stokc:1", "--at: there is no component 'Stokc'. Did you mean Stock?"},
        {"--at Main:14", "--at: there is no line 14 of Main; it has 12 lines"},
        {"--at Main:2", "--at: line 2 of Main lies in the declarations, in no procedure"},
    };
    for (const auto& [options, message] : cases) {
        const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers " + std::string(options));
        EXPECT_EQ(outcome.status, 2) << options;
        EXPECT_THAT(outcome.err, HasSubstr(message)) << options;
        EXPECT_EQ(outcome.out, "") << options;
    }
    EXPECT_EQ(test.Files(), before);
}

TEST_F(EditCommand, GroupsOfProjectsAreEditedAsAWhole) {
    test.Write("b/B.vbp", "Module=Main; B.bas\r\nName=\"B\"\r\n");
    test.Write("b/B.bas", "Attribute VB_Name = \"Main\"\r\nFunction F()\r\n    F = 1\r\nEnd Function\r\n");
    test.Write("All.vbg", "VBGROUP 5.0\r\nStartupProject=Shop.vbp\r\nProject=b\\B.vbp\r\n");
    const Outcome outcome = test.Run("insert @All.vbg --line-numbers --quiet");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(test.Read("b/B.bas"), HasSubstr("10000:     F = 1"));
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("10000:     count = 1"));

    EXPECT_THAT(test.Run("remove @All.vbg --line-numbers --at Main:3").err,
                HasSubstr("several projects have a component 'Main'; give Shop.Main or B.Main"));
    EXPECT_EQ(test.Run("remove @All.vbg --line-numbers --component B.Main").status, 0);
    EXPECT_THAT(test.Read("b/B.bas"), HasSubstr("\r\n    F = 1"));
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("10000:     count = 1"));
}

TEST_F(EditCommand, FoldersAndSingleComponentsAreProjects) {
    EXPECT_EQ(test.Run("insert @lib/Stock.bas --line-numbers --quiet").status, 0);
    EXPECT_THAT(test.Read("lib/Stock.bas"), HasSubstr("10000:     Size = 3"));
    EXPECT_EQ(test.Run("insert @. --line-numbers --quiet").status, 0);
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("10000:     count = 1"));
    EXPECT_EQ(test.Run("remove @. --line-numbers --recursive --quiet").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(EditCommand, ComponentsOfOneNameAreNotConfused) {
    std::filesystem::create_directory(test.folder() / "two");
    test.Write("two/a.bas", "Attribute VB_Name = \"Same\"\r\nSub A()\r\n    x = 1\r\nEnd Sub\r\n");
    test.Write("two/b.bas", "Attribute VB_Name = \"Same\"\r\nSub A()\r\n    x = 1 _\r\n  + 2\r\nEnd Sub\r\n");
    const std::string b = test.Read("two/b.bas");
    for (const char* options : {"", " --exact"}) {
        const Outcome outcome = test.Run("insert @two --line-numbers --strict" + std::string(options));
        if (outcome.status == 3) {
            continue;  // refused as a whole
        }
        EXPECT_EQ(outcome.status, 4);
        EXPECT_THAT(outcome.err, HasSubstr("[name-clash]"));
        EXPECT_EQ(test.Read("two/b.bas"), b);
    }
}

TEST_F(EditCommand, ProgressIsShownOnlyWhenWorkTakesLong) {
    test.errIsTerminal = true;
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers").err, OddWarning);
}

TEST_F(EditCommand, NamesInMessagesCannotSteerATerminal) {
    test.Write("x/a\x1b[2J.bas", "Sub A()\r\n    x = 1\r\nEnd Sub ' done\r\n");
    const Outcome outcome = test.Run("insert @x --line-numbers");
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("a\\x1b[2J.bas:2: warning"), Not(HasSubstr("\x1b"))));
    EXPECT_THAT(test.Run("list @x").out, Not(HasSubstr("\x1b")));
}

}  // namespace
}  // namespace lintara::cli
