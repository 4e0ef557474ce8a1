// Files outside of the folder that a command was given: they are read, and written only where the user names
// their folder.
#include "cli/commands/commands.h"
#include "tests/cli/command_run.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr const char* Code = "Sub A()\r\n    Beep\r\nEnd Sub\r\n";

// app/App.vbp names Main in its own folder, and what a test adds.
class Outside : public testing::Test {
  protected:
    void SetUp() override {
        WriteProject("Module=Util; ..\\common\\Util.bas\r\n");
        test.Write("app/Main.bas", Code);
        test.Write("common/Util.bas", Code);
    }

    void WriteProject(const std::string& entries) const {
        test.Write("app/App.vbp", "Module=Main; Main.bas\r\n" + entries + "Name=\"App\"\r\n");
    }

    // Runs a command that has to be refused, and to leave every file as it was.
    [[nodiscard]] std::string Refusal(const std::string& line = "insert @app/App.vbp --line-numbers") const {
        const auto before = test.Files();
        const Outcome outcome = test.Run(line);
        EXPECT_EQ(outcome.status, 3) << outcome.err;
        EXPECT_EQ(test.Files(), before);
        return outcome.err;
    }

    CommandTest test;
};

TEST_F(Outside, IsRead) {
    EXPECT_THAT(test.Run("list @app/App.vbp").out, HasSubstr("Util"));
    EXPECT_EQ(test.Run("check @app/App.vbp --line-numbers").status, 1);
}

TEST_F(Outside, IsNotWritten) {
    EXPECT_EQ(
        Refusal(),
        "DIR/app/App.vbp:2: error: the component Util is the file DIR/common/Util.bas, outside of DIR/app; "
        "only --allow-outside DIR/common lets it be written, and --exclude Util leaves it as it is\n");
}

TEST_F(Outside, IsNotWrittenByAnyEditingCommand) {
    test.Write("code.txt", "Stop\r\n");
    for (const auto* const line : {"insert @app/App.vbp --error-handlers",
                                   "replace @app/App.vbp --component Util --find Beep --replace Stop",
                                   "custom insert @app/App.vbp --id 1 --code @code.txt"}) {
        EXPECT_THAT(Refusal(line), HasSubstr("only --allow-outside DIR/common")) << line;
    }
    test.Write("common/Util.bas", "Sub A()\r\n10000:     Beep\r\nEnd Sub\r\n");
    EXPECT_THAT(Refusal("remove @app/App.vbp --line-numbers"), HasSubstr("only --allow-outside DIR/common"));
}

TEST_F(Outside, IsWrittenWhereTheUserNamesItsFolder) {
    const Outcome outcome = test.Run("insert @app/App.vbp --line-numbers --allow-outside @common");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(test.Read("common/Util.bas"), HasSubstr("10000:"));
    EXPECT_THAT(test.Read("app/Main.bas"), HasSubstr("10000:"));
}

TEST_F(Outside, IsWrittenWhereTheUserNamesAFolderAbove) {
    test.Write("other/x", "");
    EXPECT_EQ(test.Run("insert @app/App.vbp --line-numbers --allow-outside @other --allow-outside @.").status,
              0);
    EXPECT_THAT(test.Read("common/Util.bas"), HasSubstr("10000:"));
}

TEST_F(Outside, IsNotWrittenWhereAnotherFolderIsNamed) {
    test.Write("share/x", "");
    test.Write("common/below/x", "");
    EXPECT_THAT(Refusal("insert @app/App.vbp --line-numbers --allow-outside @share"), HasSubstr("App.vbp:2"));
    EXPECT_THAT(Refusal("insert @app/App.vbp --line-numbers --allow-outside @common/below"),
                HasSubstr("App.vbp:2"));
}

TEST_F(Outside, TheFolderHasToBeThere) {
    const Outcome outcome = test.Run("insert @app/App.vbp --line-numbers --allow-outside @nowhere");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("--allow-outside: there is no folder DIR/nowhere"));
}

TEST_F(Outside, IsNoObstacleWhenItIsLeftOut) {
    const Outcome outcome = test.Run("insert @app/App.vbp --line-numbers --exclude Util");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(test.Read("common/Util.bas"), Code);
    EXPECT_EQ(test.Files().size(), 3U) << "no other file appears anywhere";
}

TEST_F(Outside, IsNoObstacleWhenItStaysAsItIs) {
    test.Write("common/Util.bas", "Dim a\r\n");
    EXPECT_EQ(test.Run("insert @app/App.vbp --line-numbers").status, 0);
}

TEST_F(Outside, RunsThatWriteNothingWarn) {
    for (const auto* const option : {"--check", "--diff", "--list"}) {
        const Outcome outcome = test.Run("insert @app/App.vbp --line-numbers " + std::string(option));
        EXPECT_EQ(outcome.status, option == std::string("--check") ? 1 : 0);
        EXPECT_THAT(outcome.err, AllOf(HasSubstr("DIR/app/App.vbp:2: warning: the component Util is"),
                                       HasSubstr("[outside]")));
    }
    EXPECT_EQ(test.Run("insert @app/App.vbp --line-numbers --diff --allow-outside @common").err, "");
}

TEST_F(Outside, LinksDoNotHideIt) {
    WriteProject("Module=Linked; Linked.bas\r\n");
    fs::create_symlink("../common/Util.bas", test.Path("app/Linked.bas"));
    EXPECT_THAT(Refusal(), HasSubstr("is the file DIR/common/Util.bas, outside of DIR/app;"));
    WriteProject("Module=Util; lib\\util.bas\r\n");
    fs::create_symlink("../common", test.Path("app/lib"));
    EXPECT_THAT(Refusal(), HasSubstr("is the file DIR/common/Util.bas, outside of DIR/app;"));
}

TEST_F(Outside, LinksInAFolderDoNotHideIt) {
    fs::create_symlink("../common/Util.bas", test.Path("app/Linked.bas"));
    EXPECT_THAT(Refusal("insert @app --line-numbers"),
                HasSubstr("DIR/app/Linked.bas: error: the component Linked is the file DIR/common/Util.bas"));
}

TEST_F(Outside, LinksWithinTheFolderAreFollowed) {
    WriteProject("Module=Linked; Linked.bas\r\n");
    test.Write("app/real/Real.bas", Code);
    fs::create_symlink("real/Real.bas", test.Path("app/Linked.bas"));
    EXPECT_EQ(test.Run("insert @app/App.vbp --line-numbers").status, 0);
    EXPECT_THAT(test.Read("app/real/Real.bas"), HasSubstr("10000:"));
    EXPECT_TRUE(fs::is_symlink(test.Path("app/Linked.bas")));
}

TEST_F(Outside, AbsolutePathsDoNotHideIt) {
    WriteProject("Module=Util; " + test.Path("common/Util.bas") + "\r\n");
    EXPECT_THAT(Refusal(), HasSubstr("outside of DIR/app"));
}

TEST_F(Outside, AGroupHasItsOwnFolderOnly) {
    test.Write("common/Lib.vbp", "Module=Util; Util.bas\r\nName=\"Lib\"\r\n");
    WriteProject("");
    test.Write("app/All.vbg", "StartupProject=App.vbp\r\nProject=..\\common\\Lib.vbp\r\n");
    EXPECT_THAT(Refusal("insert @app/All.vbg --line-numbers"), HasSubstr("DIR/common/Lib.vbp:1: error: "));
    EXPECT_EQ(test.Run("insert @app/All.vbg --line-numbers --allow-outside @common").status, 0);
    EXPECT_THAT(test.Read("common/Util.bas"), HasSubstr("10000:"));
}

TEST_F(Outside, ThePathItselfIsTheUsersWord) {
    fs::create_symlink("app/App.vbp", test.Path("Link.vbp"));
    WriteProject("");
    EXPECT_EQ(test.Run("insert @Link.vbp --line-numbers").status, 0);
    EXPECT_THAT(test.Read("app/Main.bas"), HasSubstr("10000:"));
}

TEST_F(Outside, UndoNeedsTheSameWord) {
    const auto before = test.Files();
    ASSERT_EQ(test.Run("insert @app/App.vbp --line-numbers --allow-outside @common").status, 0);
    EXPECT_THAT(
        Refusal("undo @app/App.vbp"),
        HasSubstr("DIR/common/Util.bas: error: lies outside of DIR/app; only --allow-outside DIR/common"));
    EXPECT_EQ(test.Run("undo @app/App.vbp --allow-outside @common").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(Outside, AProjectCannotAllowItself) {
    test.Write("app/.lintara.toml", "allow-outside = [\"../common\"]\n");
    const auto before = test.Files();
    const Outcome outcome = test.Run("insert @app/App.vbp --line-numbers");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("'allow-outside' can be given on the command line only"));
    EXPECT_EQ(test.Files(), before);
}

TEST_F(Outside, ACopyHoldsItAndStaysInItsFolder) {
    auto expected = test.Files();
    const Outcome outcome = test.Run("insert @app/App.vbp --line-numbers --output @copy");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(test.Read("copy/common/Util.bas"), HasSubstr("10000:"));
    for (const auto& [name, bytes] : test.Files()) {
        if (!name.starts_with("copy/")) {
            EXPECT_EQ(expected[name], bytes) << name;
        }
    }
    EXPECT_EQ(test.Run("insert @app/App.vbp --line-numbers --output @copy --allow-outside @common").status,
              2);
}

TEST_F(Outside, ACopyFollowsNoLinkOutOfItsFolder) {
    test.Write("victim/x", "");
    fs::create_directory(test.Path("copy"));
    fs::create_directory_symlink("../victim", test.Path("copy/common"));
    EXPECT_THAT(Refusal("insert @app/App.vbp --line-numbers --output @copy"),
                HasSubstr("DIR/copy/common: error: is a link, which may lead out of the output folder"));
    EXPECT_FALSE(fs::exists(test.Path("victim/Util.bas")));
}

TEST_F(Outside, ServeNeedsTheSameWord) {
    test.input = R"({"jsonrpc":"2.0","id":1,"method":"workspace.open","params":{"path":")" +
                 test.Path("app/App.vbp") + "\"}}\n" +
                 R"({"jsonrpc":"2.0","id":2,"method":"codemodule.ReplaceLine",)"
                 R"("params":{"project":"App","component":"Util","line":2,"text":"    Stop"}})"
                 "\n"
                 R"({"jsonrpc":"2.0","id":3,"method":"workspace.save"})"
                 "\n";
    const Outcome refused = test.Run("serve --isolated");
    EXPECT_THAT(refused.out, HasSubstr("outside of DIR/app; only --allow-outside DIR/common"));
    EXPECT_EQ(test.Read("common/Util.bas"), Code);
    const Outcome allowed = test.Run("serve --isolated --allow-outside @common");
    EXPECT_THAT(allowed.out, Not(HasSubstr("error"))) << allowed.out;
    EXPECT_THAT(test.Read("common/Util.bas"), HasSubstr("Stop"));
}

// Whatever can save in place has the option; none of them takes it from a project's file.
TEST(AllowOutside, IsAnOptionOfEveryCommandThatSaves) {
    const auto saves = [](const CommandInfo& command) {
        return command.Option("backup") != nullptr || command.name == "undo" || command.name == "serve";
    };
    EXPECT_GE(std::ranges::count_if(Commands(), saves), 11);
    for (const CommandInfo& command : Commands()) {
        const OptionInfo* option = command.Option("allow-outside");
        EXPECT_EQ(option != nullptr, saves(command)) << command.name;
        EXPECT_FALSE(option != nullptr && option->inProjectFile) << command.name;
    }
}

}  // namespace
}  // namespace lintara::cli
