// The sample clients, run as their users run them.
#include "tests/cli/command_run.h"
#include "tests/cli/serve_child.h"
#include "tests/support/source_folder.h"

#include <cstdio>
#include <sys/wait.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

struct Ended {
    int status = -1;
    std::string text;  // standard output and standard error
};

Ended RunShell(const std::string& command) {
    Ended ended;
    FILE* pipe = ::popen(("(" + command + ") 2>&1").c_str(), "r");
    for (int c = 0; pipe != nullptr && (c = std::fgetc(pipe)) != EOF;) {
        ended.text += static_cast<char>(c);
    }
    const int status = ::pclose(pipe);
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ended;
}

class ServeClients : public testing::Test {
  protected:
    void SetUp() override { files.WriteShop(); }

    // A client in the test's folder; `server` is the program that it starts.
    Ended RunClient(const std::string& client, const std::string& arguments,
                    const std::string& server = LintaraProgram()) const {
        const std::string script = (support::SourceFolder() / "samples/clients" / client).string();
        const std::string runner = client.ends_with(".py") ? "python3" : "node";
        return RunShell("cd '" + files.folder().string() + "' && LINTARA='" + server + "' " + runner + " '" +
                        script + "' " + arguments);
    }

    // A program that answers as the server does not.
    std::string MakeServer(const std::string& script) const {
        files.Write("server", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(files.Path("server"), std::filesystem::perms::owner_all);
        return files.Path("server");
    }

    CommandTest files;
};

bool Lacks(const std::string& program) {
    return RunShell("command -v " + program).status != 0;
}

TEST_F(ServeClients, NumberProjectPrintsTheChanges) {
    const auto before = files.Files();
    const Ended ended = RunClient("number_project.py", "Shop.vbp --base 100 --step 10");
    EXPECT_EQ(ended.status, 0) << ended.text;
    EXPECT_THAT(ended.text,
                AllOf(HasSubstr("--- a/Main.bas\n+++ b/Main.bas\n"), HasSubstr("\n+100:     count = 1\r\n"),
                      HasSubstr("\n+110:     Sell count\r\n"), HasSubstr("\n+100:     Debug.Print v\r\n"),
                      HasSubstr("2 files differ")));
    EXPECT_EQ(files.Files(), before);
}

TEST_F(ServeClients, NumberProjectSavesOnDemand) {
    const Ended ended = RunClient("number_project.py", "Shop.vbp --save");
    EXPECT_EQ(ended.status, 0) << ended.text;
    EXPECT_THAT(ended.text, HasSubstr("saved Main.bas\n"));
    EXPECT_THAT(files.Read("Main.bas"), HasSubstr("10005:     Sell count"));
    EXPECT_THAT(files.Read("lib/Stock.bas"), HasSubstr("10000:     Size = 3"));
}

TEST_F(ServeClients, UnderCaretTellsTheMember) {
    if (Lacks("node")) {
        GTEST_SKIP() << "there is no Node here";
    }
    Ended ended =
        RunClient("under_caret.mjs", "Shop.vbp main 6 5 --template 'in {ComponentName}.{MemberName}'");
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.text, "Sub Main\nin Main.Main\n");
    ended = RunClient("under_caret.mjs", "Shop.vbp Main 11 --json");
    EXPECT_EQ(ended.text,
              "{\"project\":\"Shop\",\"component\":\"Main\",\"line\":11,\"member\":\"Sell\","
              "\"kind\":\"Function\",\"expansion\":\"Shop.Main.Sell\"}\n")
        << "a comment above the header hides the kind from the one query, not from the other";
    EXPECT_THAT(RunClient("under_caret.mjs", "Shop.vbp Main 1").text, StartsWith("the declarations\n"));
    EXPECT_THAT(RunClient("under_caret.mjs", "Shop.vbp Stock 2").text, StartsWith("Property Size\n"));
}

TEST_F(ServeClients, UnderCaretComplainsOfItsCommandLine) {
    if (Lacks("node")) {
        GTEST_SKIP() << "there is no Node here";
    }
    for (const std::string arguments : {"", "Shop.vbp Main", "Shop.vbp Main 0", "Shop.vbp Main x",
                                        "a b 1 1 1", "Shop.vbp Main 1 --nothing"}) {
        EXPECT_EQ(RunClient("under_caret.mjs", arguments).status, 2) << arguments;
    }
}

struct Failing {
    std::string server;
    std::string told;
};

TEST_F(ServeClients, TellWhatWentWrong) {
    const bool noNode = Lacks("node");
    const std::vector<Failing> cases = {
        {"exit 0", "lintara ended without answering"},
        {"read line; exit 7", "lintara ended without answering"},
        {"read line; kill -9 $$", "lintara ended without answering"},
        {"read line; echo nonsense; cat > /dev/null", "no JSON"},
        {"read line; echo '{\"jsonrpc\":\"2.0\",\"id\":1,\"error\":{\"code\":-32000,\"message\":\"no "
         "luck\"}}'",
         "no luck (-32000)"},
    };
    for (const Failing& each : cases) {
        const std::string server = MakeServer(each.server);
        Ended ended = RunClient("number_project.py", "Shop.vbp", server);
        EXPECT_EQ(ended.status, 3) << each.server;
        EXPECT_THAT(ended.text, AllOf(StartsWith("number_project: "), HasSubstr(each.told)));
        if (!noNode) {
            ended = RunClient("under_caret.mjs", "Shop.vbp Main 6", server);
            EXPECT_EQ(ended.status, 3) << each.server;
            EXPECT_THAT(ended.text, AllOf(StartsWith("under_caret: "), HasSubstr(each.told)));
        }
    }
    EXPECT_THAT(RunClient("number_project.py", "Gone.vbp").text,
                HasSubstr("number_project: Gone.vbp: cannot be opened"));
    EXPECT_THAT(RunClient("number_project.py", "Shop.vbp", files.Path("nothing")).text,
                HasSubstr("cannot be started"));
}

TEST_F(ServeClients, ControlCharactersInNamesReachNoTerminal) {
    EXPECT_EQ(RunClient("number_project.py", "$(printf 'a\\033b').vbp").text,
              "number_project: a\\x1bb.vbp: cannot be opened: No such file or directory (-32000)\n");
    if (!Lacks("node")) {
        EXPECT_EQ(RunClient("under_caret.mjs", "$(printf 'a\\033b').vbp Main 1").text,
                  "under_caret: a\\x1bb.vbp: cannot be opened: No such file or directory (-32000)\n");
    }
}

TEST_F(ServeClients, NumberProjectEndsQuietlyWhenNobodyReadsOn) {
    std::string code;
    for (int i = 0; i < 400; ++i) {
        code += "Sub S" + std::to_string(i) + "()\r\n    Beep\r\nEnd Sub\r\n";
    }
    for (const char* name : {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J"}) {
        files.Write("many/" + std::string(name) + ".bas",
                    "Attribute VB_Name = \"" + std::string(name) + "\"\r\n" + code);
    }
    EXPECT_EQ(RunClient("number_project.py", "many | head -n 1").text, "--- a/many/A.bas\n");
}

}  // namespace
}  // namespace lintara::cli
