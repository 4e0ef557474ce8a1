#include "forms/buttons.h"

#include "tests/forms/form_fixture.h"

#include <array>

#include <gtest/gtest.h>

namespace lintara::forms {
namespace {

struct ButtonsTest : testing::Test {
    ButtonsTest() {
        box.Click.Handle([this] { log.emplace_back("box"); });
        for (std::size_t i = 0; i < options.size(); ++i) {
            options[i].Click.Handle([this, i] { log.push_back("option" + std::to_string(i)); });
        }
    }

    // What the user does while the form is shown.
    void Use(const std::function<void()>& user) {
        support::ScriptedToolkit toolkit;
        toolkit.user = [&](Form&) { user(); };
        form.ShowModal(toolkit);
    }

    Form form{u"FTest", u"Test", {3000, 2000}};
    CheckBox box{form, u"Check1", {}, u"&Check"};
    std::array<OptionButton, 2> options{OptionButton{form, u"Option1(0)", {}, u"&One"},
                                        OptionButton{form, u"Option1(1)", {}, u"&Two"}};
    Frame frame{form, u"Frame1", {}};
    OptionButton elsewhere{frame, u"Option2", {}, u"Th&ree"};
    Log log;
};

TEST_F(ButtonsTest, ACheckBoxRaisesClickOncePerChange) {
    EXPECT_TRUE(box.SetValue(1));
    EXPECT_TRUE(box.SetValue(1));
    EXPECT_TRUE(box.SetValue(2));
    EXPECT_EQ(log, (Log{"box", "box"}));
}

TEST_F(ButtonsTest, ACheckBoxRefusesOtherValues) {
    EXPECT_FALSE(box.SetValue(-1));
    EXPECT_FALSE(box.SetValue(3));
    EXPECT_EQ(box.Value(), 0);
    EXPECT_EQ(log, Log{});
}

TEST_F(ButtonsTest, TheUserTogglesACheckBoxWhileItIsShown) {
    box.Toggle();
    EXPECT_EQ(box.Value(), 0);
    Use([&] {
        box.Toggle();
        EXPECT_EQ(box.Value(), 1);
        box.Toggle();
        EXPECT_EQ(box.Value(), 0);
        box.SetEnabled(false);
        box.Toggle();
        EXPECT_EQ(box.Value(), 0);
    });
    EXPECT_EQ(log, (Log{"box", "box"}));
}

TEST_F(ButtonsTest, OneOptionOfAContainerIsSelected) {
    elsewhere.SetValue(true);
    options[0].SetValue(true);
    options[1].SetValue(true);
    options[1].SetValue(true);
    EXPECT_FALSE(options[0].Value());
    EXPECT_TRUE(options[1].Value());
    EXPECT_TRUE(elsewhere.Value());
    EXPECT_EQ(log, (Log{"option0", "option1"}));
}

TEST_F(ButtonsTest, ClickFindsTheNeighbourDeselectedAlready) {
    options[0].SetValue(true);
    bool wasSelected = true;
    options[1].Click.Handle([&] { wasSelected = options[0].Value(); });
    options[1].SetValue(true);
    EXPECT_FALSE(wasSelected);
}

TEST_F(ButtonsTest, DeselectingAnOptionRaisesNothing) {
    options[0].SetValue(true);
    options[0].SetValue(false);
    EXPECT_EQ(log, Log{"option0"});
}

TEST_F(ButtonsTest, TheUserSelectsOnlyWhatIsEnabled) {
    options[1].SetEnabled(false);
    Use([&] {
        options[0].Select();
        options[1].Select();
    });
    EXPECT_TRUE(options[0].Value());
    EXPECT_EQ(log, Log{"option0"});
}

}  // namespace
}  // namespace lintara::forms
