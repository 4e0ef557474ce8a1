#include "dialogs/feh_insert.h"

#include "base/constants.h"
#include "tests/dialogs/dialog_fixture.h"
#include "tests/forms/form_fixture.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace lintara::dialogs {
namespace {

using support::ScriptedToolkit;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int16_t KeyC = 67;
constexpr std::int16_t CtrlShift = 3;

struct FEHInsertTest : DialogTest {
    // In a procedure, with an active code window.
    InsertEHParameters parameters{.Scope = 9,
                                  .EHLabel = u"old label",
                                  .EHCode = u"old code",
                                  .LNBase = u"old base",
                                  .LNStep = u"old step",
                                  .iLenGetMemberName = 4,
                                  .iGetLineNumber = 12,
                                  .sCCPBuffer = u"old buffer"};

    bool Ask(std::function<void(FEHInsert&)> use) {
        User<FEHInsert>(std::move(use));
        return DialogsLT(Host()).GetInsertEHParameters(parameters);
    }
};

TEST_F(FEHInsertTest, HasItsControls) {
    FEHInsert form(Host());
    EXPECT_EQ(form.FormCaption(), u"Insert error handlers/line numbers");
    EXPECT_THAT(
        support::DescribeControls(form),
        ElementsAre(
            "Frame fraBody", "UserControl DBPanel1 in fraBody", "Label Label1 in DBPanel1 \"Insert in:\"",
            "OptionButton optScope(0) in DBPanel1 \"Current proced&ure\"",
            "OptionButton optScope(1) in DBPanel1 \"Current c&omponent\"",
            "OptionButton optScope(2) in DBPanel1 \"Current p&roject\"", "UserControl DBPanel2 in fraBody",
            "CheckBox chkEH in DBPanel2 \"Insert &error handlers\"", "UserControl oEHInsert in DBPanel2",
            "UserControl DBPanel3 in fraBody", "CheckBox chkLN in DBPanel3 \"Insert line &numbers\"",
            "Shape Shape1 in DBPanel3", "Label lblEHBase in DBPanel3 \"B&ase number:\"",
            "TextBox txtEHBase in DBPanel3 \"10000\"", "Shape Shape2 in DBPanel3",
            "Label lblEHStep in DBPanel3 \"&Step:\"", "TextBox txtEHStep in DBPanel3",
            "Frame Frame1 in fraBody", "CommandButton cmdStart in Frame1 \"&Begin\"",
            "CommandButton cmdCancel in Frame1 \"&Cancel\"", "CommandButton Command1 in Frame1 \"&Help\"",
            "StatusBar StatusBar1"));
    EXPECT_EQ(StatesOf(form.optScope), "*++");
    EXPECT_TRUE(form.cmdStart.isDefault);
    EXPECT_TRUE(form.cmdCancel.isCancel);
    for (const forms::Control* control : form.ControlsInOrder()) {
        const bool isCode = control == &form.oEHInsert.txtEHCode;
        EXPECT_EQ(control->font.name, isCode ? u"Courier New" : u"Tahoma");
    }
}

TEST_F(FEHInsertTest, AFirstRunShowsTheDefaults) {
    Ask([&](FEHInsert& form) {
        EXPECT_EQ(form.chkLN.Value(), 1);
        EXPECT_EQ(form.chkEH.Value(), 1);
        EXPECT_EQ(form.txtEHBase.Contents(), u"10000");
        EXPECT_EQ(form.txtEHStep.Contents(), u"5");
        EXPECT_EQ(form.oEHInsert.EHLabel(), u"hErr");
        EXPECT_EQ(form.oEHInsert.EHCode(), constants::DefaultErrorHandlerCode);
        EXPECT_TRUE(form.cmdStart.Enabled());
        EXPECT_EQ(form.StatusBar1.SimpleText(), u"");
    });
    EXPECT_EQ(toolkit.formsShown, 1);
}

TEST_F(FEHInsertTest, BeginsWithWhatWasUsedLast) {
    settings.Put(u"InsertLN", u"0");
    settings.Put(u"InsertEH", u"1");
    settings.Put(u"LNBase", u"7");
    settings.Put(u"LNStep", u" 3");
    settings.Put(u"EHLabel", u"Oops");
    settings.Put(u"EHCode", u"Stop");
    Ask([&](FEHInsert& form) {
        EXPECT_EQ(form.chkLN.Value(), 0);
        EXPECT_EQ(form.chkEH.Value(), 1);
        EXPECT_EQ(form.txtEHBase.Contents(), u"7");
        EXPECT_EQ(form.txtEHStep.Contents(), u" 3");
        EXPECT_FALSE(form.txtEHBase.Enabled());
        EXPECT_TRUE(form.oEHInsert.txtEHCode.Enabled());
        EXPECT_EQ(form.oEHInsert.EHLabel(), u"Oops");
        EXPECT_EQ(form.oEHInsert.EHCode(), u"Stop");
    });
}

TEST_F(FEHInsertTest, AStoredStateThatIsNoneLeavesTheBoxChecked) {
    settings.Put(u"InsertLN", u"maybe");
    settings.Put(u"InsertEH", u"7");
    Ask([&](FEHInsert& form) {
        EXPECT_EQ(form.chkLN.Value(), 1);
        EXPECT_EQ(form.chkEH.Value(), 1);
    });
}

// Scope availability.

TEST_F(FEHInsertTest, InAProcedureAllScopesArePossible) {
    Ask([&](FEHInsert& form) { EXPECT_EQ(StatesOf(form.optScope), "*++"); });
}

TEST_F(FEHInsertTest, InAProcedureTheLineDoesNotMatter) {
    parameters.iGetLineNumber = 0;
    Ask([&](FEHInsert& form) { EXPECT_EQ(StatesOf(form.optScope), "*++"); });
}

TEST_F(FEHInsertTest, OutsideAnyProcedureTheComponentIsSelected) {
    parameters.iLenGetMemberName = 0;
    Ask([&](FEHInsert& form) { EXPECT_EQ(StatesOf(form.optScope), "-*+"); });
}

TEST_F(FEHInsertTest, WithoutACodeWindowOnlyTheProjectIsPossible) {
    parameters.iLenGetMemberName = 0;
    parameters.iGetLineNumber = 0;
    Ask([&](FEHInsert& form) { EXPECT_EQ(StatesOf(form.optScope), "--*"); });
}

TEST_F(FEHInsertTest, EachScopeHasItsNumber) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(Ask([&](FEHInsert& form) {
            form.optScope.at(i).Select();
            form.cmdStart.Press();
        }));
        EXPECT_EQ(parameters.Scope, static_cast<std::int16_t>(i + 1));
    }
}

// Validation.

TEST_F(FEHInsertTest, ClearingTheBaseDisablesBeginUntilLineNumbersAreNotWanted) {
    Ask([&](FEHInsert& form) {
        form.txtEHBase.Edit(u"", 0, 0);
        EXPECT_FALSE(form.cmdStart.Enabled());
        form.chkLN.Toggle();
        EXPECT_TRUE(form.cmdStart.Enabled());
        form.oEHInsert.txtEHLabel.Edit(u"", 0, 0);
        EXPECT_FALSE(form.cmdStart.Enabled());
    });
}

TEST_F(FEHInsertTest, WithBothBoxesClearedNothingCanBegin) {
    Ask([&](FEHInsert& form) {
        form.chkLN.Toggle();
        form.chkEH.Toggle();
        EXPECT_FALSE(form.cmdStart.Enabled());
        form.cmdStart.Press();
        EXPECT_TRUE(form.Visible());
        form.chkEH.Toggle();
        EXPECT_TRUE(form.cmdStart.Enabled());
    });
}

TEST_F(FEHInsertTest, WhateverIsNumericIsANumber) {
    Ask([&](FEHInsert& form) {
        for (const TextView base : {u"1e3", u"-10", u"0", u"1.5", u" 7 ", u"&HFF"}) {
            form.txtEHBase.Edit(base, 0, 0);
            EXPECT_TRUE(form.cmdStart.Enabled()) << ToUtf8(base);
        }
        for (const TextView base : {u"", u" ", u"a1", u"1 2", u"ten"}) {
            form.txtEHBase.Edit(base, 0, 0);
            EXPECT_FALSE(form.cmdStart.Enabled()) << ToUtf8(base);
        }
    });
}

TEST_F(FEHInsertTest, OnlyWhatIsToBeInsertedMustBeValid) {
    struct Case {
        bool insertEH;
        bool insertLN;
        bool isHandlerValid;
        bool areNumbersValid;
        bool canBegin;
    };
    Ask([&](FEHInsert& form) {
        for (const Case& c : {Case{true, true, true, true, true}, Case{true, true, false, true, false},
                              Case{true, true, true, false, false}, Case{true, false, true, false, true},
                              Case{true, false, false, true, false}, Case{false, true, false, true, true},
                              Case{false, true, true, false, false}, Case{false, false, true, true, false},
                              Case{true, true, false, false, false}}) {
            ASSERT_TRUE(form.chkEH.SetValue(c.insertEH ? 1 : 0));
            ASSERT_TRUE(form.chkLN.SetValue(c.insertLN ? 1 : 0));
            form.oEHInsert.txtEHCode.SetContents(c.isHandlerValid ? u"Stop" : u"");
            form.txtEHStep.SetContents(c.areNumbersValid ? u"5" : u"five");
            EXPECT_EQ(form.cmdStart.Enabled(), c.canBegin) << c.insertEH << c.insertLN;
            EXPECT_EQ(form.StatusBar1.SimpleText().empty(), c.canBegin);
        }
    });
}

TEST_F(FEHInsertTest, TheStatusBarSaysWhyNothingCanBegin) {
    Ask([&](FEHInsert& form) {
        const auto status = [&] { return ToUtf8(form.StatusBar1.SimpleText()); };
        form.txtEHStep.Edit(u"x", 0, 0);
        EXPECT_EQ(status(), "The step is not a number.");
        form.txtEHStep.Edit(u"", 0, 0);
        EXPECT_EQ(status(), "Enter the step from one line number to the next.");
        form.txtEHBase.Edit(u"x", 0, 0);
        EXPECT_EQ(status(), "The base number is not a number.");
        form.txtEHBase.Edit(u"", 0, 0);
        EXPECT_EQ(status(), "Enter the base number, which the first line gets.");
        form.oEHInsert.txtEHCode.Edit(u"", 0, 0);
        EXPECT_EQ(status(), "Enter the error handler's code.");
        form.oEHInsert.txtEHLabel.Edit(u"", 0, 0);
        EXPECT_EQ(status(), "Enter the error handler's label.");
        form.chkEH.Toggle();
        form.chkLN.Toggle();
        EXPECT_EQ(status(), "Choose what to insert: error handlers, line numbers or both.");
    });
}

TEST_F(FEHInsertTest, OneChangeOfATextIsOneChangeOfTheButton) {
    Ask([&](FEHInsert& form) {
        forms::RecordingMirror mirror;
        form.SetMirror(&mirror);
        form.txtEHBase.Edit(u"", 0, 0);
        form.SetMirror(nullptr);
        using forms::Property;
        EXPECT_THAT(mirror.changes, ElementsAre(testing::Pair(&form.txtEHBase, Property::Text),
                                                testing::Pair(&form.cmdStart, Property::Enabled),
                                                testing::Pair(&form.StatusBar1, Property::Text)));
    });
}

TEST_F(FEHInsertTest, TheBoxesEnableWhatBelongsToThem) {
    Ask([&](FEHInsert& form) {
        form.chkLN.Toggle();
        for (const forms::Control* control : std::initializer_list<forms::Control*>{
                 &form.lblEHBase, &form.txtEHBase, &form.lblEHStep, &form.txtEHStep}) {
            EXPECT_FALSE(control->Enabled()) << ToUtf8(control->Name());
        }
        EXPECT_TRUE(form.oEHInsert.txtEHLabel.Enabled());
        form.chkEH.Toggle();
        form.chkLN.Toggle();
        EXPECT_TRUE(form.txtEHStep.Enabled());
        for (const forms::Control* control :
             std::initializer_list<forms::Control*>{&form.oEHInsert.lblEHLabel, &form.oEHInsert.txtEHLabel,
                                                    &form.oEHInsert.lblEHCode, &form.oEHInsert.txtEHCode}) {
            EXPECT_FALSE(control->Enabled()) << ToUtf8(control->Name());
        }
    });
}

TEST_F(FEHInsertTest, TheFocusSelectsTheNumbers) {
    Ask([&](FEHInsert& form) {
        form.txtEHBase.SetFocus();
        EXPECT_EQ(form.txtEHBase.SelText(), u"10000");
        form.txtEHStep.SetFocus();
        EXPECT_EQ(form.txtEHStep.SelText(), u"5");
    });
}

// Confirming and cancelling.

TEST_F(FEHInsertTest, BeginWritesAllOutputs) {
    EXPECT_TRUE(Ask([&](FEHInsert& form) {
        form.optScope[2].Select();
        form.txtEHBase.Edit(u"1e3", 0, 0);
        form.txtEHStep.Edit(u"2", 0, 0);
        form.oEHInsert.txtEHLabel.Edit(u"Oops", 0, 0);
        form.oEHInsert.txtEHCode.Edit(u"Stop", 0, 4);
        form.oEHInsert.txtEHCode.KeyDown.Raise(KeyC, CtrlShift);
        form.cmdStart.Press();
    }));
    EXPECT_EQ(parameters.Scope, 3);
    EXPECT_TRUE(parameters.InsertEH);
    EXPECT_TRUE(parameters.InsertLN);
    EXPECT_EQ(parameters.EHLabel, u"Oops");
    EXPECT_EQ(parameters.EHCode, u"Stop");
    EXPECT_EQ(parameters.LNBase, u"1e3");
    EXPECT_EQ(parameters.LNStep, u"2");
    EXPECT_EQ(parameters.sCCPBuffer, u"Stop");
}

TEST_F(FEHInsertTest, TheEditorBeginsWithTheHostsBuffer) {
    Ask([&](FEHInsert& form) { EXPECT_EQ(form.oEHInsert.sCCPBuffer, u"old buffer"); });
}

TEST_F(FEHInsertTest, OnlyLineNumbersLeaveTheHandlersVariablesButSaveThem) {
    EXPECT_TRUE(Ask([&](FEHInsert& form) {
        form.oEHInsert.txtEHLabel.Edit(u"Oops", 0, 0);
        form.oEHInsert.sCCPBuffer = u"new buffer";
        form.chkEH.Toggle();
        form.cmdStart.Press();
    }));
    EXPECT_FALSE(parameters.InsertEH);
    EXPECT_EQ(parameters.EHLabel, u"old label");
    EXPECT_EQ(parameters.EHCode, u"old code");
    EXPECT_EQ(parameters.sCCPBuffer, u"old buffer");
    EXPECT_EQ(parameters.LNBase, u"10000");
    EXPECT_EQ(settings.Stored(u"EHLabel"), u"Oops");
    EXPECT_EQ(settings.Stored(u"EHCode"), constants::DefaultErrorHandlerCode);
}

TEST_F(FEHInsertTest, OnlyErrorHandlersLeaveTheNumbersVariables) {
    EXPECT_TRUE(Ask([&](FEHInsert& form) {
        form.chkLN.Toggle();
        form.cmdStart.Press();
    }));
    EXPECT_FALSE(parameters.InsertLN);
    EXPECT_EQ(parameters.LNBase, u"old base");
    EXPECT_EQ(parameters.LNStep, u"old step");
    EXPECT_EQ(parameters.EHLabel, u"hErr");
    EXPECT_EQ(settings.Stored(u"LNBase"), u"10000");
}

TEST_F(FEHInsertTest, CancelLeavesTheVariablesAndTheSettings) {
    EXPECT_FALSE(Ask([&](FEHInsert& form) {
        form.oEHInsert.txtEHCode.SelectAll();
        form.oEHInsert.txtEHCode.KeyDown.Raise(KeyC, CtrlShift);
        EXPECT_EQ(form.oEHInsert.sCCPBuffer.size(), 500U);
        form.optScope[2].Select();
        form.cmdCancel.Press();
        EXPECT_FALSE(form.Visible());
    }));
    EXPECT_EQ(parameters.Scope, 9);
    EXPECT_FALSE(parameters.InsertEH);
    EXPECT_FALSE(parameters.InsertLN);
    EXPECT_EQ(parameters.EHLabel, u"old label");
    EXPECT_EQ(parameters.LNBase, u"old base");
    EXPECT_EQ(parameters.sCCPBuffer, u"old buffer");
    EXPECT_THAT(settings.saves, IsEmpty());
    EXPECT_EQ(toolkit.eventsServed, 1);
}

TEST_F(FEHInsertTest, TheCloseBoxIsACancel) {
    EXPECT_FALSE(Ask([](FEHInsert&) {}));
    EXPECT_EQ(parameters.Scope, 9);
    EXPECT_THAT(settings.saves, IsEmpty());
    EXPECT_THAT(globals->log, ElementsAre("load FEHInsert", "save FEHInsert"));
}

TEST_F(FEHInsertTest, BeginHidesServesEventsAndSavesInOrder) {
    forms::Form* shown = nullptr;
    toolkit.whileServing = [&] {
        EXPECT_FALSE(shown->Visible());
        EXPECT_THAT(settings.saves, IsEmpty());
    };
    EXPECT_TRUE(Ask([&](FEHInsert& form) {
        shown = &form;
        form.oEHInsert.txtEHCode.Edit(u"Stop", 0, 0);
        form.chkLN.Toggle();
        form.cmdStart.Press();
    }));
    EXPECT_EQ(toolkit.eventsServed, 1);
    EXPECT_THAT(settings.saves, ElementsAre("InsertLN=0", "InsertEH=1", "LNBase=10000", "LNStep=5",
                                            "EHLabel=hErr", "EHCode=Stop"));
}

TEST_F(FEHInsertTest, AnEventThatClosesTheFormAfterBeginDoesNotTakeItBack) {
    forms::Form* shown = nullptr;
    toolkit.whileServing = [&] { shown->Unload(); };
    EXPECT_TRUE(Ask([&](FEHInsert& form) {
        shown = &form;
        form.cmdStart.Press();
    }));
    EXPECT_EQ(settings.saves.size(), 6U);
    EXPECT_THAT(globals->log, ElementsAre("load FEHInsert", "save FEHInsert"));
}

// What fails.

TEST_F(FEHInsertTest, ASettingThatCannotBeReachedIsLeftOut) {
    const auto confirm = [](FEHInsert& form) { form.cmdStart.Press(); };
    Ask(confirm);
    const std::size_t calls = settings.calls;
    ASSERT_EQ(calls, 12U);
    for (std::size_t failing = 0; failing < calls; ++failing) {
        settings.calls = 0;
        settings.failingCall = failing;
        settings.saves.clear();
        EXPECT_TRUE(Ask(confirm)) << failing;
        EXPECT_EQ(settings.saves.size(), failing < 6 ? 6U : 5U);
        EXPECT_EQ(parameters.LNBase, u"10000");
        EXPECT_EQ(parameters.EHCode, constants::DefaultErrorHandlerCode);
    }
}

TEST_F(FEHInsertTest, WithoutAnySettingsTheDefaultsAreUsed) {
    settings.allFail = true;
    EXPECT_TRUE(Ask([](FEHInsert& form) { form.cmdStart.Press(); }));
    EXPECT_TRUE(parameters.InsertEH);
    EXPECT_EQ(parameters.LNStep, u"5");
    EXPECT_THAT(settings.saves, IsEmpty());
}

TEST_F(FEHInsertTest, AServicesObjectThatFailsOrIsMissingDoesNotMatter) {
    globals->fails = true;
    EXPECT_TRUE(Ask([](FEHInsert& form) { form.cmdStart.Press(); }));
    EXPECT_THAT(globals->log, ElementsAre("load FEHInsert", "save FEHInsert"));
    globals = nullptr;
    EXPECT_TRUE(Ask([](FEHInsert& form) { form.cmdStart.Press(); }));
}

TEST_F(FEHInsertTest, HelpShowsItsTopicAndLeavesTheFormOpen) {
    Ask([&](FEHInsert& form) {
        form.Command1.Press();
        EXPECT_TRUE(form.Visible());
    });
    EXPECT_EQ(toolkit.helps, (std::vector<ScriptedToolkit::Help>{{u"C:\\Suite\\TARNWK30.HLP", 60}}));
}

// Layout.

void ExpectLayout(const FEHInsert& form, forms::Twips w, forms::Twips h) {
    EXPECT_EQ(form.DBPanel1.Place(), (forms::Rect{30, 90, w - 180, 405}));
    EXPECT_EQ(form.DBPanel2.Place(), (forms::Rect{30, 555, w - 180, h - 2490}));
    EXPECT_EQ(form.DBPanel3.Place(), (forms::Rect{30, h - 1875, w - 180, 930}));
    EXPECT_EQ(form.Frame1.Place(), (forms::Rect{(w - 4035 - 120) / 2, h - 840, 4035, 390}));
    EXPECT_EQ(form.oEHInsert.Place(), (forms::Rect{15, 450, w - 210, h - 2955}));
    EXPECT_EQ(form.StatusBar1.Place(), (forms::Rect{0, h - 345, w, 345}));
}

TEST_F(FEHInsertTest, ItsLayoutFollowsItsSize) {
    FEHInsert form(Host());
    form.EnsureLoaded();
    ExpectLayout(form, form.Width(), form.Height());
    EXPECT_THAT(support::LayoutComplaints(form), IsEmpty());
    for (const forms::Size size : {form.minimum, forms::Size{7920, 5001}, forms::Size{30000, 20000}}) {
        ASSERT_TRUE(form.Move({0, 0, size.width, size.height}));
        ExpectLayout(form, size.width, size.height);
        EXPECT_THAT(support::LayoutComplaints(form), IsEmpty());
    }
}

TEST_F(FEHInsertTest, WhatDoesNotFitATinyFormStaysAsItWas) {
    FEHInsert form(Host());
    form.EnsureLoaded();
    const forms::Rect handlers = form.DBPanel2.Place();
    const forms::Rect editor = form.oEHInsert.Place();
    ASSERT_TRUE(form.Move({0, 0, 9240, 2489}));
    EXPECT_EQ(form.DBPanel2.Place(), handlers);
    EXPECT_EQ(form.oEHInsert.Place(), editor);
    EXPECT_EQ(form.DBPanel3.Top(), handlers.top + handlers.height + 60);

    ASSERT_TRUE(form.Move({0, 0, 9240, 2490 + 465}));
    EXPECT_EQ(form.DBPanel2.Height(), 465);
    EXPECT_EQ(form.oEHInsert.Place(), editor);
    ASSERT_TRUE(form.Move({0, 0, 9240, 2490 + 466}));
    EXPECT_EQ(form.oEHInsert.Height(), 1);

    ASSERT_TRUE(form.Move({0, 0, 9240, 6660}));
    ASSERT_TRUE(form.Move({0, 0, 179, 6660}));
    EXPECT_EQ(form.DBPanel1.Width(), 9060);
    ASSERT_TRUE(form.Move({0, 0, 180 + 30, 6660}));
    EXPECT_EQ(form.DBPanel2.Width(), 30);
    EXPECT_EQ(form.oEHInsert.Width(), 9030);
    ASSERT_TRUE(form.Move({0, 0, 180 + 31, 6660}));
    EXPECT_EQ(form.oEHInsert.Width(), 1);
}

TEST_F(FEHInsertTest, EverySizeIsSurvivedAndMended) {
    FEHInsert form(Host());
    form.EnsureLoaded();
    for (forms::Twips length = 4000; length >= 0; length -= 125) {
        ASSERT_TRUE(form.Move({0, 0, length, 4000 - length}));
        ASSERT_TRUE(form.Move({0, 0, length, length}));
    }
    ASSERT_TRUE(form.Move({0, 0, 9240, 6660}));
    ExpectLayout(form, 9240, 6660);
}

TEST_F(FEHInsertTest, ItIsLaidOutWhereItsPlacementPutsIt) {
    globals->place = forms::Rect{300, 450, 10000, 7000};
    Ask([&](FEHInsert& form) {
        EXPECT_EQ(form.Place(), (forms::Rect{300, 450, 10000, 7000}));
        EXPECT_TRUE(form.placed);
        ExpectLayout(form, 10000, 7000);
    });
}

}  // namespace
}  // namespace lintara::dialogs
