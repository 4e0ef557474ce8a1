#include "forms/text_box.h"

#include "forms/up_down.h"
#include "tests/forms/form_fixture.h"

#include <gtest/gtest.h>

namespace lintara::forms {
namespace {

struct TextBoxTest : testing::Test {
    TextBoxTest() {
        box.Change.Handle([this] { ++changes; });
        arrows.Change.Handle([this] { ++steps; });
    }

    void Use(const std::function<void()>& user) {
        support::ScriptedToolkit toolkit;
        toolkit.user = [&](Form&) { user(); };
        form.ShowModal(toolkit);
    }

    Form form{u"FTest", u"Test", {3000, 2000}};
    TextBox box{form, u"Text1", {}, u"abc"};
    TextBox number{form, u"Text2", {}, u"1"};
    UpDown arrows{form, u"UpDown1", {}, number, {.min = 1, .max = 10000}};
    int changes = 0;
    int steps = 0;
};

TEST_F(TextBoxTest, ANewTextRaisesChangeOnceAndPutsTheCaretInFront) {
    box.Select(1, 1);
    box.SetContents(u"abc");
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(box.SelStart(), 1);
    box.SetContents(u"xyz");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(box.SelStart(), 0);
    EXPECT_EQ(box.SelLength(), 0);
}

TEST_F(TextBoxTest, ASelectionIsCutOffAtTheEndsOfTheText) {
    box.Select(1, 10);
    EXPECT_EQ(box.SelText(), u"bc");
    box.Select(-5, 2);
    EXPECT_EQ(box.SelText(), u"ab");
    box.Select(10, -1);
    EXPECT_EQ(box.SelStart(), 3);
    EXPECT_EQ(box.SelText(), u"");
    EXPECT_EQ(changes, 0);
}

TEST_F(TextBoxTest, ReplacingTheSelectionPutsTheCaretBehindIt) {
    box.Select(1, 1);
    box.SetSelText(u"12");
    EXPECT_EQ(box.Contents(), u"a12c");
    EXPECT_EQ(box.SelStart(), 3);
    EXPECT_EQ(box.SelLength(), 0);
    EXPECT_EQ(changes, 1);
}

TEST_F(TextBoxTest, ReplacingTheSelectionByItselfChangesNothing) {
    box.SelectAll();
    box.SetSelText(u"abc");
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(box.SelStart(), 3);
}

TEST_F(TextBoxTest, TheUserEditsWhatIsEnabled) {
    Use([&] {
        box.Edit(u"ab", 2, 0);
        EXPECT_EQ(changes, 1);
        box.Edit(u"ab", 0, 2);
        EXPECT_EQ(changes, 1);
        EXPECT_EQ(box.SelText(), u"ab");
        box.Type(u"q");
        EXPECT_EQ(box.Contents(), u"q");
        box.SetEnabled(false);
        box.Type(u"r");
        box.Edit(u"r", 0, 0);
        EXPECT_EQ(box.Contents(), u"q");
    });
    EXPECT_EQ(changes, 2);
}

TEST_F(TextBoxTest, ArrowsCountTheNumberInTheirBuddy) {
    int numberChanges = 0;
    number.Change.Handle([&] { ++numberChanges; });
    Use([&] {
        arrows.Step(+1);
        EXPECT_EQ(number.Contents(), u"2");
        number.SetContents(u"41");
        arrows.Step(+1);
        EXPECT_EQ(number.Contents(), u"42");
        arrows.Step(-1);
    });
    EXPECT_EQ(number.Contents(), u"41");
    EXPECT_EQ(numberChanges, 4);
    EXPECT_EQ(steps, 3);
}

struct StepCase {
    const char* name;
    TextView before;
    int by;
    TextView after;
};

struct StepTest : TextBoxTest, testing::WithParamInterface<StepCase> {};

TEST_P(StepTest, StopsAtTheEndsOfTheRange) {
    number.SetContents(GetParam().before);
    Use([&] { arrows.Step(GetParam().by); });
    EXPECT_EQ(number.Contents(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Arrows, StepTest,
    testing::Values(StepCase{"AtTheTop", u"10000", 1, u"10000"},
                    StepCase{"AboveTheTop", u"20000", 1, u"10000"}, StepCase{"AtTheBottom", u"1", -1, u"1"},
                    StepCase{"BelowTheBottom", u"-7", -1, u"1"}, StepCase{"NoNumber", u"x", 1, u"2"},
                    StepCase{"Nothing", u"", 1, u"2"}, StepCase{"LargestNumber", u"2147483647", 1, u"10000"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(TextBoxTest, ArrowsRefuseAValueOutsideTheirRange) {
    EXPECT_FALSE(arrows.SetValue(0));
    EXPECT_FALSE(arrows.SetValue(10001));
    EXPECT_TRUE(arrows.SetValue(7));
    EXPECT_EQ(number.Contents(), u"7");
    EXPECT_EQ(steps, 1);
}

TEST_F(TextBoxTest, ArrowsThatAreDisabledDoNotCount) {
    arrows.SetEnabled(false);
    Use([&] { arrows.Step(+1); });
    EXPECT_EQ(number.Contents(), u"1");
}

}  // namespace
}  // namespace lintara::forms
