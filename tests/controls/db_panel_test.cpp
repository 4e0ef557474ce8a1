#include "controls/db_panel.h"

#include "forms/form.h"

#include <gtest/gtest.h>

namespace lintara::controls {
namespace {

using forms::Color;
using forms::Segment;

struct DBPanelTest : testing::Test {
    // The colours of a ring's top left and bottom right, or nothing where it is hidden.
    std::string Frame() const {
        std::string drawn;
        for (const forms::LineControl* line :
             {&panel.lnTop, &panel.lnLeft, &panel.lnBottom, &panel.lnRight, &panel.lnTopE, &panel.lnLeftE,
              &panel.lnBottomE, &panel.lnRightE}) {
            const bool isShadow = line->BorderColor() == Color::ButtonShadow;
            drawn += !line->Visible() ? '-' : isShadow ? 's' : 'h';
        }
        return drawn;
    }

    forms::Form form{u"FTest", u"Test", {3000, 2000}};
    DBPanel panel{form, u"DBPanel1", {0, 0, 300, 150}};
};

TEST_F(DBPanelTest, ANewPanelIsSunken) {
    EXPECT_EQ(panel.BorderType(), 1);
    EXPECT_EQ(Frame(), "sshh----");
    EXPECT_EQ(panel.BackColor(), Color::ButtonFace);
    EXPECT_EQ(panel.BackStyle(), 0);
    EXPECT_EQ(panel.hWnd(), 0U);
    EXPECT_TRUE(panel.ChangedProperties().empty());
}

TEST_F(DBPanelTest, EachBorderTypeHasItsFrame) {
    const std::pair<std::int16_t, const char*> cases[] = {
        {1, "sshh----"}, {2, "hhss----"}, {3, "sshhhhss"}, {4, "ssss----"}, {0, "--------"}};
    for (const auto& [type, frame] : cases) {
        panel.SetBorderType(type);
        EXPECT_EQ(Frame(), frame) << type;
        EXPECT_EQ(panel.BorderType(), type);
    }
}

TEST_F(DBPanelTest, ARaisedPanelOf300By150) {
    panel.SetBorderType(2);
    EXPECT_EQ(panel.lnTop.Ends(), (Segment{0, 0, 300, 0}));
    EXPECT_EQ(panel.lnTop.BorderColor(), Color::ButtonHighlight);
    EXPECT_EQ(panel.lnBottom.Ends(), (Segment{0, 135, 300, 135}));
    EXPECT_EQ(panel.lnBottom.BorderColor(), Color::ButtonShadow);
    EXPECT_FALSE(panel.lnTopE.Visible());
    EXPECT_FALSE(panel.lnBottomE.Visible());
    EXPECT_FALSE(panel.lnLeftE.Visible());
    EXPECT_FALSE(panel.lnRightE.Visible());
}

TEST_F(DBPanelTest, FromTheGrooveToNoFrame) {
    panel.SetBorderType(3);
    panel.SetBorderType(1);
    EXPECT_EQ(Frame(), "sshh----");
    panel.SetBorderType(2);
    panel.SetBorderType(0);
    EXPECT_EQ(Frame(), "--------");
    EXPECT_EQ(panel.lnTop.BorderColor(), Color::ButtonHighlight);
    EXPECT_EQ(panel.lnRight.BorderColor(), Color::ButtonShadow);
}

TEST_F(DBPanelTest, AnUnknownBorderTypeLeavesTheFrame) {
    panel.SetBorderType(3);
    panel.SetBorderType(7);
    EXPECT_EQ(Frame(), "sshhhhss");
    EXPECT_EQ(panel.BorderType(), 7);
    panel.SetBorderType(-1);
    EXPECT_EQ(Frame(), "sshhhhss");
}

TEST_F(DBPanelTest, AllLinesFollowTheSize) {
    ASSERT_TRUE(panel.Move({10, 20, 600, 450}));
    EXPECT_EQ(panel.lnTop.Ends(), (Segment{0, 0, 600, 0}));
    EXPECT_EQ(panel.lnTopE.Ends(), (Segment{15, 15, 570, 15}));
    EXPECT_EQ(panel.lnBottom.Ends(), (Segment{0, 435, 600, 435}));
    EXPECT_EQ(panel.lnBottomE.Ends(), (Segment{15, 420, 585, 420}));
    EXPECT_EQ(panel.lnLeft.Ends(), (Segment{0, 0, 0, 450}));
    EXPECT_EQ(panel.lnLeftE.Ends(), (Segment{15, 15, 15, 420}));
    EXPECT_EQ(panel.lnRight.Ends(), (Segment{585, 0, 585, 450}));
    EXPECT_EQ(panel.lnRightE.Ends(), (Segment{570, 15, 570, 420}));
}

TEST_F(DBPanelTest, APanelSmallerThanItsFrameHasNegativeCoordinates) {
    ASSERT_TRUE(panel.Move({0, 0, 10, 0}));
    EXPECT_EQ(panel.lnTopE.Ends(), (Segment{15, 15, -20, 15}));
    EXPECT_EQ(panel.lnRightE.Ends(), (Segment{-20, 15, -20, -30}));
}

TEST_F(DBPanelTest, EveryNewSizeRaisesResizeOnceWhenTheLinesAreInPlace) {
    std::vector<forms::Twips> ends;
    panel.Resize.Handle([&] { ends.push_back(panel.lnRightE.Ends().y2); });
    ASSERT_TRUE(panel.Move({0, 0, 300, 300}));
    ASSERT_TRUE(panel.Move({50, 0, 300, 300}));
    ASSERT_TRUE(panel.Move({50, 0, 300, 330}));
    EXPECT_EQ(ends, (std::vector<forms::Twips>{270, 300}));
}

TEST_F(DBPanelTest, KeepsItsPropertiesFromOneUseToTheNext) {
    forms::PropertyBag kept;
    panel.UserControl_WriteProperties(kept);
    EXPECT_TRUE(kept.IsEmpty());
    panel.SetBorderType(2);
    panel.SetBackColor(Color::WindowBackground);
    panel.SetBackStyle(1);
    EXPECT_EQ(panel.ChangedProperties(), (std::set<Text>{u"BorderType", u"BackColor", u"BackStyle"}));
    panel.UserControl_WriteProperties(kept);

    DBPanel other{form, u"DBPanel2", {}};
    other.UserControl_ReadProperties(kept);
    EXPECT_EQ(other.BorderType(), 2);
    EXPECT_EQ(other.BackColor(), Color::WindowBackground);
    EXPECT_EQ(other.BackStyle(), 1);
    EXPECT_EQ(other.lnTop.BorderColor(), Color::ButtonHighlight);

    other.UserControl_ReadProperties({});
    EXPECT_EQ(other.BorderType(), 1);
    EXPECT_EQ(other.BackColor(), Color::ButtonFace);
    EXPECT_EQ(other.BackStyle(), 0);
}

TEST_F(DBPanelTest, InitPropertiesMakesItSunken) {
    panel.SetBorderType(0);
    panel.UserControl_InitProperties();
    EXPECT_EQ(panel.BorderType(), 1);
    EXPECT_EQ(Frame(), "sshh----");
}

}  // namespace
}  // namespace lintara::controls
