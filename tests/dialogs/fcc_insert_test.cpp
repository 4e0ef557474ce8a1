#include "dialogs/fcc_insert.h"

#include "tests/dialogs/dialog_fixture.h"
#include "tests/forms/form_fixture.h"

#include <array>

#include <gmock/gmock.h>

namespace lintara::dialogs {
namespace {

using forms::Twips;
using support::ScriptedToolkit;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int16_t KeyC = 67;
constexpr std::int16_t KeyV = 86;
constexpr std::int16_t CtrlShift = 3;
constexpr TextView Sample = u"Debug.Print Time & \" - {ComponentName}.{MemberName}\"\r\n";
constexpr TextView Copied = u"The selected text was placed into the Tarnwick copy-and-paste buffer.";

struct FCCInsertTest : DialogTest {
    InsertCCParameters parameters{.Scope = 9,
                                  .WhereToInsert = 8,
                                  .LineToInsert = 7,
                                  .ID = 6,
                                  .ProcAvailable = true,
                                  .ComponentAvailable = 1,
                                  .sCCPBufferX = u"old"};

    bool Ask(std::function<void(FCCInsert&)> use) {
        User<FCCInsert>(std::move(use));
        return DialogsLT(Host()).GetInsertCCParameters(parameters);
    }
};

TEST_F(FCCInsertTest, HasItsControls) {
    FCCInsert form(Host());
    EXPECT_EQ(form.FormCaption(), u"Insert custom code");
    EXPECT_THAT(
        support::DescribeControls(form),
        ElementsAre("Frame fraBody", "UserControl DBPanel1 in fraBody",
                    "Label Label2 in DBPanel1 \"Insert in:\"",
                    "OptionButton optScope(0) in DBPanel1 \"Current proced&ure\"",
                    "OptionButton optScope(1) in DBPanel1 \"Current c&omponent\"",
                    "OptionButton optScope(2) in DBPanel1 \"Current p&roject\"",
                    "UserControl DBPanel2 in fraBody", "Label Label4 in DBPanel2 \"I&nsertion point:\"",
                    "OptionButton optWhere(0) in DBPanel2 \"Insert immediatelly after the first line\"",
                    "OptionButton optWhere(1) in DBPanel2 \"Insert immediatelly before the last line\"",
                    "OptionButton optWhere(2) in DBPanel2 \"Insert at line:\"", "Shape Shape1 in DBPanel2",
                    "TextBox txtLine in DBPanel2 \"1\"", "UpDown udLine of txtLine in DBPanel2",
                    "CheckBox chkNoDelimiters in DBPanel2 \"Use &markup lines\"",
                    "Label Label5 in DBPanel2 \"(check it to insure future automatically removal)\"",
                    "Shape Shape2 in DBPanel2", "Label lblID in DBPanel2 \"Numeric ID to be used:\"",
                    "TextBox txtID in DBPanel2 \"1\"", "UpDown udID of txtID in DBPanel2",
                    "UserControl DBPanel3 in fraBody", "Label Label3 in DBPanel3 \"Co&de to insert:\"",
                    "Line Line1 in DBPanel3",
                    "TextBox of many lines txtCode in DBPanel3 "
                    "\"Debug.Print Time & \" - {ComponentName}.{MemberName}\"\\r\\n\"",
                    "Frame Frame1 in fraBody", "CommandButton cmdStart in Frame1 \"&Begin\"",
                    "CommandButton cmdCancel in Frame1 \"&Cancel\"",
                    "CommandButton Command1 in Frame1 \"&Help\"", "StatusBar StatusBar1"));
    EXPECT_EQ(StatesOf(form.optScope), "+++");
    EXPECT_EQ(StatesOf(form.optWhere), "*++");
    EXPECT_EQ(form.txtCode.font.name, u"Courier New");
    EXPECT_TRUE(form.cmdStart.isDefault);
    EXPECT_TRUE(form.cmdCancel.isCancel);
}

TEST_F(FCCInsertTest, AFirstRunShowsTheDefaults) {
    Ask([&](FCCInsert& form) {
        EXPECT_EQ(form.chkNoDelimiters.Value(), 1);
        EXPECT_EQ(form.txtCode.Contents(), Sample);
        EXPECT_TRUE(form.txtID.Enabled());
        EXPECT_FALSE(form.txtLine.Enabled());
        EXPECT_FALSE(form.udLine.Enabled());
        EXPECT_TRUE(form.cmdStart.Enabled());
        EXPECT_EQ(form.StatusBar1.SimpleText(), u"");
    });
    EXPECT_EQ(toolkit.formsShown, 1);
}

TEST_F(FCCInsertTest, BeginsWithWhatWasUsedLast) {
    settings.Put(u"LastCustomCode", u"Stop");
    settings.Put(u"UseDelimiters", u"0");
    Ask([&](FCCInsert& form) {
        EXPECT_EQ(form.txtCode.Contents(), u"Stop");
        EXPECT_EQ(form.chkNoDelimiters.Value(), 0);
        EXPECT_FALSE(form.lblID.Enabled());
        EXPECT_FALSE(form.txtID.Enabled());
        EXPECT_FALSE(form.udID.Enabled());
    });
}

TEST_F(FCCInsertTest, AnEmptyLastCodeKeepsTheSample) {
    settings.Put(u"LastCustomCode", u"");
    Ask([&](FCCInsert& form) { EXPECT_EQ(form.txtCode.Contents(), Sample); });
}

TEST_F(FCCInsertTest, TheCallersCodeWinsOverTheLastOne) {
    settings.Put(u"LastCustomCode", u"Stop");
    parameters.TextToInsert = u"Beep";
    Ask([&](FCCInsert& form) { EXPECT_EQ(form.txtCode.Contents(), u"Beep"); });
}

// Scope availability.

TEST_F(FCCInsertTest, TheComponentIsSelectedWheneverThereIsOne) {
    Ask([&](FCCInsert& form) { EXPECT_EQ(StatesOf(form.optScope), "+*+"); });
}

TEST_F(FCCInsertTest, WithoutAProcedureItsScopeIsDisabled) {
    parameters.ProcAvailable = false;
    Ask([&](FCCInsert& form) { EXPECT_EQ(StatesOf(form.optScope), "-*+"); });
}

TEST_F(FCCInsertTest, WithoutProcedureAndComponentOnlyTheProjectIsPossible) {
    parameters.ProcAvailable = false;
    parameters.ComponentAvailable = 0;
    Ask([&](FCCInsert& form) { EXPECT_EQ(StatesOf(form.optScope), "--*"); });
}

TEST_F(FCCInsertTest, WithoutAComponentTheProcedureStaysPossible) {
    parameters.ComponentAvailable = 0;
    Ask([&](FCCInsert& form) { EXPECT_EQ(StatesOf(form.optScope), "+-*"); });
}

TEST_F(FCCInsertTest, EachScopeHasItsNumber) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(Ask([&](FCCInsert& form) {
            form.optScope.at(i).Select();
            form.cmdStart.Press();
        }));
        EXPECT_EQ(parameters.Scope, static_cast<std::int16_t>(i + 1));
    }
}

TEST_F(FCCInsertTest, EachInsertionPointHasItsNumber) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(Ask([&](FCCInsert& form) {
            form.optWhere.at(i).Select();
            form.cmdStart.Press();
        }));
        EXPECT_EQ(parameters.WhereToInsert, static_cast<std::int16_t>(i + 1));
    }
}

// Validation and enabling.

TEST_F(FCCInsertTest, WithoutMarkupLinesTheIdentifierDoesNotMatter) {
    EXPECT_TRUE(Ask([&](FCCInsert& form) {
        form.txtID.Edit(u"", 0, 0);
        EXPECT_FALSE(form.cmdStart.Enabled());
        form.chkNoDelimiters.Toggle();
        EXPECT_FALSE(form.lblID.Enabled());
        EXPECT_FALSE(form.txtID.Enabled());
        EXPECT_FALSE(form.udID.Enabled());
        EXPECT_TRUE(form.cmdStart.Enabled());
        form.cmdStart.Press();
    }));
    EXPECT_TRUE(parameters.NoDelimiters);
    EXPECT_EQ(parameters.ID, 6);
}

TEST_F(FCCInsertTest, CheckingMarkupLinesAgainAsksForTheIdentifierAgain) {
    Ask([&](FCCInsert& form) {
        form.txtID.Edit(u"", 0, 0);
        form.chkNoDelimiters.Toggle();
        form.chkNoDelimiters.Toggle();
        EXPECT_TRUE(form.txtID.Enabled());
        EXPECT_FALSE(form.cmdStart.Enabled());
    });
}

TEST_F(FCCInsertTest, AnEmptyLineMattersOnlyAtALine) {
    Ask([&](FCCInsert& form) {
        form.optWhere[2].Select();
        EXPECT_TRUE(form.txtLine.Enabled());
        EXPECT_TRUE(form.udLine.Enabled());
        form.txtLine.Edit(u"", 0, 0);
        EXPECT_FALSE(form.cmdStart.Enabled());
        form.optWhere[0].Select();
        EXPECT_FALSE(form.txtLine.Enabled());
        EXPECT_TRUE(form.cmdStart.Enabled());
        form.optWhere[2].Select();
        EXPECT_FALSE(form.cmdStart.Enabled());
        form.optWhere[1].Select();
        EXPECT_FALSE(form.udLine.Enabled());
        EXPECT_TRUE(form.cmdStart.Enabled());
    });
}

TEST_F(FCCInsertTest, WithoutCodeNothingCanBegin) {
    Ask([&](FCCInsert& form) {
        form.txtCode.Edit(u"", 0, 0);
        EXPECT_FALSE(form.cmdStart.Enabled());
        form.txtCode.Edit(u" ", 0, 0);
        EXPECT_TRUE(form.cmdStart.Enabled());
    });
}

TEST_F(FCCInsertTest, NumbersMustBeNumeric) {
    Ask([&](FCCInsert& form) {
        form.optWhere[2].Select();
        for (const TextView text : {u"a1", u"", u"1 2"}) {
            form.txtLine.Edit(text, 0, 0);
            EXPECT_FALSE(form.cmdStart.Enabled()) << ToUtf8(text);
            form.txtLine.Edit(u"-1.5", 0, 0);
            EXPECT_TRUE(form.cmdStart.Enabled());
            form.txtID.Edit(text, 0, 0);
            EXPECT_FALSE(form.cmdStart.Enabled()) << ToUtf8(text);
            form.txtID.Edit(u"1e3", 0, 0);
            EXPECT_TRUE(form.cmdStart.Enabled());
        }
    });
}

TEST_F(FCCInsertTest, TheStatusBarSaysWhyNothingCanBegin) {
    Ask([&](FCCInsert& form) {
        const auto status = [&] { return ToUtf8(form.StatusBar1.SimpleText()); };
        form.txtCode.Edit(u"", 0, 0);
        EXPECT_EQ(status(), "Enter the code to insert.");
        form.txtID.Edit(u"x", 0, 0);
        EXPECT_EQ(status(), "Enter the numeric ID of the markup lines.");
        form.optWhere[2].Select();
        form.txtLine.Edit(u"", 0, 0);
        EXPECT_EQ(status(), "Enter the number of the line at which the code is to be inserted.");
        form.optWhere[0].Select();
        form.chkNoDelimiters.Toggle();
        form.txtCode.Edit(u"Beep", 0, 0);
        EXPECT_EQ(status(), "");
    });
}

TEST_F(FCCInsertTest, OneChangeOfATextIsOneChangeOfTheButton) {
    Ask([&](FCCInsert& form) {
        forms::RecordingMirror mirror;
        form.SetMirror(&mirror);
        form.txtID.Edit(u"", 0, 0);
        form.SetMirror(nullptr);
        using forms::Property;
        EXPECT_THAT(mirror.changes, ElementsAre(testing::Pair(&form.txtID, Property::Text),
                                                testing::Pair(&form.cmdStart, Property::Enabled),
                                                testing::Pair(&form.StatusBar1, Property::Text)));
    });
}

TEST_F(FCCInsertTest, TheArrowsCountFrom1To10000) {
    Ask([&](FCCInsert& form) {
        form.udID.Step(1);
        EXPECT_EQ(form.txtID.Contents(), u"2");
        form.udID.Step(-1);
        form.udID.Step(-1);
        EXPECT_EQ(form.txtID.Contents(), u"1");
        form.txtID.Edit(u"9999", 0, 0);
        form.udID.Step(1);
        form.udID.Step(1);
        EXPECT_EQ(form.txtID.Contents(), u"10000");
        form.udLine.Step(1);
        EXPECT_EQ(form.txtLine.Contents(), u"1");
        form.optWhere[2].Select();
        form.udLine.Step(1);
        EXPECT_EQ(form.txtLine.Contents(), u"2");
        EXPECT_EQ(form.udLine.Bounds().max, 10000);
    });
}

TEST_F(FCCInsertTest, TheFocusSelectsTheWholeText) {
    Ask([&](FCCInsert& form) {
        form.optWhere[2].Select();
        for (forms::TextBox* box : {&form.txtCode, &form.txtID, &form.txtLine}) {
            box->SetFocus();
            EXPECT_EQ(box->SelText(), box->Contents());
        }
    });
}

// The buffer keys.

TEST_F(FCCInsertTest, CtrlShiftCCopiesTheSelectionAndSaysSo) {
    EXPECT_TRUE(Ask([&](FCCInsert& form) {
        form.txtCode.Select(0, 11);
        form.txtCode.KeyDown.Raise(KeyC, CtrlShift);
        form.cmdStart.Press();
    }));
    EXPECT_EQ(parameters.sCCPBufferX, u"Debug.Print");
    EXPECT_EQ(toolkit.messages,
              (std::vector<ScriptedToolkit::Message>{{Text(Copied), forms::MessageStyle::Information, u""}}));
}

TEST_F(FCCInsertTest, CtrlShiftCWithNothingSelectedEmptiesTheBufferAndSaysSo) {
    EXPECT_TRUE(Ask([&](FCCInsert& form) {
        form.txtCode.Select(0, 5);
        form.txtCode.KeyDown.Raise(KeyC, CtrlShift);
        form.txtCode.Select(0, 0);
        form.txtCode.KeyDown.Raise(KeyC, CtrlShift);
        form.cmdStart.Press();
    }));
    EXPECT_EQ(parameters.sCCPBufferX, u"");
    EXPECT_EQ(toolkit.messages.size(), 2U);
}

TEST_F(FCCInsertTest, CtrlShiftVPutsTheBufferInThePlaceOfTheSelection) {
    Ask([&](FCCInsert& form) {
        form.txtCode.Edit(u"one two", 0, 3);
        form.txtCode.KeyDown.Raise(KeyC, CtrlShift);
        form.txtCode.Select(4, 3);
        form.txtCode.KeyDown.Raise(KeyV, CtrlShift);
        EXPECT_EQ(form.txtCode.Contents(), u"one one");
        form.txtCode.KeyDown.Raise(KeyV, CtrlShift);
        EXPECT_EQ(form.txtCode.Contents(), u"one oneone");
        EXPECT_EQ(toolkit.messages.size(), 1U);
    });
}

TEST_F(FCCInsertTest, OtherKeysDoNothing) {
    EXPECT_TRUE(Ask([&](FCCInsert& form) {
        form.txtCode.SelectAll();
        for (const std::int16_t held : std::array<std::int16_t, 7>{0, 1, 2, 4, 5, 6, 7}) {
            form.txtCode.KeyDown.Raise(KeyC, held);
            form.txtCode.KeyDown.Raise(KeyV, held);
        }
        form.txtCode.KeyDown.Raise(88, CtrlShift);
        EXPECT_EQ(form.txtCode.Contents(), Sample);
        form.cmdStart.Press();
    }));
    EXPECT_EQ(parameters.sCCPBufferX, u"");
    EXPECT_THAT(toolkit.messages, IsEmpty());
}

// Confirming and cancelling.

TEST_F(FCCInsertTest, BeginWritesAllOutputs) {
    parameters.NoDelimiters = true;
    EXPECT_TRUE(Ask([&](FCCInsert& form) {
        form.optScope[0].Select();
        form.optWhere[2].Select();
        form.txtLine.Edit(u"70000", 0, 0);
        form.txtID.Edit(u"12", 0, 0);
        form.txtCode.Edit(u"Beep", 0, 0);
        form.cmdStart.Press();
    }));
    EXPECT_EQ(parameters.Scope, 1);
    EXPECT_EQ(parameters.TextToInsert, u"Beep");
    EXPECT_FALSE(parameters.NoDelimiters);
    EXPECT_EQ(parameters.WhereToInsert, 3);
    EXPECT_EQ(parameters.LineToInsert, 70000);
    EXPECT_EQ(parameters.ID, 12);
    EXPECT_EQ(parameters.sCCPBufferX, u"");
}

TEST_F(FCCInsertTest, ANumberThatDoesNotFitLeavesItsVariable) {
    EXPECT_TRUE(Ask([&](FCCInsert& form) {
        form.txtLine.SetContents(u"3000000000");
        form.txtID.Edit(u"40000", 0, 0);
        form.cmdStart.Press();
    }));
    EXPECT_EQ(parameters.LineToInsert, 7);
    EXPECT_EQ(parameters.ID, 6);
    EXPECT_EQ(parameters.TextToInsert, Sample);
}

TEST_F(FCCInsertTest, CancelLeavesTheVariablesAndTheSettings) {
    parameters.TextToInsert = u"mine";
    EXPECT_FALSE(Ask([&](FCCInsert& form) {
        form.txtCode.Edit(u"Beep", 0, 4);
        form.txtCode.KeyDown.Raise(KeyC, CtrlShift);
        form.chkNoDelimiters.Toggle();
        form.cmdCancel.Press();
        EXPECT_FALSE(form.Visible());
    }));
    EXPECT_EQ(parameters.Scope, 9);
    EXPECT_EQ(parameters.TextToInsert, u"mine");
    EXPECT_FALSE(parameters.NoDelimiters);
    EXPECT_EQ(parameters.WhereToInsert, 8);
    EXPECT_EQ(parameters.LineToInsert, 7);
    EXPECT_EQ(parameters.ID, 6);
    EXPECT_EQ(parameters.sCCPBufferX, u"old");
    EXPECT_THAT(settings.saves, IsEmpty());
}

TEST_F(FCCInsertTest, TheCloseBoxIsACancel) {
    EXPECT_FALSE(Ask([](FCCInsert&) {}));
    EXPECT_EQ(parameters.Scope, 9);
    EXPECT_THAT(settings.saves, IsEmpty());
    EXPECT_THAT(globals->log, ElementsAre("load FCCInsert", "save FCCInsert"));
}

TEST_F(FCCInsertTest, BeginSavesInOrderAndHides) {
    EXPECT_TRUE(Ask([&](FCCInsert& form) {
        form.txtCode.Edit(u"Beep", 0, 0);
        form.chkNoDelimiters.Toggle();
        form.cmdStart.Press();
        EXPECT_FALSE(form.Visible());
    }));
    EXPECT_THAT(settings.saves, ElementsAre("LastCustomCode=Beep", "UseDelimiters=0"));
    EXPECT_EQ(toolkit.eventsServed, 0);
}

// What fails.

TEST_F(FCCInsertTest, ASettingThatCannotBeReachedIsLeftOut) {
    for (std::size_t failing = 0; failing < 4; ++failing) {
        settings.calls = 0;
        settings.failingCall = failing;
        settings.saves.clear();
        EXPECT_TRUE(Ask([](FCCInsert& form) { form.cmdStart.Press(); })) << failing;
        EXPECT_EQ(settings.calls, 4U);
        EXPECT_EQ(settings.saves.size(), failing < 2 ? 2U : 1U);
        EXPECT_FALSE(parameters.NoDelimiters);
    }
}

TEST_F(FCCInsertTest, AServicesObjectThatFailsOrIsMissingDoesNotMatter) {
    globals->fails = true;
    EXPECT_TRUE(Ask([](FCCInsert& form) { form.cmdStart.Press(); }));
    globals = nullptr;
    EXPECT_TRUE(Ask([](FCCInsert& form) { form.cmdStart.Press(); }));
}

TEST_F(FCCInsertTest, HelpShowsItsTopicAndLeavesTheFormOpen) {
    Ask([&](FCCInsert& form) {
        form.Command1.Press();
        EXPECT_TRUE(form.Visible());
    });
    EXPECT_EQ(toolkit.helps, (std::vector<ScriptedToolkit::Help>{{u"C:\\Suite\\TARNWK30.HLP", 66}}));
}

// Layout.

void ExpectLayout(const FCCInsert& form, Twips w, Twips h) {
    EXPECT_EQ(form.DBPanel1.Place(), (forms::Rect{30, 90, w - 180, 405}));
    EXPECT_EQ(form.DBPanel2.Place(), (forms::Rect{30, 555, w - 180, 2040}));
    EXPECT_EQ(form.DBPanel3.Place(), (forms::Rect{30, 2655, w - 180, h - 3630}));
    EXPECT_EQ(form.Frame1.Place(), (forms::Rect{(w - 4035 - 120) / 2, h - 870, 4035, 390}));
    EXPECT_EQ(form.Line1.Ends().x2, w - 195);
    EXPECT_EQ(form.txtCode.Place(), (forms::Rect{15, 405, w - 210, h - 4050}));
    EXPECT_EQ(form.StatusBar1.Place(), (forms::Rect{0, h - 345, w, 345}));
}

TEST_F(FCCInsertTest, ItsLayoutFollowsItsSize) {
    FCCInsert form(Host());
    form.EnsureLoaded();
    ExpectLayout(form, form.Width(), form.Height());
    EXPECT_THAT(support::LayoutComplaints(form), IsEmpty());
    for (const forms::Size size : {form.minimum, forms::Size{8001, 5000}, forms::Size{30000, 20000}}) {
        ASSERT_TRUE(form.Move({0, 0, size.width, size.height}));
        ExpectLayout(form, size.width, size.height);
        EXPECT_THAT(support::LayoutComplaints(form), IsEmpty());
    }
}

TEST_F(FCCInsertTest, WhatDoesNotFitATinyFormStaysAsItWas) {
    FCCInsert form(Host());
    form.EnsureLoaded();
    const forms::Rect code = form.DBPanel3.Place();
    const forms::Rect box = form.txtCode.Place();
    ASSERT_TRUE(form.Move({0, 0, 8400, 3629}));
    EXPECT_EQ(form.DBPanel3.Place(), code);
    ASSERT_TRUE(form.Move({0, 0, 8400, 3630 + 419}));
    EXPECT_EQ(form.DBPanel3.Height(), 419);
    EXPECT_EQ(form.txtCode.Place(), box);
    ASSERT_TRUE(form.Move({0, 0, 8400, 3630 + 420}));
    EXPECT_EQ(form.txtCode.Height(), 0);
    ASSERT_TRUE(form.Move({0, 0, 179, 6300}));
    EXPECT_EQ(form.DBPanel1.Width(), 8220);
}

TEST_F(FCCInsertTest, EverySizeIsSurvivedAndMended) {
    FCCInsert form(Host());
    form.EnsureLoaded();
    for (Twips length = 5000; length >= 0; length -= 125) {
        ASSERT_TRUE(form.Move({0, 0, length, 5000 - length}));
        ASSERT_TRUE(form.Move({0, 0, length, length}));
    }
    ASSERT_TRUE(form.Move({0, 0, 8400, 6300}));
    ExpectLayout(form, 8400, 6300);
}

}  // namespace
}  // namespace lintara::dialogs
