#include "window/show_window.h"

#include "base/statement.h"
#include "dialogs/fcc_insert.h"
#include "dialogs/fcc_remove.h"
#include "dialogs/feh_insert.h"
#include "dialogs/feh_remove.h"
#include "history/fhistory.h"
#include "tests/support/scripted_toolkit.h"

#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::window {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class MemorySettings final : public SettingsStore {
  public:
    std::map<Text, Text> values;

    Result<std::optional<Text>> Find(SettingName name) override {
        const auto found = values.find(KeyOf(name));
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    Result<void> Save(SettingName name, TextView value) override {
        values[KeyOf(name)] = value;
        return {};
    }

  private:
    static Text KeyOf(SettingName name) { return Text(name.section).append(u"/").append(name.key); }
};

struct ShowWindowTest : testing::Test {
    // The answer when `user` works with the window.
    template <class Form>
    json Ask(const json& request, const std::function<void(Form&)>& user) {
        toolkit.user = [&](forms::Form& form) { user(dynamic_cast<Form&>(form)); };
        const auto answer = ShowWindow(request.dump(), host);
        EXPECT_TRUE(answer.has_value()) << answer.error();
        return answer ? json::parse(*answer) : json();
    }

    std::string ErrorOf(const std::string& request) {
        const auto answer = ShowWindow(request, host);
        return answer ? "none: " + *answer : answer.error();
    }

    support::ScriptedToolkit toolkit;
    MemorySettings settings;
    dialogs::DialogHost host{
        .toolkit = toolkit,
        .settings = settings,
        .placement = std::make_shared<dialogs::WindowPlacement>(settings, forms::Rect{0, 0, 30000, 20000})};
};

TEST_F(ShowWindowTest, InsertingHandlersTakesAndGivesTheParametersByName) {
    const json answer = Ask<dialogs::FEHInsert>({{"window", "insert-eh"},
                                                 {"iLenGetMemberName", 7},
                                                 {"iGetLineNumber", 12},
                                                 {"sCCPBuffer", "b\u00fc"}},
                                                [](dialogs::FEHInsert& form) {
                                                    EXPECT_TRUE(form.optScope[0].Enabled());
                                                    EXPECT_EQ(form.oEHInsert.sCCPBuffer, u"b\u00fc");
                                                    form.txtEHBase.SetContents(u"100");
                                                    form.oEHInsert.txtEHCode.SetContents(u"Stop\r\n");
                                                    form.cmdStart.Press();
                                                });
    EXPECT_EQ(answer, (json{{"accepted", true},
                            {"Scope", 1},
                            {"InsertEH", true},
                            {"InsertLN", true},
                            {"EHLabel", "hErr"},
                            {"EHCode", "Stop\r\n"},
                            {"sCCPBuffer", "b\u00fc"},
                            {"LNBase", "100"},
                            {"LNStep", "5"}}));
}

TEST_F(ShowWindowTest, OutputsThatTheDialogDoesNotWriteAreAbsent) {
    const json answer = Ask<dialogs::FEHInsert>({{"window", "insert-eh"}}, [](dialogs::FEHInsert& form) {
        EXPECT_FALSE(form.optScope[1].Enabled());
        form.chkEH.Toggle();
        form.cmdStart.Press();
    });
    EXPECT_EQ(answer, (json{{"accepted", true},
                            {"Scope", 3},
                            {"InsertEH", false},
                            {"InsertLN", true},
                            {"LNBase", "10000"},
                            {"LNStep", "5"}}));
}

TEST_F(ShowWindowTest, RemovingHandlers) {
    const json answer = Ask<dialogs::FEHRemove>({{"window", "remove-eh"}, {"iGetLineNumber", 3}},
                                                [](dialogs::FEHRemove& form) {
                                                    form.chkLN.Toggle();
                                                    form.cmdStart.Press();
                                                });
    EXPECT_EQ(answer, (json{{"accepted", true}, {"Scope", 2}, {"RemoveEH", true}, {"RemoveLN", false}}));
}

TEST_F(ShowWindowTest, InsertingCode) {
    const json answer = Ask<dialogs::FCCInsert>({{"window", "insert-code"},
                                                 {"TextToInsert", "Beep"},
                                                 {"ProcAvailable", true},
                                                 {"ComponentAvailable", 1}},
                                                [](dialogs::FCCInsert& form) {
                                                    EXPECT_EQ(form.txtCode.Contents(), u"Beep");
                                                    form.optScope[0].Select();
                                                    form.optWhere[2].Select();
                                                    form.txtLine.SetContents(u"4");
                                                    form.txtID.SetContents(u"12");
                                                    form.cmdStart.Press();
                                                });
    EXPECT_EQ(answer, (json{{"accepted", true},
                            {"Scope", 1},
                            {"TextToInsert", "Beep"},
                            {"NoDelimiters", false},
                            {"WhereToInsert", 3},
                            {"LineToInsert", 4},
                            {"ID", 12},
                            {"sCCPBufferX", ""}}));
}

TEST_F(ShowWindowTest, RemovingCode) {
    const json answer = Ask<dialogs::FCCRemove>({{"window", "remove-code"}}, [](dialogs::FCCRemove& form) {
        form.txtID.SetContents(u"9");
        form.cmdStart.Press();
    });
    EXPECT_EQ(answer, (json{{"accepted", true}, {"Scope", 3}, {"ID", 9}}));
}

TEST_F(ShowWindowTest, AClosedWindowIsNotAccepted) {
    for (const char* window : {"insert-eh", "remove-eh", "insert-code", "remove-code", "history"}) {
        EXPECT_EQ(Ask<forms::Form>({{"window", window}}, [](forms::Form&) {}), (json{{"accepted", false}}))
            << window;
    }
    EXPECT_EQ(toolkit.formsShown, 5);
}

TEST_F(ShowWindowTest, TheHistoryGivesTheChosenEntry) {
    const json request{{"window", "history"},
                       {"HistBackItem", {"modA.One/x = 1", "", "modB/Option Explicit"}},
                       {"HistNextItem", {"modA.Two/y = 2"}},
                       {"HistSeparator", "/"},
                       {"HistCurrentKey", "Back/2"}};
    const json answer = Ask<history::FHistory>(request, [](history::FHistory& form) {
        ASSERT_NE(form.tvwHistory.SelectedItem(), nullptr);
        EXPECT_EQ(form.tvwHistory.SelectedItem()->tag, u"modB/Option Explicit");
        form.tvwHistory.Pick(*form.tvwHistory.Find(u"Next/0"));
        form.tvwHistory.Type(13);
    });
    EXPECT_EQ(answer,
              (json{{"accepted", true}, {"HistSelKey", "Next/0"}, {"HistSelObject", "modA.Two/y = 2"}}));
}

TEST_F(ShowWindowTest, TheHistoryRemembersWhereItStood) {
    Ask<history::FHistory>({{"window", "history"}}, [](history::FHistory& form) {
        Attempt(form.Move({1500, 1200, 7500, 6900}));
    });
    EXPECT_EQ(settings.values.at(u"Windows/FHistory"), u"1500,1200,7500,6900");
    Ask<history::FHistory>({{"window", "history"}}, [](history::FHistory& form) {
        EXPECT_EQ(form.Place(), (forms::Rect{1500, 1200, 7500, 6900}));
    });
}

TEST_F(ShowWindowTest, ARequestThatCannotBeUsedShowsNothingAndSaysWhy) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "is not JSON"},
        {"{", "is not JSON"},
        {"[]", "must be an object"},
        {"{}", "\"window\" must be one of"},
        {R"({"window": "insert"})", "\"window\" must be one of"},
        {R"({"window": 1})", "\"window\" must be a text"},
        {R"({"window": "remove-eh", "sCCPBuffer": ""})", "\"sCCPBuffer\" is not known here"},
        {R"({"window": "remove-eh", "a\u001b": ""})", R"("a\u001b" is not known here)"},
        {R"({"window": "remove-eh", "iLenGetMemberName": 40000})",
         "\"iLenGetMemberName\" must be a whole number of 16 bits"},
        {R"({"window": "remove-eh", "iGetLineNumber": 1.5})", "must be a whole number of 32 bits"},
        {R"({"window": "remove-eh", "iGetLineNumber": 5000000000})", "must be a whole number of 32 bits"},
        {R"({"window": "remove-eh", "iGetLineNumber": 18446744073709551615})",
         "must be a whole number of 32 bits"},
        {R"({"window": "remove-code", "ProcAvailable": 1})", "\"ProcAvailable\" must be true or false"},
        {R"({"window": "history", "HistBackItem": "x"})", "must be a list of 10 texts at most"},
        {R"({"window": "history", "HistBackItem": [1]})", "must be a list of texts"},
        {R"({"window": "history", "HistNextItem": ["","","","","","","","","","",""]})",
         "must be a list of 10 texts at most"},
    };
    for (const auto& [request, reason] : cases) {
        EXPECT_THAT(ErrorOf(request), HasSubstr(reason)) << request;
    }
    EXPECT_EQ(toolkit.formsShown, 0);
}

}  // namespace
}  // namespace lintara::window
