#include "forms/control.h"

#include "forms/buttons.h"
#include "forms/drawing.h"
#include "forms/label.h"
#include "forms/property_bag.h"
#include "forms/status_bar.h"
#include "tests/forms/form_fixture.h"

#include <gtest/gtest.h>

namespace lintara::forms {
namespace {

struct ControlTest : testing::Test {
    ControlTest() { form.SetMirror(&mirror); }

    RecordingForm form;
    RecordingMirror mirror;
};

TEST_F(ControlTest, StandsInItsContainerForAsLongAsItLives) {
    Frame frame(form, u"Frame1", {1, 2, 3, 4});
    {
        const Label label(frame, u"Label1", {}, u"One");
        EXPECT_EQ(frame.Controls().size(), 1U);
        EXPECT_EQ(label.Parent(), &frame);
        EXPECT_EQ(label.Name(), u"Label1");
        EXPECT_EQ(frame.Controls().front()->Root(), &form);
    }
    EXPECT_TRUE(frame.Controls().empty());
}

TEST_F(ControlTest, AMoveTellsTheMirrorOnceAndTheSamePlaceTellsNothing) {
    Frame frame(form, u"Frame1", {1, 2, 3, 4});
    EXPECT_TRUE(frame.Move({5, 6, 7, 8}));
    EXPECT_TRUE(frame.Move({5, 6, 7, 8}));
    EXPECT_EQ(mirror.changes, (std::vector{std::pair<Control*, Property>{&frame, Property::Place}}));
    EXPECT_EQ(frame.Place(), (Rect{5, 6, 7, 8}));
}

TEST_F(ControlTest, ANegativeSizeIsRefusedAndLeavesTheWholePlace) {
    Frame frame(form, u"Frame1", {1, 2, 3, 4});
    EXPECT_FALSE(frame.Move({5, 6, -1, 8}));
    EXPECT_FALSE(frame.SetHeight(-15));
    EXPECT_EQ(frame.Place(), (Rect{1, 2, 3, 4}));
    EXPECT_TRUE(frame.SetLeft(-300));
    EXPECT_TRUE(frame.SetWidth(0));
    EXPECT_EQ(frame.Place(), (Rect{-300, 2, 0, 4}));
}

TEST_F(ControlTest, PropertiesTellTheMirrorWhenTheyChangeAndOnlyThen) {
    Label label(form, u"Label1", {}, u"One");
    StatusBar bar(form, u"StatusBar1", {});
    LineControl line(form, u"Line1", {}, Color::ButtonShadow);
    for (int i = 0; i < 2; ++i) {
        label.SetCaption(u"Two");
        label.SetEnabled(false);
        bar.SetSimpleText(u"Ready");
        line.SetEnds({-15, 0, 10, 0});
        line.SetBorderColor(Color::ButtonHighlight);
        line.SetVisible(false);
    }
    const std::vector<std::pair<Control*, Property>> expected = {
        {&label, Property::Caption}, {&label, Property::Enabled}, {&bar, Property::Text},
        {&line, Property::Segment},  {&line, Property::Colors},   {&line, Property::Visible}};
    EXPECT_EQ(mirror.changes, expected);
}

TEST_F(ControlTest, TheBackgroundOfAUserControlIsTransparentOrOpaque) {
    UserControl panel(form, u"DBPanel1", {});
    EXPECT_EQ(panel.BackStyle(), 0);
    EXPECT_EQ(panel.BackColor(), Color::ButtonFace);
    EXPECT_TRUE(panel.SetBackStyle(1));
    EXPECT_FALSE(panel.SetBackStyle(2));
    EXPECT_EQ(panel.BackStyle(), 1);
    panel.SetBackColor(Color::Black);
    EXPECT_EQ(mirror.changes.size(), 2U);
}

TEST(PropertyBagTest, KeepsWhatDiffersFromTheDefault) {
    PropertyBag bag;
    bag.Write(u"BorderType", 1, 1);
    EXPECT_TRUE(bag.IsEmpty());
    bag.Write(u"BorderType", 3, 1);
    EXPECT_EQ(bag.Read(u"BorderType", 1), 3);
    EXPECT_EQ(bag.Read(u"BackStyle", 7), 7);
    bag.Write(u"BorderType", 1, 1);
    EXPECT_TRUE(bag.IsEmpty());
}

}  // namespace
}  // namespace lintara::forms
