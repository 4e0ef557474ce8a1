// The pipeline that docs/pipeline.md describes, as a shell runs it, and the hooks for commits.
#include "cli/options/command_line.h"
#include "tests/cli/command_run.h"
#include "tests/support/source_folder.h"

#include <cstdio>
#include <sstream>
#include <sys/wait.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;

struct Ended {
    int status = -1;
    std::string text;
};

// Standard output and standard error of the script, in the test's folder.
Ended RunRecipe(const CommandTest& test, const std::string& arguments) {
    const std::string script = (support::SourceFolder() / "samples/pipeline/build.sh").string();
    const std::string command = "cd '" + test.folder().string() +
                                "' && PATH='" LINTARA_BINARY_DIR "/cli':$PATH sh '" + script + "' " +
                                arguments + " 2>&1";
    Ended ended;
    FILE* pipe = ::popen(command.c_str(), "r");
    for (int c = 0; pipe != nullptr && (c = std::fgetc(pipe)) != EOF;) {
        ended.text += static_cast<char>(c);
    }
    const int status = ::pclose(pipe);
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ended;
}

class PipelineRecipe : public testing::Test {
  protected:
    void SetUp() override {
        test.WriteShop();
        test.Write(".lintara.toml", "line-numbers = false\n");
    }

    CommandTest test;
};

TEST_F(PipelineRecipe, BuildsAndLooksUp) {
    test.Write("crash.txt",
               "Good morning\nError 11 in Main.Main, Erl 10005\nError 6 in Stock.Size, Erl 10000 (again)\n");
    const auto before = test.Files();
    const Ended ended = RunRecipe(test, "Shop.vbp out crash.txt");
    EXPECT_EQ(ended.status, 0) << ended.text;
    EXPECT_THAT(ended.text, HasSubstr("\nMain.bas:7: Main.Main: Sell count\n"
                                      "lib/Stock.bas:3: Stock.Size: Size = 3\n"
                                      "lib/Stock.bas:6: Stock.Size: Debug.Print v\n"));
    EXPECT_THAT(test.Read("out/Main.bas"), HasSubstr("10005:     Sell count"));
    auto after = test.Files();
    std::erase_if(after, [](const auto& file) { return file.first.starts_with("out/"); });
    EXPECT_EQ(after, before);
}

TEST_F(PipelineRecipe, EndsWhenTheTreeIsNotAsWanted) {
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    const Ended ended = RunRecipe(test, "Shop.vbp out");
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.text,
                HasSubstr("Main.bas:6: numbers-present: Sub Main: has line numbers on 2 lines\n"));
    EXPECT_FALSE(std::filesystem::exists(test.Path("out")));
}

TEST_F(PipelineRecipe, TellsWhenNoLineHasANumber) {
    test.Write("crash.txt", "Error 11 in Main.Main, Erl 10007\n");
    EXPECT_EQ(RunRecipe(test, "Shop.vbp out crash.txt").status, 1);
    EXPECT_EQ(RunRecipe(test, "Shop.vbp").status, 2);
}

// The values of the keys of each hook, as they are written.
std::vector<std::map<std::string, std::string>> Hooks() {
    std::istringstream lines(support::ReadBytes(support::SourceFolder() / ".pre-commit-hooks.yaml"));
    std::vector<std::map<std::string, std::string>> hooks;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(": ");
        if (line.starts_with('#') || colon == std::string::npos) {
            continue;
        }
        if (line.starts_with("- ")) {
            hooks.emplace_back();
        }
        hooks.back()[line.substr(2, colon - 2)] = line.substr(colon + 2);
    }
    return hooks;
}

TEST(CommitHooks, AreCommandsThatExist) {
    const auto hooks = Hooks();
    ASSERT_EQ(hooks.size(), 3U);
    for (auto hook : hooks) {
        EXPECT_EQ(hook["language"], "system");
        std::istringstream words(hook["entry"]);
        std::string word;
        words >> word;
        EXPECT_EQ(word, "lintara");
        std::vector<std::string> arguments;
        while (words >> word) {
            arguments.push_back(word);
        }
        EXPECT_EQ(hook["args"], R"([".", "--recursive"])");
        arguments.insert(arguments.end(), {".", "--recursive"});
        const auto given = ParseCommandLine(arguments);
        EXPECT_TRUE(given) << hook["id"] << ": " << given.error().err;
        for (const char* extension : {"bas", "cls", "frm", "ctl", "pag", "dob", "dsr"}) {
            EXPECT_THAT(hook["files"], HasSubstr(extension));
        }
    }
}

}  // namespace
}  // namespace lintara::cli
