// The parameter dialogs on the command line: what the window is asked, and what becomes of its answer.
#include "tests/cli/command_run.h"
#include "tests/cli/window_stand_in.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <sys/wait.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class DialogCommand : public testing::Test {
  protected:
    void SetUp() override { test.WriteShop(); }

    // Both a run with the dialog's answer and one of the command that is to do the same, each on a fresh
    // project, leave the same files.
    void ExpectSame(const std::string& dialog, const std::string& command) {
        test.WriteShop();
        const Outcome asked = test.Run(dialog);
        EXPECT_EQ(asked.status, 0) << asked.err;
        const auto files = test.Files();
        test.WriteShop();
        const auto before = test.Files();
        const Outcome told = test.Run(command);
        EXPECT_EQ(told.status, 0) << told.err;
        EXPECT_NE(files, before);
        EXPECT_EQ(files, test.Files());
        EXPECT_EQ(asked.out, told.out);
        EXPECT_EQ(asked.err, told.err);
    }

    // Of the insert dialog, with what a case changes.
    static std::string InsertAnswer(const json& changes = json::object()) {
        json answer = {{"accepted", true}, {"Scope", 1},          {"InsertEH", true},
                       {"InsertLN", true}, {"EHLabel", "Failed"}, {"EHCode", "    Report\r\n    Beep"},
                       {"sCCPBuffer", ""}, {"LNBase", "20000"},   {"LNStep", "10"}};
        answer.update(changes);
        return answer.dump();
    }

    CommandTest test;
    WindowStandIn window;
};

TEST_F(DialogCommand, TellsTheWindowWhatIsAtTheCaret) {
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    EXPECT_EQ(window.request(),
              json::parse(R"({"window": "insert-eh", "iLenGetMemberName": 4, "iGetLineNumber": 5})"));
    (void)test.Run("dialog remove-eh @Shop.vbp --at Stock:2");
    EXPECT_EQ(window.request(),
              json::parse(R"({"window": "remove-eh", "iLenGetMemberName": 4, "iGetLineNumber": 2})"));
    (void)test.Run("dialog insert-code @Shop.vbp --at Main:1");
    EXPECT_EQ(window.request(),
              json::parse(R"({"window": "insert-code", "ProcAvailable": false, "ComponentAvailable": 1})"));
    (void)test.Run("dialog remove-code @Shop.vbp --at Main:12");
    EXPECT_EQ(window.request(),
              json::parse(R"({"window": "remove-code", "ProcAvailable": true, "ComponentAvailable": 12})"));
}

TEST_F(DialogCommand, CancelledChangesNothingAndHasAStatus) {
    const auto before = test.Files();
    for (const std::string kind : {"insert-eh", "remove-eh", "insert-code", "remove-code"}) {
        const Outcome outcome = test.Run("dialog " + kind + " @Shop.vbp --at Main:5");
        EXPECT_EQ(outcome.status, 1) << kind;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "lintara: the dialog was cancelled; nothing was changed\n");
    }
    EXPECT_EQ(test.Files(), before);
}

TEST_F(DialogCommand, InsertsInTheChosenScope) {
    test.Write("handler.txt", "    Report\n    Beep\n");
    const std::string command =
        "insert @Shop.vbp --error-handlers --line-numbers --label Failed --template @handler.txt "
        "--base 20000 --step 10";
    window.Answers(InsertAnswer());
    ExpectSame("dialog insert-eh @Shop.vbp --at Main:5", command + " --at Main:5");
    window.Answers(InsertAnswer({{"Scope", 2}}));
    ExpectSame("dialog insert-eh @Shop.vbp --at Main:5", command + " --component Main");
    window.Answers(InsertAnswer({{"Scope", 3}}));
    ExpectSame("dialog insert-eh @Shop.vbp --at Main:1", command);
}

TEST_F(DialogCommand, TheProjectOfTheCaretIsTheCurrentOneOfAGroup) {
    test.Write("Other.bas", "Sub Other()\r\n    x = 1\r\nEnd Sub\r\n");
    test.Write("B.vbp", "Module=Other; Other.bas\r\nName=\"B\"\r\n");
    test.Write("All.vbg", "StartupProject=B.vbp\r\nProject=Shop.vbp\r\n");
    window.Answers(InsertAnswer({{"Scope", 3}}));
    const std::string other = test.Read("Other.bas");
    const Outcome outcome = test.Run("dialog insert-eh @All.vbg --at Main:5");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(test.Read("Other.bas"), other);
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("20000: "));
    EXPECT_THAT(test.Read("lib/Stock.bas"), HasSubstr("20000: "));
}

TEST_F(DialogCommand, InsertsOnlyWhatIsTicked) {
    window.Answers(R"({"accepted": true, "Scope": 1, "InsertEH": false, "InsertLN": true,
                       "LNBase": "30000", "LNStep": "7"})");
    ExpectSame("dialog insert-eh @Shop.vbp --at Main:5",
               "insert @Shop.vbp --line-numbers --base 30000 --step 7 --at Main:5");
    window.Answers(R"({"accepted": true, "Scope": 1, "InsertEH": true, "InsertLN": false,
                       "EHLabel": "hErr", "EHCode": "    Beep", "sCCPBuffer": ""})");
    test.Write("handler.txt", "    Beep");
    ExpectSame("dialog insert-eh @Shop.vbp --at Main:5 --renumber",
               "insert @Shop.vbp --error-handlers --template @handler.txt --at Main:5");
}

TEST_F(DialogCommand, ATemplateKeepsItsLastLineEnding) {
    window.Answers(InsertAnswer({{"EHCode", "    Beep\r\n"}, {"InsertLN", false}}));
    EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp --at Main:5").status, 0);
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("Failed:\r\n    Beep\r\n\r\nEnd Sub"));
}

TEST_F(DialogCommand, ConvertsNumbersAsTheLanguageDoes) {
    const std::array<std::array<const char*, 2>, 4> cases = {
        {{"2e4", "20000: "}, {" 30,000 ", "30000: "}, {"&H4E20", "20000: "}, {"20000.5", "20000: "}}};
    for (const auto& [typed, inserted] : cases) {
        test.WriteShop();
        window.Answers(InsertAnswer({{"LNBase", typed}}));
        EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp --at Main:5").status, 0) << typed;
        EXPECT_THAT(test.Read("Main.bas"), HasSubstr(inserted)) << typed;
    }
}

TEST_F(DialogCommand, RefusesNumbersThatCannotBeInserted) {
    struct Case {
        json changes;
        const char* complaint;
    };
    const auto before = test.Files();
    for (const Case& c : {Case{{{"LNBase", "1e10"}}, "the base number: '1e10' is no number of 32 bits"},
                          Case{{{"LNStep", "ten"}}, "the step: 'ten' is no number of 32 bits"},
                          Case{{{"LNBase", "5"}}, "--base: numbers must have five digits"},
                          Case{{{"LNStep", "0"}}, "--step: a step of 0"},
                          Case{{{"EHLabel", "no label"}}, "--label: 'no label' is no label"},
                          Case{{{"EHCode", "End Sub"}}, "--template: "},
                          Case{{{"InsertEH", false}, {"InsertLN", false}}, "neither error handlers nor"}}) {
        window.Answers(InsertAnswer(c.changes));
        const Outcome outcome = test.Run("dialog insert-eh @Shop.vbp --at Main:5");
        EXPECT_EQ(outcome.status, 2) << c.complaint;
        EXPECT_THAT(outcome.err, AllOf(HasSubstr("what was chosen in the dialog cannot be done: "),
                                       HasSubstr(c.complaint)));
    }
    EXPECT_EQ(test.Files(), before);
}

TEST_F(DialogCommand, RemovesInTheChosenScope) {
    ASSERT_EQ(test.Run("insert @Shop.vbp --error-handlers --line-numbers").status, 0);
    const std::string main = test.Read("Main.bas");
    const std::string stock = test.Read("lib/Stock.bas");
    window.Answers(R"({"accepted": true, "Scope": 2, "RemoveEH": true, "RemoveLN": true})");
    const Outcome component = test.Run("dialog remove-eh @Shop.vbp --at Main:5");
    EXPECT_EQ(component.status, 0) << component.err;
    EXPECT_THAT(test.Read("Main.bas"), AllOf(Not(HasSubstr("hErr:")), Not(HasSubstr("10000: "))));
    EXPECT_EQ(test.Read("lib/Stock.bas"), stock);
    window.Answers(R"({"accepted": true, "Scope": 3, "RemoveEH": false, "RemoveLN": true})");
    EXPECT_EQ(test.Run("dialog remove-eh @Shop.vbp --at Main:5").status, 0);
    EXPECT_THAT(test.Read("lib/Stock.bas"), AllOf(HasSubstr("hErr:"), Not(HasSubstr("10000: "))));
}

std::string CodeAnswer(const json& changes = json::object()) {
    json answer = {{"accepted", true},
                   {"Scope", 1},
                   {"TextToInsert", "    Trace \"a\"\r\n    Trace 2"},
                   {"NoDelimiters", false},
                   {"WhereToInsert", 1},
                   {"LineToInsert", 0},
                   {"ID", 5},
                   {"sCCPBufferX", ""}};
    answer.update(changes);
    return answer.dump();
}

TEST_F(DialogCommand, InsertsCodeWhereItIsToGo) {
    test.Write("code.txt", "    Trace \"a\"\n    Trace 2\n");
    const std::string command = "custom insert @Shop.vbp --id 5 --code @code.txt ";
    window.Answers(CodeAnswer());
    ExpectSame("dialog insert-code @Shop.vbp --at Main:5", command + "--at Main:5");
    window.Answers(CodeAnswer({{"WhereToInsert", 2}, {"Scope", 2}}));
    ExpectSame("dialog insert-code @Shop.vbp --at Main:5", command + "--where last --component Main");
    window.Answers(CodeAnswer({{"WhereToInsert", 3}, {"LineToInsert", 2}}));
    ExpectSame("dialog insert-code @Shop.vbp --at Main:5", command + "--line 2 --at Main:5");
    window.Answers(CodeAnswer({{"NoDelimiters", true}, {"Scope", 3}}));
    ExpectSame("dialog insert-code @Shop.vbp --at Main:5", command + "--no-markers");
    window.Answers(CodeAnswer({{"ID", -7}, {"Scope", 3}}));
    ExpectSame("dialog insert-code @Shop.vbp --at Main:1",
               "custom insert @Shop.vbp --id -7 --code @code.txt");
}

TEST_F(DialogCommand, RemovesCodeByItsNumber) {
    const auto before = test.Files();
    window.Answers(CodeAnswer({{"Scope", 3}}));
    ASSERT_EQ(test.Run("dialog insert-code @Shop.vbp --at Main:5").status, 0);
    window.Answers(R"({"accepted": true, "Scope": 3, "ID": 4})");
    const auto inserted = test.Files();
    EXPECT_EQ(test.Run("dialog remove-code @Shop.vbp --at Main:5").status, 0);
    EXPECT_EQ(test.Files(), inserted);
    window.Answers(R"({"accepted": true, "Scope": 3, "ID": 5})");
    EXPECT_EQ(test.Run("dialog remove-code @Shop.vbp --at Main:5").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(DialogCommand, WhatItDidCanBeUndone) {
    const auto before = test.Files();
    window.Answers(InsertAnswer({{"Scope", 3}}));
    ASSERT_EQ(test.Run("dialog insert-eh @Shop.vbp --at Main:5").status, 0);
    ASSERT_NE(test.Files(), before);
    EXPECT_EQ(test.Run("undo @Shop.vbp").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(DialogCommand, SharesTheOptionsOfEditingCommands) {
    const auto before = test.Files();
    window.Answers(InsertAnswer({{"Scope", 3}}));
    const Outcome check = test.Run("dialog insert-eh @Shop.vbp --at Main:5 --check");
    EXPECT_EQ(check.status, 1);
    EXPECT_THAT(check.out, HasSubstr("Would insert error handlers and numbers into"));
    EXPECT_THAT(test.Run("dialog insert-eh @Shop.vbp --at Main:5 --diff").out, HasSubstr("+Failed:"));
    const Outcome listed = test.Run("dialog insert-eh @Shop.vbp --at Main:5 --check --json --exclude Stock");
    EXPECT_EQ(json::parse(listed.out)["command"], "insert");
    EXPECT_THAT(listed.out, Not(HasSubstr("Size")));
    EXPECT_EQ(test.Files(), before);
    // Odd is one of those that the checks leave alone.
    EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp --at Main:5 --strict --output @copy").status, 4);
    EXPECT_THAT(test.Read("copy/Main.bas"), HasSubstr("Failed:"));
}

TEST_F(DialogCommand, PrintsTheChoiceInPlaceOfEditing) {
    const auto before = test.Files();
    window.Answers(InsertAnswer());
    const Outcome chosen = test.Run("dialog insert-eh @Shop.vbp --at Main:5 --print");
    EXPECT_EQ(chosen.status, 0);
    EXPECT_EQ(json::parse(chosen.out), json::parse(InsertAnswer()));
    window.Answers(R"({"accepted": false})");
    const Outcome cancelled = test.Run("dialog remove-code @Shop.vbp --at Main:5 --print");
    EXPECT_EQ(cancelled.status, 1);
    EXPECT_EQ(json::parse(cancelled.out), json::parse(R"({"accepted": false})"));
    EXPECT_EQ(test.Files(), before);
}

TEST_F(DialogCommand, EditsTheChosenProcedureWhereverItHasMovedMeanwhile) {
    window.Answers(InsertAnswer({{"InsertEH", false}}));
    window.Does(
        "printf 'Attribute VB_Name = \"Main\"\\r\\nSub New1()\\r\\n    a = 1\\r\\nEnd Sub\\r\\n"
        "Sub Main()\\r\\n    b = 1\\r\\nEnd Sub\\r\\n' > " +
        test.Path("Main.bas") + "\ncat \"$here/answer\"");
    const Outcome outcome = test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(test.Read("Main.bas"), AllOf(HasSubstr("20000:     b = 1"), HasSubstr("\r\n    a = 1")));
}

TEST_F(DialogCommand, WarnsOfTheProjectOnce) {
    std::filesystem::remove(test.Path("lib/Stock.bas"));
    const std::string line = "dialog insert-eh @Shop.vbp --at Main:5 --skip-missing";
    const auto warnings = [](const std::string& text) {
        return Replaced(text, "warning: ", "").size() + std::string("warning: ").size() == text.size();
    };
    const Outcome cancelled = test.Run(line);
    EXPECT_TRUE(warnings(cancelled.err)) << cancelled.err;
    window.Answers(InsertAnswer());
    const Outcome done = test.Run(line);
    EXPECT_EQ(done.status, 0);
    EXPECT_TRUE(warnings(done.err)) << done.err;
}

TEST_F(DialogCommand, TellsWhatIsWrongWithAWindowThatFails) {
    struct Case {
        const char* does;
        const char* complaint;
    };
    const auto before = test.Files();
    for (const Case& c :
         {Case{"exit 7", "failed with status 7"}, Case{"kill -KILL $$", "was ended by a signal (Killed)"},
          Case{"kill -SEGV $$", "was ended by a signal (Segmentation fault)"},
          Case{"exit 0", "there is none"}, Case{"echo '{\"accepted\": tr'", "it is no JSON object"},
          Case{"echo '[1]'", "it is no JSON object"}, Case{"echo '{}'", "it has no \"accepted\""},
          Case{"echo '{\"accepted\": 1}'", "\"accepted\" is neither true nor false"},
          Case{"echo '{\"accepted\": true}'", "it has no \"Scope\""},
          Case{"echo '{\"accepted\": true, \"Scope\": 4}'", "\"Scope\" is no number from 1 to 3"},
          Case{"echo '{\"accepted\": true, \"Scope\": 1.5}'", "\"Scope\" is no number from 1 to 3"},
          Case{"echo '{\"accepted\": true, \"Scope\": -18446744073709551615}'", "\"Scope\" is no number"},
          Case{"echo '{\"accepted\": true, \"Scope\": 1, \"InsertEH\": true, \"InsertLN\": false}'",
               "it has no \"EHLabel\""},
          Case{"echo '{\"accepted\": true, \"Scope\": 1, \"InsertEH\": false, \"InsertLN\": true, "
               "\"LNBase\": 10000}'",
               "\"LNBase\" is no text"}}) {
        window.Does(c.does);
        const Outcome outcome = test.Run("dialog insert-eh @Shop.vbp --at Main:5");
        EXPECT_EQ(outcome.status, 3) << c.does;
        EXPECT_THAT(outcome.err, HasSubstr(c.complaint)) << c.does;
        EXPECT_EQ(outcome.out, "") << c.does;
    }
    EXPECT_EQ(test.Files(), before);
}

TEST_F(DialogCommand, RefusesAProcedureWhereThereIsNone) {
    window.Answers(InsertAnswer());
    const Outcome outcome = test.Run("dialog insert-eh @Shop.vbp --at Main:1");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("the caret is in no procedure"));
}

TEST_F(DialogCommand, PassesOnWhatTheWindowSays) {
    window.Does("echo 'lintara-window: warning: \033[2Jodd' >&2; cat \"$here/answer\"");
    EXPECT_THAT(test.Run("dialog insert-eh @Shop.vbp --at Main:5").err,
                testing::StartsWith("lintara-window: warning: \\x1b[2Jodd\n"));
}

TEST_F(DialogCommand, ALongRequestAndALongAnswerPass) {
    const std::string code(300000, 'x');
    window.Answers(CodeAnswer({{"TextToInsert", "    ' " + code}}));
    EXPECT_EQ(test.Run("dialog insert-code @Shop.vbp --at Main:5").status, 0);
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr(code));
}

// --- the copy-and-paste buffer ---

TEST_F(DialogCommand, WhatOneDialogPutsIntoTheBufferIsInTheNext) {
    EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp --at Main:5").status, 1);
    EXPECT_FALSE(window.request().contains("sCCPBuffer"));
    window.Answers(InsertAnswer({{"sCCPBuffer", "    Trace \"\u00e9\"\r\n"}}));
    EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp --at Main:5 --print").status, 0);
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    EXPECT_EQ(window.request()["sCCPBuffer"], "    Trace \"\u00e9\"\r\n");
    window.Answers(InsertAnswer({{"sCCPBuffer", ""}, {"InsertLN", false}}));
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    EXPECT_FALSE(window.request().contains("sCCPBuffer"));
}

TEST_F(DialogCommand, TheCodeDialogPutsIntoTheBufferWhatWasCopiedThere) {
    window.Answers(CodeAnswer({{"sCCPBufferX", "Trace 2"}}));
    EXPECT_EQ(test.Run("dialog insert-code @Shop.vbp --at Main:5").status, 0);
    window.Answers(CodeAnswer());
    (void)test.Run("dialog insert-code @Shop.vbp --at Main:5");
    EXPECT_FALSE(window.request().contains("sCCPBuffer"));
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    EXPECT_EQ(window.request()["sCCPBuffer"], "Trace 2");
    window.Answers(R"({"accepted": true, "Scope": 1, "RemoveEH": false, "RemoveLN": true})");
    (void)test.Run("dialog remove-eh @Shop.vbp --at Main:5");
    EXPECT_FALSE(window.request().contains("sCCPBuffer"));
}

TEST_F(DialogCommand, ACancelledDialogAndOneThatGivesNoBufferLeaveIt) {
    window.Answers(InsertAnswer({{"sCCPBuffer", "Beep"}}));
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5 --print");
    window.Answers(R"({"accepted": false, "sCCPBuffer": "Lost"})");
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    window.Answers(R"({"accepted": true, "Scope": 1, "InsertEH": false, "InsertLN": true,
                       "LNBase": "30000", "LNStep": "7"})");
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5 --print");
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5 --print");
    EXPECT_EQ(window.request()["sCCPBuffer"], "Beep");
}

TEST_F(DialogCommand, TheBufferIsKeptWhereTheEditIsRefused) {
    window.Answers(InsertAnswer({{"sCCPBuffer", "Beep"}, {"LNBase", "5"}}));
    EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp --at Main:5").status, 2);
    (void)test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    EXPECT_EQ(window.request()["sCCPBuffer"], "Beep");
}

TEST_F(DialogCommand, ABufferThatCannotBeKeptIsAWarning) {
    std::filesystem::create_directories(test.stateFolder() / "copy-and-paste.txt" / "in the way");
    window.Answers(InsertAnswer({{"sCCPBuffer", "Beep"}}));
    const Outcome outcome = test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("warning: the copy-and-paste buffer was not kept: "));
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("Failed:"));
}

TEST_F(DialogCommand, ABufferFileThatHoldsBytesOfNoTextHindersNothing) {
    std::filesystem::create_directories(test.stateFolder());
    std::ofstream(test.stateFolder() / "copy-and-paste.txt") << "a\xff\xfe";
    EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp --at Main:5").status, 1);
    EXPECT_EQ(window.request()["sCCPBuffer"], "a\xef\xbf\xbd\xef\xbf\xbd");
}

TEST_F(DialogCommand, AProgramThatTheWindowLeavesBehindIsNotWaitedFor) {
    window.Does("sleep 20 &\necho $! > \"$here/left\"\ncat \"$here/answer\"");
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp --at Main:5").status, 1);
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(10));
    std::ifstream left(window.Path("left"));
    pid_t process = 0;
    ASSERT_TRUE(left >> process);
    ::kill(process, SIGTERM);
}

// The line in the message, run as it stands.
std::string LineAfter(const std::string& err) {
    const std::string before = "; without a window: lintara ";
    const std::size_t at = err.find(before);
    return at == std::string::npos ? "" : err.substr(at + before.size(), err.size() - at - before.size() - 1);
}

TEST_F(DialogCommand, WithoutADisplayNamesACommandThatDoesTheSame) {
    struct Case {
        const char* dialog;
        const char* line;
    };
    window.Does("echo 'lintara-window: error: cannot show a window: there is no display' >&2; exit 3");
    for (const Case& c :
         {Case{"insert-eh @Shop.vbp --at Main:5",
               "insert DIR/Shop.vbp --error-handlers --line-numbers --at Main:5"},
          Case{"insert-eh @Shop.vbp --at Main:1 --check --exclude B* --quiet=false",
               "insert DIR/Shop.vbp --error-handlers --line-numbers --scope component --at Main:1 --check "
               "--quiet=false --exclude 'B*'"},
          Case{"remove-eh @Shop.vbp --at Main:5",
               "remove DIR/Shop.vbp --error-handlers --line-numbers --at Main:5"},
          Case{"insert-code @Shop.vbp --at Main:5",
               "custom insert DIR/Shop.vbp --id 1 --code code.txt --scope component --at Main:5"},
          Case{"remove-code @Shop.vbp --at Main:5",
               "custom remove DIR/Shop.vbp --id 1 --scope component --at Main:5"}}) {
        const Outcome outcome = test.Run(std::string("dialog ") + c.dialog);
        EXPECT_EQ(outcome.status, 3);
        EXPECT_THAT(outcome.err, HasSubstr("lintara: error: cannot show a window: there is no display; "));
        // The order of shared options is that of the help.
        std::multiset<std::string> words;
        std::multiset<std::string> expected;
        std::istringstream in(LineAfter(outcome.err));
        for (std::string word; in >> word;) {
            words.insert(word);
        }
        std::istringstream wanted{std::string(c.line)};
        for (std::string word; wanted >> word;) {
            expected.insert(word);
        }
        EXPECT_EQ(words, expected);
    }
}

TEST_F(DialogCommand, TheNamedCommandWorks) {
    window.Does("exit 3");
    for (const std::string kind : {"insert-eh", "remove-eh", "remove-code"}) {
        const Outcome outcome = test.Run("dialog " + kind + " @Shop.vbp --at Main:5");
        const Outcome named = test.Run(Replaced(LineAfter(outcome.err), "DIR/", "@"));
        EXPECT_EQ(named.status, 0) << named.err;
        EXPECT_EQ(named.err, "");
    }
    test.Write("code.txt", "    Trace");
    const Outcome code = test.Run("dialog insert-code @Shop.vbp --at Main:5");
    const Outcome named =
        test.Run(Replaced(Replaced(LineAfter(code.err), "DIR/", "@"), "code.txt", "@code.txt"));
    EXPECT_EQ(named.status, 0) << named.err;
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("    Trace\r\n"));
}

TEST_F(DialogCommand, TheRememberedCodeNeedsNoFile) {
    window.Does("exit 3");
    test.input = "    Trace";
    ASSERT_EQ(test.Run("custom insert @Shop.vbp --id 3 --code - --save-settings").status, 0);
    EXPECT_THAT(test.Run("dialog insert-code @Shop.vbp --at Main:5").err,
                AllOf(HasSubstr("custom insert DIR/Shop.vbp --id 1 --scope"), Not(HasSubstr("code.txt"))));
}

TEST_F(DialogCommand, TellsThatTheWindowIsNotInstalled) {
    ::setenv("LINTARA_WINDOW", "/nowhere/window", 1);
    const Outcome wrong = test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    EXPECT_EQ(wrong.status, 3);
    EXPECT_THAT(wrong.err,
                HasSubstr("LINTARA_WINDOW names /nowhere/window, which is no program; without a window: "
                          "lintara insert DIR/Shop.vbp"));
    ::unsetenv("LINTARA_WINDOW");
    const Outcome none = test.Run("dialog insert-eh @Shop.vbp --at Main:5");
    EXPECT_EQ(none.status, 3);
    EXPECT_THAT(none.err, HasSubstr("the program lintara-window is not installed"));
}

TEST_F(DialogCommand, AsksNobodyAboutAPlaceThatIsNotThere) {
    for (const std::string place : {"Nobody:1", "Main:99"}) {
        EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp --at " + place).status, 2);
    }
    EXPECT_EQ(test.Run("dialog insert-eh @Shop.vbp").status, 2);
    EXPECT_EQ(test.Run("dialog insert-eh @None.vbp --at Main:1").status, 3);
    EXPECT_FALSE(window.wasAsked());
}

// The real program, found beside the built command, without a display.
class RealWindow : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(LINTARA_BINARY_DIR "/window/lintara-window")) {
            GTEST_SKIP() << "lintara-window is not built here";
        }
        test.WriteShop();
    }

    // Standard output and standard error in one text.
    [[nodiscard]] Outcome RunBinary(const std::string& environment, const std::string& line) const {
        const std::string command =
            "env -u DISPLAY -u WAYLAND_DISPLAY -u LINTARA_WINDOW -u QT_QPA_PLATFORM " + environment +
            " " LINTARA_BINARY_DIR "/cli/lintara " + line + " 2>&1";
        FILE* pipe = ::popen(command.c_str(), "r");
        Outcome outcome;
        std::array<char, 4096> buffer{};
        for (std::size_t got = 0; (got = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
            outcome.out.append(buffer.data(), got);
        }
        outcome.status = WEXITSTATUS(::pclose(pipe));
        return outcome;
    }

    CommandTest test;
};

TEST_F(RealWindow, IsFoundAndTellsThatThereIsNoDisplay) {
    const Outcome outcome = RunBinary("", "dialog insert-eh " + test.Path("Shop.vbp") + " --at Main:5");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.out,
                AllOf(HasSubstr("there is no display"), HasSubstr("without a window: lintara insert ")));
}

}  // namespace
}  // namespace lintara::cli
