// The user's settings from the command line on.
#include "base/constants.h"
#include "base/settings_table.h"
#include "tests/cli/command_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;

class SettingsFamilyTest : public testing::Test, protected CommandTest {
  protected:
    using CommandTest::Run;

    std::optional<Text> Stored(TextView key) { return settings->Find(FindSetting(key)->name()).value(); }
};

TEST_F(SettingsFamilyTest, ListsGetsAndSets) {
    EXPECT_EQ(Run("settings set LNStep 10").status, 0);
    EXPECT_EQ(Run("settings get lnstep").out, "10\n");
    EXPECT_THAT(Run("settings list").out, HasSubstr("  LNStep          10\n"));
    EXPECT_THAT(Run("settings list --json").out, HasSubstr("\"key\": \"LNStep\""));
    EXPECT_THAT(Run("settings get LNStep --json").out, HasSubstr("\"value\": \"10\""));
    EXPECT_EQ(Run("settings set LNStep many").status, 2);
    EXPECT_EQ(Run("settings set LNStpe 1").status, 2);
}

TEST_F(SettingsFamilyTest, TakesEmptyValues) {
    EXPECT_EQ(Run({"settings", "set", "CodeDbPath", ""}).status, 0);
    EXPECT_EQ(Stored(u"CodeDbPath"), u"");
    EXPECT_EQ(Run("settings get CodeDbPath").out, "\n");
    EXPECT_EQ(Run({"settings", "get", ""}).status, 2);
}

TEST_F(SettingsFamilyTest, TakesValuesFromStandardInput) {
    input = "    Debug.Print 1\n    Resume Next\n";
    EXPECT_EQ(Run("settings set EHCode -").status, 0);
    EXPECT_EQ(Stored(u"EHCode"), u"    Debug.Print 1\r\n    Resume Next");
}

TEST_F(SettingsFamilyTest, WhatGetPrintsCanBeSetAgain) {
    for (const TextView value : {TextView(constants::DefaultErrorHandlerCode), TextView(u"One\r\nTwo"),
                                 TextView(u"One\r\n\r\n"), TextView(u"\u00e9\U0001F600")}) {
        ASSERT_TRUE(settings->Save(FindSetting(u"EHCode")->name(), value));
        input = Run("settings get EHCode").out;
        ASSERT_EQ(Run("settings set LastCustomCode -").status, 0);
        EXPECT_EQ(Stored(u"LastCustomCode"), value);
    }
}

TEST_F(SettingsFamilyTest, AsksForOneOfItsCommands) {
    EXPECT_EQ(Run("settings").status, 2);
    const Outcome outcome = Run("settings gett LNStep");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("there is no command 'gett'. Did you mean get or set?"));
    EXPECT_THAT(Run("settings --help").out, HasSubstr("Change a setting"));
}

TEST_F(SettingsFamilyTest, NeedsAStore) {
    settings = nullptr;
    const Outcome outcome = Run("settings list");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err, "lintara: error: there are no settings on this system\n");
}

}  // namespace
}  // namespace lintara::cli
