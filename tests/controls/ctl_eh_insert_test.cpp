#include "controls/ctl_eh_insert.h"

#include "base/constants.h"
#include "forms/form.h"
#include "platform/memory_settings.h"
#include "tests/support/scripted_toolkit.h"

#include <array>

#include <gtest/gtest.h>

namespace lintara::controls {
namespace {

constexpr std::int16_t KeyC = 67;
constexpr std::int16_t KeyV = 86;
constexpr std::int16_t CtrlShift = 3;
constexpr TextView Copied = u"The selected text was placed into the Tarnwick copy-and-paste buffer.";

SettingName Setting(TextView key) {
    return {u"Tarnwick", u"CodeAutomation", key};
}

struct CtlEHInsertTest : testing::Test {
    // The control as it is created now, shown, with what `use` does to it.
    void Use(const std::function<void(CtlEHInsert&)>& use) {
        forms::Form form{u"FTest", u"Test", {6000, 4000}};
        CtlEHInsert control{form, u"oEHInsert", {0, 0, 4440, 2205}, settings, toolkit};
        control.IsValid.Handle([this](bool isValid) { states.push_back(isValid); });
        toolkit.user = [&](forms::Form&) { use(control); };
        form.ShowModal(toolkit);
        ASSERT_EQ(toolkit.formsShown, 1);
    }

    platform::MemorySettings settings;
    support::ScriptedToolkit toolkit;
    std::vector<bool> states;
};

TEST_F(CtlEHInsertTest, BeginsWithTheBuiltInTextsOnAFreshMachine) {
    Use([&](CtlEHInsert& control) {
        EXPECT_EQ(control.EHLabel(), u"hErr");
        EXPECT_EQ(control.EHCode(), constants::DefaultErrorHandlerCode);
        EXPECT_EQ(control.EHCode().size(), 500U);
        EXPECT_EQ(control.Text1.Contents(), constants::DefaultErrorHandlerCode);
        EXPECT_FALSE(control.Text1.Visible());
        control.txtEHLabel.Type(u"x");
        EXPECT_EQ(states, std::vector<bool>{true});
    });
}

TEST_F(CtlEHInsertTest, BeginsWithTheUsersLastTexts) {
    ASSERT_TRUE(settings.Save(Setting(u"EHLabel"), u"Oops"));
    ASSERT_TRUE(settings.Save(Setting(u"EHCode"), u"Stop"));
    Use([&](CtlEHInsert& control) {
        EXPECT_EQ(control.EHLabel(), u"Oops");
        EXPECT_EQ(control.EHCode(), u"Stop");
        EXPECT_EQ(control.Text1.Contents(), constants::DefaultErrorHandlerCode);
    });
}

TEST_F(CtlEHInsertTest, AnEmptyTextIsInvalidFromTheBeginning) {
    ASSERT_TRUE(settings.Save(Setting(u"EHCode"), u""));
    Use([&](CtlEHInsert& control) {
        control.EvaluateValidity();
        EXPECT_EQ(states, (std::vector<bool>{false, false}));
        control.txtEHCode.Type(u"S");
        EXPECT_EQ(states.back(), true);
    });
}

TEST_F(CtlEHInsertTest, DeletingTheLabelMakesItInvalidAndTypingMakesItValid) {
    Use([&](CtlEHInsert& control) {
        control.txtEHLabel.SelectAll();
        control.txtEHLabel.Type(u"");
        control.txtEHLabel.Type(u"h");
        EXPECT_EQ(states, (std::vector<bool>{false, true}));
    });
}

TEST_F(CtlEHInsertTest, BothTextsMustBeThere) {
    Use([&](CtlEHInsert& control) {
        control.txtEHLabel.SetContents(u"");
        control.txtEHCode.SetContents(u"");
        control.txtEHLabel.SetContents(u"h");
        control.txtEHCode.SetContents(u"Stop");
        EXPECT_EQ(states, (std::vector<bool>{false, false, false, true}));
    });
}

TEST_F(CtlEHInsertTest, EvaluateValidityRaisesTheStateTwice) {
    Use([&](CtlEHInsert& control) {
        control.EvaluateValidity();
        EXPECT_EQ(states, (std::vector<bool>{true, true}));
    });
}

TEST_F(CtlEHInsertTest, SetStateEnablesLabelsAndBoxes) {
    Use([&](CtlEHInsert& control) {
        control.SetState(false);
        EXPECT_FALSE(control.lblEHLabel.Enabled() || control.lblEHCode.Enabled() ||
                     control.txtEHLabel.Enabled() || control.txtEHCode.Enabled());
        control.SetState(true);
        EXPECT_TRUE(control.lblEHLabel.Enabled() && control.lblEHCode.Enabled() &&
                    control.txtEHLabel.Enabled() && control.txtEHCode.Enabled());
    });
}

TEST_F(CtlEHInsertTest, TheFocusSelectsTheWholeText) {
    Use([&](CtlEHInsert& control) {
        control.txtEHCode.SetFocus();
        EXPECT_EQ(control.txtEHCode.SelLength(), 500);
        control.txtEHLabel.SetFocus();
        EXPECT_EQ(control.txtEHLabel.SelText(), u"hErr");
    });
}

TEST_F(CtlEHInsertTest, CtrlShiftCCopiesTheSelectionAndSaysSo) {
    Use([&](CtlEHInsert& control) {
        control.txtEHCode.Select(4, 11);
        control.txtEHCode.KeyDown.Raise(KeyC, CtrlShift);
        EXPECT_EQ(control.sCCPBuffer, u"Select Case");
        EXPECT_EQ(toolkit.messages, (std::vector<support::ScriptedToolkit::Message>{
                                        {Text(Copied), forms::MessageStyle::Information, u""}}));
    });
}

TEST_F(CtlEHInsertTest, CtrlShiftCWithNothingSelectedEmptiesTheBufferAndSaysSo) {
    Use([&](CtlEHInsert& control) {
        control.sCCPBuffer = u"old";
        control.txtEHCode.Select(0, 0);
        control.txtEHCode.KeyDown.Raise(KeyC, CtrlShift);
        EXPECT_EQ(control.sCCPBuffer, u"");
        EXPECT_EQ(toolkit.messages.size(), 1U);
    });
}

TEST_F(CtlEHInsertTest, CtrlShiftVPutsTheBufferInThePlaceOfTheSelection) {
    Use([&](CtlEHInsert& control) {
        control.txtEHCode.SetContents(u"one two");
        control.txtEHCode.Select(4, 3);
        control.sCCPBuffer = u"2";
        control.txtEHCode.KeyDown.Raise(KeyV, CtrlShift);
        EXPECT_EQ(control.EHCode(), u"one 2");
        control.txtEHCode.KeyDown.Raise(KeyV, CtrlShift);
        EXPECT_EQ(control.EHCode(), u"one 22");
        EXPECT_TRUE(toolkit.messages.empty());
    });
}

TEST_F(CtlEHInsertTest, CtrlShiftVWithAnEmptyBufferDeletesTheSelection) {
    Use([&](CtlEHInsert& control) {
        control.txtEHCode.SetContents(u"one two");
        control.txtEHCode.Select(3, 4);
        control.txtEHCode.KeyDown.Raise(KeyV, CtrlShift);
        EXPECT_EQ(control.EHCode(), u"one");
    });
}

TEST_F(CtlEHInsertTest, OtherKeysDoNothing) {
    Use([&](CtlEHInsert& control) {
        control.sCCPBuffer = u"kept";
        control.txtEHCode.SelectAll();
        for (const std::int16_t held : std::array<std::int16_t, 7>{0, 1, 2, 4, 5, 6, 7}) {
            control.txtEHCode.KeyDown.Raise(KeyC, held);
            control.txtEHCode.KeyDown.Raise(KeyV, held);
        }
        control.txtEHCode.KeyDown.Raise(88, CtrlShift);
        EXPECT_EQ(control.sCCPBuffer, u"kept");
        EXPECT_EQ(control.EHCode(), constants::DefaultErrorHandlerCode);
        EXPECT_TRUE(toolkit.messages.empty());
    });
}

TEST_F(CtlEHInsertTest, ItsBoxesFollowItsSize) {
    Use([&](CtlEHInsert& control) {
        ASSERT_TRUE(control.Move({0, 0, 5000, 3000}));
        EXPECT_EQ(control.txtEHLabel.Width(), 5000 - 1890);
        EXPECT_EQ(control.Shape1.Width(), 5000 - 1890 + 90);
        EXPECT_EQ(control.txtEHCode.Width(), 5000);
        EXPECT_EQ(control.txtEHCode.Height(), 3000 - 705);
        EXPECT_EQ(control.Line1.Ends().x2, 5000);
    });
}

TEST_F(CtlEHInsertTest, ATinySizeLeavesTheBoxesAsTheyWere) {
    Use([&](CtlEHInsert& control) {
        const forms::Twips labelWidth = control.txtEHLabel.Width();
        const forms::Twips codeHeight = control.txtEHCode.Height();
        ASSERT_TRUE(control.Move({0, 0, 1890, 705}));
        EXPECT_EQ(control.txtEHLabel.Width(), labelWidth);
        EXPECT_EQ(control.txtEHCode.Height(), codeHeight);
        EXPECT_EQ(control.txtEHCode.Width(), 1890);
        ASSERT_TRUE(control.Move({0, 0, 1891, 706}));
        EXPECT_EQ(control.txtEHLabel.Width(), 1);
        EXPECT_EQ(control.Shape1.Width(), 91);
        EXPECT_EQ(control.txtEHCode.Height(), 1);
        ASSERT_TRUE(control.Move({0, 0, 0, 0}));
        EXPECT_EQ(control.txtEHCode.Width(), 0);
        EXPECT_EQ(control.Line1.Ends().x2, 0);
    });
}

TEST_F(CtlEHInsertTest, NeverStoresAnything) {
    Use([&](CtlEHInsert& control) { control.txtEHLabel.SetContents(u"other"); });
    EXPECT_EQ(settings.Get(Setting(u"EHLabel"), u"none"), u"none");
    EXPECT_EQ(settings.Get(Setting(u"EHCode"), u"none"), u"none");
}

}  // namespace
}  // namespace lintara::controls
