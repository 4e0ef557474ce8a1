#include "dialogs/fcc_remove.h"

#include "tests/dialogs/dialog_fixture.h"

#include <gmock/gmock.h>

namespace lintara::dialogs {
namespace {

using support::ScriptedToolkit;
using testing::ElementsAre;
using testing::IsEmpty;

struct FCCRemoveTest : DialogTest {
    RemoveCCParameters parameters{.Scope = 9, .ID = 6, .ProcAvailable = true, .ComponentAvailable = 1};

    bool Ask(std::function<void(FCCRemove&)> use) {
        User<FCCRemove>(std::move(use));
        return DialogsLT(Host()).GetRemoveCCParameters(parameters);
    }
};

TEST_F(FCCRemoveTest, HasItsControls) {
    FCCRemove form(Host());
    EXPECT_EQ(form.FormCaption(), u"Remove custom code");
    EXPECT_THAT(
        support::DescribeControls(form),
        ElementsAre("UserControl DBPanel1", "Label Label1 in DBPanel1 \"Remove from:\"",
                    "OptionButton optScope(0) in DBPanel1 \"Current proced&ure\"",
                    "OptionButton optScope(1) in DBPanel1 \"Current c&omponent\"",
                    "OptionButton optScope(2) in DBPanel1 \"Current p&roject\"", "UserControl DBPanel2",
                    "Label Label2 in DBPanel2 \"Identification:\"", "Shape Shape2 in DBPanel2",
                    "Label Label3 in DBPanel2 \"Re&move the code having the following ID:\"",
                    "TextBox txtID in DBPanel2 \"1\"", "UpDown udID of txtID in DBPanel2", "Frame Frame1",
                    "CommandButton cmdStart in Frame1 \"&Begin\"",
                    "CommandButton cmdCancel in Frame1 \"&Cancel\"",
                    "CommandButton Command1 in Frame1 \"&Help\""));
    EXPECT_TRUE(form.cmdStart.isDefault);
    EXPECT_TRUE(form.cmdCancel.isCancel);
}

TEST_F(FCCRemoveTest, IsLaidOutOnceAndForAll) {
    FCCRemove form(Host());
    EXPECT_FALSE(form.resizable);
    EXPECT_THAT(support::LayoutComplaints(form), IsEmpty());
    const forms::Rect panel = form.DBPanel2.Place();
    form.EnsureLoaded();
    ASSERT_TRUE(form.Move({0, 0, 300, 300}));
    EXPECT_EQ(form.DBPanel2.Place(), panel);
}

TEST_F(FCCRemoveTest, TheComponentIsSelectedWheneverThereIsOne) {
    Ask([&](FCCRemove& form) { EXPECT_EQ(StatesOf(form.optScope), "+*+"); });
    parameters.ProcAvailable = false;
    Ask([&](FCCRemove& form) { EXPECT_EQ(StatesOf(form.optScope), "-*+"); });
    EXPECT_EQ(toolkit.formsShown, 2);
}

TEST_F(FCCRemoveTest, WithoutProcedureAndComponentOnlyTheProjectIsPossible) {
    parameters.ProcAvailable = false;
    parameters.ComponentAvailable = 0;
    Ask([&](FCCRemove& form) { EXPECT_EQ(StatesOf(form.optScope), "--*"); });
}

TEST_F(FCCRemoveTest, TheIdentifierMustBeNumeric) {
    Ask([&](FCCRemove& form) {
        for (const TextView text : {u"", u"a1", u" "}) {
            form.txtID.Edit(text, 0, 0);
            EXPECT_FALSE(form.cmdStart.Enabled()) << ToUtf8(text);
            form.txtID.Edit(u"12", 0, 0);
            EXPECT_TRUE(form.cmdStart.Enabled());
        }
    });
}

TEST_F(FCCRemoveTest, TheFocusSelectsTheIdentifier) {
    Ask([&](FCCRemove& form) {
        form.txtID.Edit(u"123", 0, 0);
        form.txtID.SetFocus();
        EXPECT_EQ(form.txtID.SelText(), u"123");
    });
}

TEST_F(FCCRemoveTest, TheArrowsCountFrom1To10000) {
    Ask([&](FCCRemove& form) {
        form.udID.Step(1);
        EXPECT_EQ(form.txtID.Contents(), u"2");
        form.udID.Step(-5);
        EXPECT_EQ(form.txtID.Contents(), u"1");
        form.udID.Step(20000);
        EXPECT_EQ(form.txtID.Contents(), u"10000");
    });
}

TEST_F(FCCRemoveTest, BeginHandsBackScopeAndIdentifierAndSavesNothing) {
    EXPECT_TRUE(Ask([&](FCCRemove& form) {
        form.optScope[0].Select();
        form.txtID.Edit(u"12", 0, 0);
        form.cmdStart.Press();
        EXPECT_FALSE(form.Visible());
    }));
    EXPECT_EQ(parameters.Scope, 1);
    EXPECT_EQ(parameters.ID, 12);
    EXPECT_EQ(settings.calls, 0U);
    EXPECT_EQ(toolkit.eventsServed, 0);
}

TEST_F(FCCRemoveTest, AnIdentifierThatDoesNotFitLeavesItsVariable) {
    EXPECT_TRUE(Ask([&](FCCRemove& form) {
        form.optScope[2].Select();
        form.txtID.Edit(u"40000", 0, 0);
        form.cmdStart.Press();
    }));
    EXPECT_EQ(parameters.Scope, 3);
    EXPECT_EQ(parameters.ID, 6);
}

TEST_F(FCCRemoveTest, CancelAndCloseBoxLeaveTheVariables) {
    const auto change = [](FCCRemove& form) { form.txtID.Edit(u"12", 0, 0); };
    EXPECT_FALSE(Ask(change));
    EXPECT_FALSE(Ask([&](FCCRemove& form) {
        change(form);
        form.cmdCancel.Press();
    }));
    EXPECT_EQ(parameters.Scope, 9);
    EXPECT_EQ(parameters.ID, 6);
    EXPECT_THAT(globals->log,
                ElementsAre("load FCCRemove", "save FCCRemove", "load FCCRemove", "save FCCRemove"));
}

TEST_F(FCCRemoveTest, AServicesObjectThatFailsOrIsMissingDoesNotMatter) {
    globals->fails = true;
    EXPECT_TRUE(Ask([](FCCRemove& form) { form.cmdStart.Press(); }));
    globals = nullptr;
    EXPECT_TRUE(Ask([](FCCRemove& form) { form.cmdStart.Press(); }));
}

TEST_F(FCCRemoveTest, HelpShowsItsTopicAndLeavesTheFormOpen) {
    Ask([&](FCCRemove& form) {
        form.Command1.Press();
        EXPECT_TRUE(form.Visible());
    });
    EXPECT_EQ(toolkit.helps, (std::vector<ScriptedToolkit::Help>{{u"C:\\Suite\\TARNWK30.HLP", 66}}));
}

}  // namespace
}  // namespace lintara::dialogs
