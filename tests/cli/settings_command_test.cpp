#include "cli/commands/settings_command.h"

#include "base/constants.h"
#include "base/settings_table.h"
#include "base/utf8.h"
#include "platform/memory_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::cli {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Action = SettingsRequest::Action;

class SettingsCommandTest : public testing::Test {
  protected:
    ExitStatus Run(const SettingsRequest& request, SettingsStore& store) {
        StringSource in;
        StringSink out;
        StringSink err;
        Streams streams{in, out, err};
        const ExitStatus status = RunSettingsCommand(request, store, streams);
        out_ = out.text;
        err_ = err.text;
        return status;
    }
    ExitStatus List(bool json = false) { return Run({.action = Action::List, .json = json}, store_); }
    ExitStatus Get(const std::string& key, bool json = false) {
        return Run({.action = Action::Get, .key = key, .json = json}, store_);
    }
    ExitStatus Set(const std::string& key, const std::string& value) {
        return Run({.action = Action::Set, .key = key, .value = value}, store_);
    }
    std::optional<Text> Stored(TextView key) { return store_.Find(FindSetting(key)->name()).value(); }

    platform::MemorySettings store_;
    std::string out_;
    std::string err_;
};

TEST_F(SettingsCommandTest, ListsTheDefaults) {
    EXPECT_EQ(List(), ExitStatus::Done);
    EXPECT_THAT(out_, StartsWith("CodeAutomation\n"
                                 "  InsertLN        1  (default)\n"
                                 "  InsertEH        1  (default)\n"
                                 "  LNBase          10000  (default)\n"
                                 "  LNStep          5  (default)\n"
                                 "  EHLabel         hErr  (default)\n"
                                 "  EHCode          (default)\n"
                                 "    |     Select Case MsgBox("));
    EXPECT_THAT(out_, HasSubstr("\n    |     End Select\n  RemoveLN        1  (default)\n"));
    EXPECT_THAT(out_, testing::EndsWith("  UseDelimiters   1  (default)\n"
                                        "Assistants\n"
                                        "  CodeDbPath      (empty)  (default)\n"));
    EXPECT_EQ(err_, "");
}

TEST_F(SettingsCommandTest, ListsWhatIsStored) {
    ASSERT_EQ(Set("InsertLN", "1"), ExitStatus::Done);
    ASSERT_EQ(Set("EHLabel", "Oops"), ExitStatus::Done);
    ASSERT_EQ(Set("LastCustomCode", "One\r\n\x1B[31mTwo\r\n\r\nlone\nfeed"), ExitStatus::Done);
    EXPECT_EQ(List(), ExitStatus::Done);
    EXPECT_THAT(out_, HasSubstr("  InsertLN        1\n"));
    EXPECT_THAT(out_, HasSubstr("  EHLabel         Oops\n"));
    EXPECT_THAT(
        out_, HasSubstr("  LastCustomCode  \n    | One\n    | \\x1b[31mTwo\n    | \n    | lone\\x0afeed\n"));
}

TEST_F(SettingsCommandTest, ListsAsJson) {
    ASSERT_EQ(Set("CodeDbPath", "C:\\Data"), ExitStatus::Done);
    EXPECT_EQ(List(true), ExitStatus::Done);
    const auto all = nlohmann::json::parse(out_)["settings"];
    ASSERT_EQ(all.size(), SettingsTable().size());
    EXPECT_EQ(all[0], nlohmann::json::parse(
                          R"({"key":"InsertLN","section":"CodeAutomation","value":"1","default":true})"));
    EXPECT_EQ(all[10],
              nlohmann::json::parse(
                  R"({"key":"CodeDbPath","section":"Assistants","value":"C:\\Data","default":false})"));
}

TEST_F(SettingsCommandTest, GetsTheValueAlone) {
    EXPECT_EQ(Get("EHLabel"), ExitStatus::Done);
    EXPECT_EQ(out_, "hErr\n");
    EXPECT_EQ(Get("EHCode"), ExitStatus::Done);
    EXPECT_EQ(out_, ToUtf8(constants::DefaultErrorHandlerCode) + "\n");
    EXPECT_EQ(Get("CodeDbPath"), ExitStatus::Done);
    EXPECT_EQ(out_, "\n");
    ASSERT_EQ(Set("LastCustomCode", " \u00e9\x1B\t"), ExitStatus::Done);
    EXPECT_EQ(Get("LastCustomCode"), ExitStatus::Done);
    EXPECT_EQ(out_, " \u00e9\x1B\t\n");
    EXPECT_EQ(Get("LNStep", true), ExitStatus::Done);
    EXPECT_EQ(nlohmann::json::parse(out_)["value"], "5");
}

TEST_F(SettingsCommandTest, FindsKeysInAnyCaseAndWithTheirSection) {
    for (const char* key : {"LNStep", "lnstep", "CodeAutomation.LNStep", "codeautomation.lnstep"}) {
        EXPECT_EQ(Get(key), ExitStatus::Done) << key;
        EXPECT_EQ(out_, "5\n");
    }
    for (const char* key : {"Assistants.LNStep", "LNStep.", ".LNStep", "", "Tarnwick.LNStep"}) {
        EXPECT_EQ(Get(key), ExitStatus::Usage) << key;
        EXPECT_EQ(out_, "");
    }
    ASSERT_EQ(Set("assistants.codedbpath", "x"), ExitStatus::Done);
    EXPECT_EQ(Stored(u"CodeDbPath"), u"x");
}

TEST_F(SettingsCommandTest, NamesNearKeys) {
    EXPECT_EQ(Get("LNStpe"), ExitStatus::Usage);
    EXPECT_THAT(err_, StartsWith("lintara: error: there is no setting 'LNStpe'. Did you mean LNStep"));
    EXPECT_EQ(Set("CodeAutomation.EHLable", "x"), ExitStatus::Usage);
    EXPECT_THAT(err_, HasSubstr("Did you mean EHLabel"));
    EXPECT_EQ(Get("Colour"), ExitStatus::Usage);
    EXPECT_THAT(err_, Not(HasSubstr("Did you mean")));
    EXPECT_THAT(err_, HasSubstr("'lintara settings list'"));
}

TEST_F(SettingsCommandTest, StoresExactly) {
    const std::string code = "  Debug.Print \"\u00e9\U0001F600\"  \r\n\r\n\t";
    ASSERT_EQ(Set("EHCode", code), ExitStatus::Done);
    EXPECT_EQ(Stored(u"EHCode"), FromUtf8(code));
    ASSERT_EQ(Set("LastCustomCode", ""), ExitStatus::Done);
    EXPECT_EQ(Stored(u"LastCustomCode"), u"");
    ASSERT_EQ(Set("LNBase", "+20000"), ExitStatus::Done);
    EXPECT_EQ(Stored(u"LNBase"), u"+20000");
    EXPECT_EQ(out_ + err_, "");
}

TEST_F(SettingsCommandTest, RefusesWhatTheSettingHasNoUseFor) {
    struct Case {
        std::string key;
        std::string value;
        std::string message;
    };
    const Case cases[] = {
        {"InsertLN", "2", "InsertLN: '2' is neither 0 (off) nor 1 (on)"},
        {"RemoveEH", "true", "RemoveEH: 'true' is neither 0 (off) nor 1 (on)"},
        {"UseDelimiters", "", "UseDelimiters: '' is neither 0 (off) nor 1 (on)"},
        {"UseDelimiters", "1\n", "UseDelimiters: '1\\x0a' is neither 0 (off) nor 1 (on)"},
        {"LNBase", "ten", "LNBase: 'ten' is not a whole number"},
        {"LNBase", "", "LNBase: '' is not a whole number"},
        {"LNStep", "5.5", "LNStep: '5.5' is not a whole number"},
        {"LNStep", "2147483648", "LNStep: '2147483648' lies outside -2147483648 to 2147483647"},
        {"EHLabel", "", "EHLabel: the label is empty"},
        {"EHLabel", " \t", "EHLabel: the label is empty"},
        {"EHLabel", "a\r\nb", "EHLabel: the label is more than one line"},
        {"LNBase", "5",
         "LNBase: numbers must have five digits, or they cannot be removed again; give a base from 10000 to "
         "99999"},
        {"LNStep", "0", "LNStep: a step of 0 gives every line the same number"},
        {"LNStep", "-5", "LNStep: the step must be 1 or more"},
        {"EHLabel", "bad label",
         "EHLabel: 'bad label' is no label: only letters, digits and underscores may stand in it"},
        {"EHLabel", "Exit", "EHLabel: 'Exit' is no label: it is a word of the language"},
        {"EHCode", "", "EHCode: the template is empty"},
        {"EHCode", "a\nb", "EHCode: a line of the template ends in a lone CR or LF"},
        {"EHCode", "caf\xE9", "EHCode: the value is not in UTF-8"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Set(c.key, c.value), ExitStatus::Usage) << c.message;
        EXPECT_EQ(err_, "lintara: error: " + c.message + "\n");
        EXPECT_EQ(Stored(FromUtf8(c.key)), std::nullopt) << c.message;
    }
}

TEST_F(SettingsCommandTest, RefusesATemplateThatWouldCloseTheProcedure) {
    EXPECT_EQ(Set("EHCode", "Debug.Print\r\nEnd Sub"), ExitStatus::Usage);
    EXPECT_THAT(err_, StartsWith("lintara: error: EHCode: "));
}

TEST_F(SettingsCommandTest, AcceptsTheDefaultOfEverySetting) {
    for (const SettingInfo& setting : SettingsTable()) {
        EXPECT_EQ(Set(ToUtf8(setting.key), ToUtf8(setting.absent)), ExitStatus::Done) << err_;
    }
}

TEST_F(SettingsCommandTest, ResetsToTheDefault) {
    ASSERT_EQ(Set("EHLabel", "Oops"), ExitStatus::Done);
    EXPECT_EQ(Run({.action = Action::Reset, .key = "ehlabel"}, store_), ExitStatus::Done);
    EXPECT_EQ(Stored(u"EHLabel"), u"hErr");
    EXPECT_EQ(Run({.action = Action::Reset, .key = "LNStep"}, store_), ExitStatus::Done);
    EXPECT_EQ(Stored(u"LNStep"), std::nullopt) << "nothing was stored";
    EXPECT_EQ(Run({.action = Action::Reset, .key = "LNStpe"}, store_), ExitStatus::Usage);
    EXPECT_EQ(out_, "");
}

class DeniedStore final : public SettingsStore {
  public:
    Result<std::optional<Text>> Find(SettingName) override { return Denied(); }
    Result<void> Save(SettingName, TextView) override { return Denied(); }

  private:
    static std::unexpected<HostError> Denied() { return Failure(ErrorNumber::HostFailure, "access denied"); }
};

TEST_F(SettingsCommandTest, TellsWhenTheStoreFails) {
    DeniedStore denied;
    EXPECT_EQ(Run({.action = Action::List}, denied), ExitStatus::Failed);
    EXPECT_EQ(out_, "");
    EXPECT_EQ(err_, "lintara: error: InsertLN: access denied\n");
    EXPECT_EQ(Run({.action = Action::Get, .key = "EHLabel"}, denied), ExitStatus::Failed);
    EXPECT_EQ(err_, "lintara: error: EHLabel: access denied\n");
    EXPECT_EQ(Run({.action = Action::Set, .key = "EHLabel", .value = "x"}, denied), ExitStatus::Failed);
    EXPECT_EQ(err_, "lintara: error: EHLabel: access denied\n");
}

}  // namespace
}  // namespace lintara::cli
