// Options from the command line, the project file and the user's settings, one over the other.
#include "base/settings_table.h"
#include "tests/cli/command_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

// A store that nothing can be read from.
class BrokenSettings final : public SettingsStore {
  public:
    Result<std::optional<Text>> Find(SettingName) override {
        return Failure(ErrorNumber::HostFailure, "the settings cannot be read");
    }
    Result<void> Save(SettingName, TextView) override {
        return Failure(ErrorNumber::HostFailure, "the settings cannot be written");
    }
};

class LayersTest : public testing::Test, protected CommandTest {
  protected:
    using CommandTest::Run;

    LayersTest() { WriteShop(); }

    void Set(TextView key, TextView value) { ASSERT_TRUE(settings->Save(FindSetting(key)->name(), value)); }

    // The number of the first line of Main, from the differences.
    std::string FirstNumber(const std::string& options = "") {
        const Outcome outcome = Run("insert @Shop.vbp --line-numbers --diff " + options);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const std::size_t at = outcome.out.find(":     count = 1");
        return at == std::string::npos ? outcome.out : outcome.out.substr(at - 5, 5);
    }
};

TEST_F(LayersTest, TheCommandLineWinsOverTheFileAndTheFileOverTheSettings) {
    EXPECT_EQ(FirstNumber(), "10000");
    Set(u"LNBase", u"30000");
    EXPECT_EQ(FirstNumber(), "30000");
    Write(".lintara.toml", "base = 40000\n");
    EXPECT_EQ(FirstNumber(), "40000");
    Write(".lintara.toml", "base = 40000\n[insert]\nbase = 50000\n");
    EXPECT_EQ(FirstNumber(), "50000");
    EXPECT_EQ(FirstNumber("--base 60000"), "60000");
}

TEST_F(LayersTest, SettingsStandInOneByOne) {
    Set(u"LNStep", u"7");
    Write(".lintara.toml", "base = 40000\n");
    EXPECT_THAT(Run("insert @Shop.vbp --line-numbers --diff").out,
                AllOf(HasSubstr("40000:     count = 1"), HasSubstr("40007:     Sell count")));
}

TEST_F(LayersTest, TheFileMaySayWhatToDo) {
    EXPECT_EQ(Run("insert @Shop.vbp --check").status, 2);
    Write(".lintara.toml", "line-numbers = true\nexclude = ['Stock', 'Main.Sell']\n");
    const Outcome outcome = Run("insert @Shop.vbp --diff");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("10000:     count = 1"), Not(HasSubstr(":     Sell = n - 1")),
                                   Not(HasSubstr("Stock.bas"))));
}

TEST_F(LayersTest, AListOnTheCommandLineTakesThePlaceOfTheFiles) {
    Write(".lintara.toml", "exclude = ['Main']\n");
    EXPECT_THAT(Run("insert @Shop.vbp --line-numbers --diff --exclude Stock").out,
                AllOf(HasSubstr("Main.bas"), Not(HasSubstr("Stock.bas"))));
}

TEST_F(LayersTest, AnotherFileOrNoneCanBeChosen) {
    Write(".lintara.toml", "base = 40000\n");
    Write("other/numbers.toml", "base = 50000\n");
    EXPECT_EQ(FirstNumber("--config " + Path("other/numbers.toml")), "50000");
    EXPECT_EQ(FirstNumber("--no-config"), "10000");
    const Outcome both = Run("insert @Shop.vbp --line-numbers --no-config --config @other/numbers.toml");
    EXPECT_EQ(both.status, 2);
    EXPECT_THAT(both.err, HasSubstr("--config names a file to use, --no-config uses none; give one"));
    const Outcome missing = Run("list @Shop.vbp --config @nowhere.toml");
    EXPECT_EQ(missing.status, 3);
    EXPECT_EQ(missing.err, "lintara: error: DIR/nowhere.toml: cannot be read: No such file or directory\n");
}

TEST_F(LayersTest, AProjectBehindALinkIsServedByTheFileBesideIt) {
    Write(".lintara.toml", "base = 40000\n");
    Write("links/.lintara.toml", "base = 50000\n");
    std::filesystem::create_symlink("../Shop.vbp", Path("links/Shop.vbp"));
    EXPECT_THAT(Run("insert @links/Shop.vbp --line-numbers --diff").out, HasSubstr("40000:     count = 1"));
}

TEST_F(LayersTest, StandardInputIsServedByTheFileBesideItsName) {
    Write("lib/.lintara.toml", "base = 40000\n");
    input = "Sub A()\r\n    x = 1\r\nEnd Sub\r\n";
    EXPECT_THAT(Run("insert - --stdin-filename @lib/New.bas --line-numbers").out,
                HasSubstr("40000:     x = 1"));
}

TEST_F(LayersTest, ErrorsInValuesNameWhereTheyStand) {
    Write(".lintara.toml", "\nbase = 'many'\n");
    const Outcome file = Run("insert @Shop.vbp --line-numbers");
    EXPECT_EQ(file.status, 2);
    EXPECT_EQ(file.err,
              "lintara insert: DIR/.lintara.toml:2: base: 'many' is not a whole number\n"
              "Try 'lintara insert --help'.\n");
    Set(u"LNBase", u"1");
    const Outcome setting = Run("insert @Shop.vbp --line-numbers --no-config");
    EXPECT_EQ(setting.status, 2);
    EXPECT_THAT(setting.err,
                HasSubstr("lintara insert: the user's setting LNBase: numbers must have five digits"));
    EXPECT_EQ(Run("remove @Shop.vbp --line-numbers --no-config --check").status, 0);
}

TEST_F(LayersTest, ErrorsInTheFileStopEveryCommandThatReadsTheProject) {
    const auto before = Files();
    Write(".lintara.toml", "\n\"\\u001b[31mred\" = 1\n");
    for (const std::string command : {"insert", "remove", "list", "recover", "config"}) {
        const Outcome outcome = Run(command + " @Shop.vbp");
        EXPECT_EQ(outcome.status, 2) << command;
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, HasSubstr("lintara " + command +
                                           ": DIR/.lintara.toml:2: there is no option '\\x1b[31mred'."));
    }
    EXPECT_EQ(Files().at("Main.bas"), before.at("Main.bas"));
    EXPECT_EQ(Run("settings list").status, 0);
}

TEST_F(LayersTest, SettingsThatCannotBeReadAreWarnedOfOnce) {
    settings = std::make_shared<BrokenSettings>();
    const Outcome outcome = Run("insert @Shop.vbp --line-numbers --diff");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("10000:     count = 1"));
    const std::string warning =
        "lintara: warning: the user's settings are left out: the settings cannot be read\n";
    EXPECT_THAT(outcome.err, HasSubstr(warning));
    EXPECT_EQ(outcome.err.find(warning), outcome.err.rfind(warning));
    EXPECT_THAT(Run("insert @Shop.vbp --line-numbers --diff --quiet").err, Not(HasSubstr("warning")));
    EXPECT_EQ(Run("list @Shop.vbp").err, "");
}

}  // namespace
}  // namespace lintara::cli
