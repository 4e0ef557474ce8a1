#include "dialogs/feh_remove.h"

#include "tests/dialogs/dialog_fixture.h"

#include <gmock/gmock.h>

namespace lintara::dialogs {
namespace {

using support::ScriptedToolkit;
using testing::ElementsAre;
using testing::IsEmpty;

struct FEHRemoveTest : DialogTest {
    RemoveEHParameters parameters{.Scope = 9, .iLenGetMemberName = 4, .iGetLineNumber = 12};

    bool Ask(std::function<void(FEHRemove&)> use) {
        User<FEHRemove>(std::move(use));
        return DialogsLT(Host()).GetRemoveEHParameters(parameters);
    }
};

TEST_F(FEHRemoveTest, HasItsControls) {
    FEHRemove form(Host());
    EXPECT_EQ(form.FormCaption(), u"Remove error handlers/line numbers");
    EXPECT_THAT(support::DescribeControls(form),
                ElementsAre("UserControl DBPanel1", "Label Label1 in DBPanel1 \"Remove from:\"",
                            "OptionButton optScope(0) in DBPanel1 \"Current proced&ure\"",
                            "OptionButton optScope(1) in DBPanel1 \"Current c&omponent\"",
                            "OptionButton optScope(2) in DBPanel1 \"Current p&roject\"",
                            "UserControl DBPanel2", "CheckBox chkEH in DBPanel2 \"Remove &error handlers\"",
                            "CheckBox chkLN in DBPanel2 \"Remove line &numbers\"",
                            "CommandButton cmdStart \"&Begin\"", "CommandButton cmdCancel \"&Cancel\"",
                            "CommandButton Command1 \"&Help\""));
    EXPECT_EQ(StatesOf(form.optScope), "*++");
    EXPECT_TRUE(form.cmdStart.isDefault);
    EXPECT_TRUE(form.cmdCancel.isCancel);
    for (const forms::Control* control : form.ControlsInOrder()) {
        EXPECT_EQ(control->font.name, u"Tahoma");
    }
}

TEST_F(FEHRemoveTest, IsLaidOutOnceAndForAll) {
    FEHRemove form(Host());
    EXPECT_FALSE(form.resizable);
    EXPECT_THAT(support::LayoutComplaints(form), IsEmpty());
    const forms::Rect panel = form.DBPanel2.Place();
    form.EnsureLoaded();
    ASSERT_TRUE(form.Move({0, 0, 300, 300}));
    EXPECT_EQ(form.DBPanel2.Place(), panel);
}

TEST_F(FEHRemoveTest, AtFirstBothBoxesAreChecked) {
    Ask([&](FEHRemove& form) {
        EXPECT_EQ(form.chkEH.Value(), 1);
        EXPECT_EQ(form.chkLN.Value(), 1);
        EXPECT_TRUE(form.cmdStart.Enabled());
    });
}

TEST_F(FEHRemoveTest, TheKeysOfTheTwoBoxesAreCrossed) {
    EXPECT_TRUE(Ask([&](FEHRemove& form) {
        form.chkEH.Toggle();
        form.cmdStart.Press();
    }));
    EXPECT_EQ(settings.Stored(u"RemoveLN"), u"0");
    EXPECT_EQ(settings.Stored(u"RemoveEH"), u"1");
    Ask([&](FEHRemove& form) {
        EXPECT_EQ(form.chkEH.Value(), 0);
        EXPECT_EQ(form.chkLN.Value(), 1);
    });
}

TEST_F(FEHRemoveTest, OffersScopesByTheCaret) {
    Ask([&](FEHRemove& form) { EXPECT_EQ(StatesOf(form.optScope), "*++"); });
    parameters.iGetLineNumber = 0;
    Ask([&](FEHRemove& form) { EXPECT_EQ(StatesOf(form.optScope), "*++"); });
    EXPECT_EQ(toolkit.formsShown, 2);
}

TEST_F(FEHRemoveTest, OutsideAnyProcedureTheProcedureIsDisabled) {
    parameters.iLenGetMemberName = 0;
    Ask([&](FEHRemove& form) { EXPECT_EQ(StatesOf(form.optScope), "-*+"); });
}

TEST_F(FEHRemoveTest, WithoutACodeWindowOnlyTheProjectIsPossible) {
    parameters.iLenGetMemberName = 0;
    parameters.iGetLineNumber = 0;
    Ask([&](FEHRemove& form) { EXPECT_EQ(StatesOf(form.optScope), "--*"); });
}

TEST_F(FEHRemoveTest, EachScopeHasItsNumber) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(Ask([&](FEHRemove& form) {
            form.optScope.at(i).Select();
            form.cmdStart.Press();
        }));
        EXPECT_EQ(parameters.Scope, static_cast<std::int16_t>(i + 1));
    }
}

TEST_F(FEHRemoveTest, BeginHandsBackTheBoxes) {
    EXPECT_TRUE(Ask([&](FEHRemove& form) {
        form.chkLN.Toggle();
        form.cmdStart.Press();
    }));
    EXPECT_TRUE(parameters.RemoveEH);
    EXPECT_FALSE(parameters.RemoveLN);
}

TEST_F(FEHRemoveTest, NothingToRemoveCanBeConfirmed) {
    parameters.RemoveEH = true;
    parameters.RemoveLN = true;
    EXPECT_TRUE(Ask([&](FEHRemove& form) {
        form.chkEH.Toggle();
        form.chkLN.Toggle();
        EXPECT_TRUE(form.cmdStart.Enabled());
        form.cmdStart.Press();
    }));
    EXPECT_FALSE(parameters.RemoveEH);
    EXPECT_FALSE(parameters.RemoveLN);
}

TEST_F(FEHRemoveTest, CancelLeavesTheVariablesAndTheSettings) {
    EXPECT_FALSE(Ask([&](FEHRemove& form) {
        form.chkEH.Toggle();
        form.cmdCancel.Press();
    }));
    EXPECT_EQ(parameters.Scope, 9);
    EXPECT_FALSE(parameters.RemoveLN);
    EXPECT_THAT(settings.saves, IsEmpty());
    EXPECT_EQ(toolkit.eventsServed, 1);
}

TEST_F(FEHRemoveTest, TheCloseBoxIsACancel) {
    EXPECT_FALSE(Ask([](FEHRemove&) {}));
    EXPECT_EQ(parameters.Scope, 9);
    EXPECT_THAT(settings.saves, IsEmpty());
    EXPECT_THAT(globals->log, ElementsAre("load FEHRemove", "save FEHRemove"));
}

TEST_F(FEHRemoveTest, BeginHidesServesEventsAndSavesInOrder) {
    forms::Form* shown = nullptr;
    toolkit.whileServing = [&] {
        EXPECT_FALSE(shown->Visible());
        EXPECT_THAT(settings.saves, IsEmpty());
    };
    EXPECT_TRUE(Ask([&](FEHRemove& form) {
        shown = &form;
        form.chkLN.Toggle();
        form.cmdStart.Press();
    }));
    EXPECT_EQ(toolkit.eventsServed, 1);
    EXPECT_THAT(settings.saves, ElementsAre("RemoveLN=1", "RemoveEH=0"));
}

TEST_F(FEHRemoveTest, ASettingThatCannotBeReachedIsLeftOut) {
    for (std::size_t failing = 0; failing < 4; ++failing) {
        settings.calls = 0;
        settings.failingCall = failing;
        settings.saves.clear();
        EXPECT_TRUE(Ask([](FEHRemove& form) { form.cmdStart.Press(); }));
        EXPECT_EQ(settings.calls, 4U);
        EXPECT_EQ(settings.saves.size(), failing < 2 ? 2U : 1U);
        EXPECT_TRUE(parameters.RemoveEH);
        EXPECT_TRUE(parameters.RemoveLN);
    }
}

TEST_F(FEHRemoveTest, AServicesObjectThatFailsOrIsMissingDoesNotMatter) {
    globals->fails = true;
    EXPECT_TRUE(Ask([](FEHRemove& form) { form.cmdStart.Press(); }));
    globals = nullptr;
    EXPECT_TRUE(Ask([](FEHRemove& form) { form.cmdStart.Press(); }));
}

TEST_F(FEHRemoveTest, HelpShowsItsTopicAndLeavesTheFormOpen) {
    Ask([&](FEHRemove& form) {
        form.Command1.Press();
        EXPECT_TRUE(form.Visible());
    });
    EXPECT_EQ(toolkit.helps, (std::vector<ScriptedToolkit::Help>{{u"C:\\Suite\\TARNWK30.HLP", 60}}));
}

TEST_F(FEHRemoveTest, ARememberedSizeDoesNotChangeIt) {
    globals->place = forms::Rect{300, 450, 10000, 7000};
    const forms::Size size = [&] {
        const FEHRemove form(Host());
        return forms::Size{form.Width(), form.Height()};
    }();
    Ask([&](FEHRemove& form) { EXPECT_EQ(form.Place(), (forms::Rect{300, 450, size.width, size.height})); });
}

}  // namespace
}  // namespace lintara::dialogs
