#include "dialogs/window_placement.h"

#include "dialogs/placed_form.h"
#include "platform/memory_settings.h"
#include "tests/dialogs/dialog_fixture.h"

namespace lintara::dialogs {
namespace {

using forms::Rect;

constexpr Rect Screen{100, 200, 10000, 8000};
constexpr SettingName Remembered{u"Tarnwick", u"Windows", u"FTest"};

struct WindowPlacementTest : testing::Test {
    WindowPlacementTest() { form.minimum = {1000, 500}; }

    // Where the form of 3000 by 2000 comes to stand with that text in the settings.
    Rect Loaded(TextView stored, const Rect& screen = Screen) {
        EXPECT_TRUE(settings.Save(Remembered, stored));
        EXPECT_TRUE(form.Move({0, 0, 3000, 2000}));
        form.placed = false;
        PlacedForm window(form);
        EXPECT_EQ(WindowPlacement(settings, screen).Load(window), form.placed);
        return form.Place();
    }

    platform::MemorySettings settings;
    forms::Form form{u"FTest", u"Test", {3000, 2000}};
    WindowPlacement placement{settings, Screen};
};

TEST_F(WindowPlacementTest, RemembersLeftTopWidthAndHeight) {
    ASSERT_TRUE(form.Move({-15, 300, 4000, 2500}));
    placement.Save(PlacedForm(form));
    EXPECT_EQ(settings.Get(Remembered, u"(none)"), u"-15,300,4000,2500");
}

TEST_F(WindowPlacementTest, PutsAWindowWhereItWas) {
    EXPECT_EQ(Loaded(u"300,450,4000,2500"), (Rect{300, 450, 4000, 2500}));
    EXPECT_TRUE(form.placed);
}

TEST_F(WindowPlacementTest, AWindowIsNeverOffTheScreen) {
    EXPECT_EQ(Loaded(u"-900,-900,4000,2500"), (Rect{100, 200, 4000, 2500}));
    EXPECT_EQ(Loaded(u"9000,7000,4000,2500"), (Rect{6100, 5700, 4000, 2500}));
    EXPECT_EQ(Loaded(u"2147483647,-2147483648,4000,2500"), (Rect{6100, 200, 4000, 2500}));
}

TEST_F(WindowPlacementTest, AWindowLargerThanTheScreenFillsIt) {
    EXPECT_EQ(Loaded(u"500,500,20000,2147483647"), (Rect{100, 200, 10000, 8000}));
}

TEST_F(WindowPlacementTest, AWindowIsNoSmallerThanItsMinimum) {
    EXPECT_EQ(Loaded(u"10050,8150,10,20"), (Rect{9100, 7700, 1000, 500}));
}

TEST_F(WindowPlacementTest, AWindowThatCannotBeResizedKeepsItsSizeAndStaysOnTheScreen) {
    form.resizable = false;
    EXPECT_EQ(Loaded(u"9000,7000,10,20"), (Rect{7100, 6200, 3000, 2000}));
}

TEST_F(WindowPlacementTest, AScreenSmallerThanTheWindowShowsItsBeginning) {
    EXPECT_EQ(Loaded(u"50,50,4000,2500", {0, 0, 500, 300}), (Rect{0, 0, 1000, 500}));
}

TEST_F(WindowPlacementTest, ADamagedValueIsIgnored) {
    for (const TextView damaged :
         {u"", u",", u"1,2,3", u"1,2,3,4,5", u"1,2,3,", u"1,2,x,4", u"1, 2,3,4", u"1,2,3000,4e3", u"1,2,0,4",
          u"1,2,3,-4", u"1,2,3,99999999999", u"300;450;4000;2500", u"&H1,2,3,4", u"-,2,3,4", u"1,2,3,4,"}) {
        EXPECT_EQ(Loaded(damaged), (Rect{0, 0, 3000, 2000})) << ToUtf8(damaged);
        EXPECT_FALSE(form.placed);
    }
}

TEST_F(WindowPlacementTest, NothingIsRememberedAtFirst) {
    PlacedForm window(form);
    EXPECT_FALSE(placement.Load(window));
    EXPECT_EQ(form.Place(), (Rect{0, 0, 3000, 2000}));
}

struct PlacementWithoutASuiteTest : DialogTest {
    PlacementWithoutASuiteTest() { globals = nullptr; }

    void Ask(std::function<void(forms::Form&)> use) {
        toolkit.user = std::move(use);
        DialogHost host = Host();
        host.placement = std::make_shared<WindowPlacement>(settings, Screen);
        InsertEHParameters parameters;
        (void)DialogsLT(host).GetInsertEHParameters(parameters);
    }
};

TEST_F(PlacementWithoutASuiteTest, AFormComesBackWhereItWas) {
    Ask([](forms::Form& form) {
        EXPECT_FALSE(form.placed);
        form.placed = true;
        EXPECT_TRUE(form.Move({400, 500, 8000, 6000}));
    });
    Ask([](forms::Form& form) {
        EXPECT_TRUE(form.placed);
        EXPECT_EQ(form.Place(), (Rect{400, 500, 8000, 6000}));
    });
    EXPECT_EQ(toolkit.formsShown, 2);
}

TEST_F(PlacementWithoutASuiteTest, AFormWhosePlaceNobodyKnowsIsNotRemembered) {
    Ask([](forms::Form&) {});
    EXPECT_TRUE(settings.saves.empty());
}

TEST_F(PlacementWithoutASuiteTest, AStoreThatFailsDoesNotMatter) {
    settings.allFail = true;
    Ask([](forms::Form& form) { form.placed = true; });
    EXPECT_EQ(toolkit.formsShown, 1);
}

}  // namespace
}  // namespace lintara::dialogs
