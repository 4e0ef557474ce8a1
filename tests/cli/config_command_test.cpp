#include "base/constants.h"
#include "base/settings_table.h"
#include "base/utf8.h"
#include "cli/commands/commands.h"
#include "tests/cli/command_run.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::cli {
namespace {

using testing::HasSubstr;
using testing::Not;
using Json = nlohmann::json;

class ConfigCommandTest : public testing::Test, protected CommandTest {
  protected:
    using CommandTest::Run;

    ConfigCommandTest() { WriteShop(); }

    void Set(TextView key, TextView value) { ASSERT_TRUE(settings->Save(FindSetting(key)->name(), value)); }

    Json Printed(const std::string& options = "") {
        const Outcome outcome = Run("config @Shop.vbp --print --json " + options);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return Json::parse(outcome.out);
    }
    static Json Row(const Json& rows, const std::string& name) {
        const auto found = std::ranges::find_if(rows, [&](const Json& row) { return row["name"] == name; });
        return found == rows.end() ? Json() : *found;
    }
    // The line of the table about that option, its columns parted by single blanks.
    std::string TableLine(const std::string& name, const std::string& options = "") {
        const Outcome outcome = Run("config @Shop.vbp --print " + options);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const std::size_t at = outcome.out.find("\n" + name + " ") + 1;
        std::string line;
        for (const char c : outcome.out.substr(at, outcome.out.find('\n', at) - at)) {
            if (c != ' ' || !line.ends_with(' ')) {
                line += c;
            }
        }
        return line;
    }
};

TEST_F(ConfigCommandTest, ShowsDefaultsWhereNothingIsGiven) {
    const Json printed = Printed();
    EXPECT_TRUE(printed["projectFile"].is_null());
    EXPECT_EQ(printed["commands"], Json::object());
    const Json& options = printed["options"];
    EXPECT_EQ(Row(options, "base"), Json::parse(R"({"name":"base","value":"10000","origin":"default"})"));
    EXPECT_EQ(Row(options, "step")["value"], "5");
    EXPECT_EQ(Row(options, "wait")["value"], "10");
    EXPECT_EQ(Row(options, "code-page")["value"], "windows-1252");
    EXPECT_EQ(Row(options, "line-numbers")["value"], false);
    EXPECT_EQ(Row(options, "exclude")["value"], Json::array());
    EXPECT_THAT(Run("config @Shop.vbp").out, testing::StartsWith("project file: none\n\noption "));
    EXPECT_EQ(TableLine("exclude"), "exclude - default");
}

TEST_F(ConfigCommandTest, ShowsEveryOptionThatAProjectFileMayGiveOnce) {
    const Json options = Printed()["options"];
    std::vector<std::string> names;
    for (const Json& row : options) {
        names.push_back(row["name"]);
    }
    for (const CommandInfo& command : Commands()) {
        for (const OptionInfo& option : command.options) {
            EXPECT_EQ(std::ranges::count(names, option.name), option.inProjectFile ? 1 : 0) << option.name;
        }
    }
}

TEST_F(ConfigCommandTest, TellsWhereEachValueComesFrom) {
    Set(u"LNBase", u"30000");
    Set(u"LNStep", u"7");
    Write(".lintara.toml", "line-numbers = true\nstep = 9\nexclude = ['A', 'B.*']\n");
    EXPECT_EQ(TableLine("base"), "base 30000 user settings (LNBase)");
    EXPECT_EQ(TableLine("step"), "step 9 DIR/.lintara.toml:2");
    EXPECT_EQ(TableLine("line-numbers"), "line-numbers true DIR/.lintara.toml:1");
    EXPECT_EQ(TableLine("exclude"), "exclude A, B.* DIR/.lintara.toml:3");
    EXPECT_EQ(TableLine("step", "--step 11"), "step 11 command line");
    EXPECT_EQ(TableLine("step", "--no-config"), "step 7 user settings (LNStep)");
    const Json options = Printed("--base 20000")["options"];
    EXPECT_EQ(Row(options, "base"),
              Json::parse(R"({"name":"base","value":"20000","origin":"command line"})"));
    EXPECT_EQ(Row(options, "step").dump(),
              R"({"name":"step","origin":"project file","place":"DIR/.lintara.toml:2","value":"9"})");
    EXPECT_EQ(Row(options, "line-numbers")["value"], true);
    EXPECT_EQ(Row(options, "exclude")["value"], Json::parse(R"(["A","B.*"])"));
}

TEST_F(ConfigCommandTest, ShowsWhatSingleCommandsGet) {
    Write(".lintara.toml", "base = 20000\n[insert]\nbase = 30000\n[list]\nrecursive = true\n");
    const Json printed = Printed();
    EXPECT_EQ(printed["projectFile"], "DIR/.lintara.toml");
    EXPECT_EQ(Row(printed["options"], "base")["value"], "20000");
    EXPECT_EQ(Row(printed["commands"]["insert"], "base")["place"], "DIR/.lintara.toml:3");
    EXPECT_EQ(Row(printed["commands"]["list"], "recursive")["value"], true);
    EXPECT_THAT(
        Run("config @Shop.vbp").out,
        HasSubstr(
            "\nfor 'lintara insert' alone:\noption  value  from\nbase    30000  DIR/.lintara.toml:3\n"));
    EXPECT_THAT(Run("config @Shop.vbp --base 1").out, Not(HasSubstr("lintara insert")));
}

TEST_F(ConfigCommandTest, AbbreviatesTextsOfSeveralLinesInTheTableOnly) {
    EXPECT_EQ(TableLine("template"), "template Select Case MsgBox(\"Erro... (12 lines) default");
    EXPECT_EQ(Row(Printed()["options"], "template")["value"], ToUtf8(constants::DefaultErrorHandlerCode));
    Set(u"EHCode", u"\r\n  \u001b[31mOne\r\nTwo");
    EXPECT_EQ(TableLine("template"), "template \\x1b[31mOne... (3 lines) user settings (EHCode)");
    EXPECT_EQ(Row(Printed()["options"], "template")["value"], "\r\n  \u001b[31mOne\r\nTwo");
    Write(".lintara.toml", "template = 'handler.txt'\n");
    EXPECT_EQ(TableLine("template"), "template DIR/handler.txt DIR/.lintara.toml:1");
}

TEST_F(ConfigCommandTest, ShowsValuesSafely) {
    Write(".lintara.toml", "code-page = \"\\u001b[31mred\"\n");
    EXPECT_EQ(TableLine("code-page"), "code-page \\x1b[31mred DIR/.lintara.toml:1");
}

TEST_F(ConfigCommandTest, LooksAtTheCurrentFolderByItself) {
    EXPECT_EQ(Run("config").status, 0);
    EXPECT_EQ(Run("config").out, Run("config .").out);
}

TEST_F(ConfigCommandTest, KnowsWhatThereIsNot) {
    const Outcome outcome = Run("config @nowhere.vbp");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err, "lintara: error: DIR/nowhere.vbp: there is no such file or folder\n");
    Write(".lintara.toml", "base = \n");
    EXPECT_EQ(Run("config @Shop.vbp").status, 2);
    EXPECT_THAT(Run("config @Shop.vbp").err,
                HasSubstr("DIR/.lintara.toml:1: this is no TOML that can be read: "));
}

}  // namespace
}  // namespace lintara::cli
