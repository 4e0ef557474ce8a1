#include "forms/form.h"

#include "forms/buttons.h"
#include "forms/status_bar.h"
#include "forms/text_box.h"
#include "tests/forms/form_fixture.h"

#include <gtest/gtest.h>

namespace lintara::forms {
namespace {

struct FormTest : testing::Test {
    RecordingForm form;
    support::ScriptedToolkit toolkit;
};

TEST_F(FormTest, IsLoadedWhenItIsFirstTouchedAndOnlyThen) {
    form.EnsureLoaded();
    form.EnsureLoaded();
    EXPECT_EQ(form.log, Log{"Load"});
}

TEST_F(FormTest, IsLoadedResizedAndShownInThisOrder) {
    toolkit.user = [&](Form&) {
        form.log.emplace_back("shown");
        form.Hide();
    };
    form.ShowModal(toolkit);
    EXPECT_EQ(form.log, (Log{"Load", "Resize", "shown"}));
    EXPECT_FALSE(form.Visible());
}

TEST_F(FormTest, AFormThatIsHiddenCanBeShownAgainWithoutLoading) {
    toolkit.user = [](Form& shown) { shown.Hide(); };
    form.ShowModal(toolkit);
    form.ShowModal(toolkit);
    EXPECT_EQ(form.log, (Log{"Load", "Resize"}));
    EXPECT_EQ(toolkit.formsShown, 2);
}

TEST_F(FormTest, TheCloseBoxUnloadsItOnce) {
    form.ShowModal(toolkit);
    form.Unload();
    EXPECT_EQ(form.log, (Log{"Load", "Resize", "Unload"}));
    EXPECT_TRUE(form.IsUnloaded());
}

TEST_F(FormTest, UnloadingAFormThatWasNeverTouchedRaisesNothing) {
    form.Unload();
    EXPECT_EQ(form.log, Log{});
    form.ShowModal(toolkit);
    EXPECT_EQ(toolkit.formsShown, 0);
}

TEST_F(FormTest, AFormThatUnloadsItselfWhileLoadingIsNotShown) {
    form.Load.Handle([&] { form.Unload(); });
    form.ShowModal(toolkit);
    EXPECT_EQ(toolkit.formsShown, 0);
    EXPECT_EQ(form.log, Log{"Unload"});
}

TEST_F(FormTest, RaisesResizeOnceForEachNewSizeOnceItIsLoaded) {
    ASSERT_TRUE(form.Move({0, 0, 100, 100}));
    EXPECT_EQ(form.log, Log{});
    form.EnsureLoaded();
    ASSERT_TRUE(form.Move({10, 10, 200, 100}));
    ASSERT_TRUE(form.Move({20, 20, 200, 100}));
    EXPECT_EQ(form.log, (Log{"Load", "Resize"}));
}

TEST_F(FormTest, KeepsItsStatusBarAtItsLowerEdge) {
    StatusBar bar(form, u"StatusBar1", {0, 1700, 3000, 300});
    std::vector<Rect> places;
    form.Resize.Handle([&] { places.push_back(bar.Place()); });
    ASSERT_TRUE(form.Move({50, 50, 2000, 1500}));
    EXPECT_EQ(bar.Place(), (Rect{0, 1200, 2000, 300}));
    form.EnsureLoaded();
    ASSERT_TRUE(form.Move({0, 0, 4000, 2500}));
    ASSERT_TRUE(form.Move({0, 0, 100, 200}));
    EXPECT_EQ(places, (std::vector<Rect>{{0, 2200, 4000, 300}, {0, -100, 100, 300}}));
}

TEST_F(FormTest, GivesTheFocusToTheFirstControlThatTakesItWhenShown) {
    Frame frame(form, u"Frame1", {0, 0, 100, 100});
    TextBox disabled(frame, u"Text1", {}, u"");
    disabled.SetEnabled(false);
    TextBox first(frame, u"Text2", {}, u"abc");
    TextBox second(form, u"Text3", {}, u"");
    first.GotFocus.Handle([&] { form.log.emplace_back("focus"); });
    toolkit.user = [&](Form&) { EXPECT_EQ(form.ActiveControl(), &first); };
    form.ShowModal(toolkit);
    EXPECT_EQ(form.log, (Log{"Load", "Resize", "focus", "Unload"}));
    EXPECT_EQ(form.ActiveControl(), nullptr);
}

TEST_F(FormTest, TheFocusMovesOnWhenItsControlIsDisabledOrHidden) {
    TextBox first(form, u"Text1", {}, u"");
    TextBox second(form, u"Text2", {}, u"");
    toolkit.user = [&](Form&) {
        first.SetEnabled(false);
        EXPECT_EQ(form.ActiveControl(), &second);
        first.SetEnabled(true);
        EXPECT_EQ(form.ActiveControl(), &second);
        second.SetVisible(false);
        EXPECT_EQ(form.ActiveControl(), &first);
        first.SetEnabled(false);
        EXPECT_EQ(form.ActiveControl(), nullptr);
    };
    form.ShowModal(toolkit);
    EXPECT_EQ(toolkit.formsShown, 1);
}

TEST_F(FormTest, ControlsInADisabledContainerAreNotUsable) {
    Frame frame(form, u"Frame1", {0, 0, 100, 100});
    CommandButton button(frame, u"Command1", {}, u"Go");
    int clicks = 0;
    button.Click.Handle([&] { ++clicks; });
    toolkit.user = [&](Form&) {
        button.Press();
        frame.SetEnabled(false);
        EXPECT_TRUE(button.Enabled());
        EXPECT_FALSE(button.Usable());
        button.Press();
    };
    form.ShowModal(toolkit);
    EXPECT_EQ(clicks, 1);
}

TEST_F(FormTest, ListsItsControlsInTabOrder) {
    Frame frame(form, u"Frame1", {});
    TextBox last(form, u"Text2", {}, u"");
    TextBox inner(frame, u"Text1", {}, u"");
    EXPECT_EQ(form.ControlsInOrder(), (std::vector<Control*>{&frame, &inner, &last}));
}

}  // namespace
}  // namespace lintara::forms
