#include "forms/keyboard.h"

#include "forms/buttons.h"
#include "forms/caption.h"
#include "forms/label.h"
#include "forms/text_box.h"
#include "forms/tree_view.h"
#include "tests/forms/form_fixture.h"

#include <gtest/gtest.h>

namespace lintara::forms {
namespace {

TEST(CaptionTest, MarksTheAccessKey) {
    EXPECT_EQ(ReadCaption(u"Current proced&ure").shown, u"Current procedure");
    EXPECT_EQ(ReadCaption(u"Current proced&ure").accessKey, 14U);
    EXPECT_EQ(ReadCaption(u"&Begin").accessKey, 0U);
    EXPECT_EQ(ReadCaption(u"a && b").shown, u"a & b");
    EXPECT_FALSE(ReadCaption(u"a && b").accessKey);
    EXPECT_EQ(ReadCaption(u"a &b &c").shown, u"a b c");
    EXPECT_EQ(ReadCaption(u"a &b &c").accessKey, 2U);
    EXPECT_EQ(ReadCaption(u"end&").shown, u"end&");
    EXPECT_EQ(ReadCaption(u"").shown, u"");
}

TEST(CaptionTest, AccessKeysHaveNoLetterCase) {
    EXPECT_TRUE(HasAccessKey(u"&Begin", u'b'));
    EXPECT_TRUE(HasAccessKey(u"I&nsertion", u'N'));
    EXPECT_FALSE(HasAccessKey(u"Begin", u'b'));
}

struct KeyboardTest : testing::Test {
    KeyboardTest() {
        ok.isDefault = true;
        cancel.isCancel = true;
        ok.Click.Handle([this] { log.emplace_back("ok"); });
        cancel.Click.Handle([this] { log.emplace_back("cancel"); });
    }

    void Use(const std::function<void()>& user) {
        support::ScriptedToolkit toolkit;
        toolkit.user = [&](Form&) { user(); };
        form.ShowModal(toolkit);
    }

    Form form{u"FTest", u"Test", {3000, 2000}};
    Label label{form, u"Label1", {}, u"&Name:"};
    TextBox name{form, u"Text1", {}, u""};
    OptionButton one{form, u"Option1", {}, u"&One"};
    OptionButton two{form, u"Option2", {}, u"&Two"};
    CheckBox check{form, u"Check1", {}, u"C&heck"};
    TextBox code{form, u"Text2", {}, u"", TextBox::Lines::Many};
    TreeView tree{form, u"Tree1", {}};
    CommandButton ok{form, u"Command1", {}, u"O&K"};
    CommandButton cancel{form, u"Command2", {}, u"&Cancel"};
    CommandButton help{form, u"Command3", {}, u"&Help"};
    Log log;
};

TEST_F(KeyboardTest, AnAccessKeyActsOnItsControl) {
    Use([&] {
        EXPECT_TRUE(PressAccessKey(form, u't'));
        EXPECT_TRUE(two.Value());
        EXPECT_EQ(form.ActiveControl(), &two);
        EXPECT_TRUE(PressAccessKey(form, u'k'));
        EXPECT_EQ(log, Log{"ok"});
        EXPECT_FALSE(PressAccessKey(form, u'z'));
    });
    EXPECT_EQ(log, Log{"ok"});
}

TEST_F(KeyboardTest, TheAccessKeyOfALabelGivesTheFocusToTheControlBehindIt) {
    Use([&] {
        ok.SetFocus();
        EXPECT_TRUE(PressAccessKey(form, u'N'));
        EXPECT_EQ(form.ActiveControl(), &name);
        ok.SetFocus();
        name.SetEnabled(false);
        EXPECT_FALSE(PressAccessKey(form, u'n'));
        EXPECT_EQ(form.ActiveControl(), &ok);
    });
}

TEST_F(KeyboardTest, AnAccessKeyOfSeveralControlsGoesFromOneToTheNext) {
    Use([&] {
        PressAccessKey(form, u'h');
        EXPECT_EQ(form.ActiveControl(), &check);
        PressAccessKey(form, u'h');
        EXPECT_EQ(form.ActiveControl(), &help);
        PressAccessKey(form, u'h');
        EXPECT_EQ(form.ActiveControl(), &check);
        EXPECT_EQ(check.Value(), 0);
        help.SetEnabled(false);
        PressAccessKey(form, u'h');
        EXPECT_EQ(check.Value(), 1);
    });
}

TEST_F(KeyboardTest, TabGoesRoundAndStopsOnceAtAGroupOfOptions) {
    two.SetValue(true);
    help.SetEnabled(false);
    Use([&] {
        const std::vector<Control*> expected = {&two, &check, &code, &tree, &ok, &cancel, &name};
        for (Control* control : expected) {
            PressTab(form);
            EXPECT_EQ(form.ActiveControl(), control);
        }
        PressTab(form, true);
        EXPECT_EQ(form.ActiveControl(), &cancel);
    });
}

TEST_F(KeyboardTest, EnterPressesTheButtonWithTheFocusElseTheDefaultOne) {
    Use([&] {
        EXPECT_TRUE(PressEnter(form));
        cancel.SetFocus();
        EXPECT_TRUE(PressEnter(form));
        code.SetFocus();
        EXPECT_FALSE(PressEnter(form));
        tree.SetFocus();
        EXPECT_FALSE(PressEnter(form));
    });
    EXPECT_EQ(log, (Log{"ok", "cancel"}));
}

TEST_F(KeyboardTest, ADefaultButtonThatIsDisabledIsNotPressed) {
    ok.SetEnabled(false);
    Use([&] { PressEnter(form); });
    EXPECT_EQ(log, Log{});
}

TEST_F(KeyboardTest, EscPressesTheCancelButtonFromEverywhere) {
    Use([&] {
        code.SetFocus();
        EXPECT_TRUE(PressEscape(form));
        cancel.isCancel = false;
        EXPECT_FALSE(PressEscape(form));
    });
    EXPECT_EQ(log, Log{"cancel"});
}

TEST_F(KeyboardTest, AFormBeginsAtTheSelectedOption) {
    name.SetEnabled(false);
    two.SetValue(true);
    Use([&] { EXPECT_TRUE(two.HasFocus()); });
}

TEST_F(KeyboardTest, ALabelInFrontOfOptionsLeadsToTheSelectedOne) {
    name.SetVisible(false);
    Frame frame(form, u"Frame1", {});
    Label heading(frame, u"Label2", {}, u"&Where:");
    OptionButton first(frame, u"Option3", {}, u"First");
    OptionButton second(frame, u"Option4", {}, u"Second");
    Use([&] {
        second.SetValue(true);
        PressAccessKey(form, u'w');
        EXPECT_TRUE(second.HasFocus());
        EXPECT_TRUE(second.Value());
        second.SetEnabled(false);
        PressAccessKey(form, u'w');
        EXPECT_TRUE(first.HasFocus());
    });
}

}  // namespace
}  // namespace lintara::forms
