#include "history/fhistory.h"

#include "history/show_history.h"
#include "tests/support/faulty_host.h"
#include "tests/support/form_inspection.h"
#include "tests/support/history_host.h"
#include "tests/support/scripted_toolkit.h"

#include <algorithm>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::history {
namespace {

using forms::Color;
using forms::MousePointer;
using forms::TreeNode;
using forms::Twips;
using testing::ElementsAre;
using testing::IsEmpty;

// The tree as indented lines: captions, behind them "*" when they are bold in the highlight colour.
void Draw(const std::vector<TreeNode*>& nodes, std::string indent, std::vector<std::string>& lines) {
    for (const TreeNode* node : nodes) {
        const bool standsOut = node->Bold() && node->ForeColor() == Color::Highlight;
        const bool isPlain = !node->Bold() && node->ForeColor() == Color::WindowText;
        lines.push_back(indent + ToUtf8(node->Caption()) + (standsOut ? "*" : isPlain ? "" : "?"));
        Draw(node->Children(), indent + "  ", lines);
    }
}

std::vector<std::string> Drawn(const FHistory& window) {
    std::vector<std::string> lines;
    Draw(window.tvwHistory.Roots(), "", lines);
    return lines;
}

struct FHistoryTest : testing::Test {
    FHistoryTest() { host.services->log.clear(); }

    // Shows the window to the user. One that the user leaves open is closed by its close box.
    void Show(std::function<void(FHistory&)> use) {
        toolkit.user = [use = std::move(use)](forms::Form& form) { use(dynamic_cast<FHistory&>(form)); };
        ShowHistoryWindow(*host.services, toolkit);
    }
    void FillAllSlots() {
        for (std::size_t i = 0; i < 10; ++i) {
            host.services->back.at(i) = u"Module1.B" + CStr(static_cast<std::int32_t>(i)) + u"|x";
            host.services->next.at(i) = u"Module1.N" + CStr(static_cast<std::int32_t>(i)) + u"|x";
        }
    }

    support::HistoryHost host;
    support::ScriptedToolkit toolkit;
};

TEST_F(FHistoryTest, HasItsControls) {
    FHistory window(*host.services, toolkit);
    EXPECT_EQ(window.FormCaption(), u"Navigation history");
    EXPECT_THAT(support::DescribeControls(window),
                ElementsAre("UserControl DBPanel1", "TreeView tvwHistory in DBPanel1", "UserControl DBPanel2",
                            "Label Label1 in DBPanel2 \"Double-click a place, or press Enter, to go there.\"",
                            "CommandButton cmdClose in DBPanel2 \"&Close\""));
    EXPECT_TRUE(window.cmdClose.isCancel);
}

TEST_F(FHistoryTest, ShowsEntriesUnderTheirGroupAndComponent) {
    host.services->back[0] = u"Form1.cmdOk_Click|  x = 1";
    host.services->back[1] = u"Module1|Option Explicit";
    host.services->back[3] = u"Form1.cmdOk_Click|  x = 1";
    host.services->next[2] = u"Form1.Form_Load|Show";
    Show([](FHistory& window) {
        EXPECT_THAT(
            Drawn(window),
            ElementsAre("Back", "  Form1", "    cmdOk_Click: x = 1*", "    cmdOk_Click: x = 1*", "  Module1",
                        "    (Declarations): Option Explicit*", "Next", "  Form1", "    Form_Load: Show"));
        for (const auto& node : window.tvwHistory.Nodes()) {
            EXPECT_TRUE(node->Expanded() || node->Children().empty());
        }
    });
    EXPECT_EQ(toolkit.formsShown, 1);
}

TEST_F(FHistoryTest, FiveEntriesBackAndTwoNextStandOut) {
    FillAllSlots();
    Show([](FHistory& window) {
        EXPECT_THAT(
            Drawn(window),
            ElementsAre("Back", "  Module1", "    B0: x*", "    B1: x*", "    B2: x*", "    B3: x*",
                        "    B4: x*", "    B5: x", "    B6: x", "    B7: x", "    B8: x", "    B9: x", "Next",
                        "  Module1", "    N0: x*", "    N1: x*", "    N2: x", "    N3: x", "    N4: x",
                        "    N5: x", "    N6: x", "    N7: x", "    N8: x", "    N9: x"));
    });
}

TEST_F(FHistoryTest, OnlyEntriesHaveKeysAndTheirTagsAreTheEntries) {
    FillAllSlots();
    host.services->back[7] = host.services->next[7] = host.services->back[1];
    Show([&](FHistory& window) {
        std::set<Text> keys;
        for (const auto& node : window.tvwHistory.Nodes()) {
            const bool isEntry = node->Children().empty();
            EXPECT_EQ(node->Key().find(u'|') != Text::npos, isEntry);
            if (isEntry) {
                EXPECT_TRUE(keys.insert(node->Key()).second);
            }
        }
        EXPECT_EQ(keys.size(), 20U);
        EXPECT_EQ(window.tvwHistory.Find(u"Back|7")->tag, host.services->back[1]);
        EXPECT_EQ(window.tvwHistory.Find(u"Next|9")->tag, u"Module1.N9|x");
    });
}

TEST_F(FHistoryTest, AProjectWithoutHistoryGivesAnEmptyTree) {
    const auto expectEmpty = [](FHistory& window) {
        EXPECT_THAT(window.tvwHistory.Nodes(), IsEmpty());
        EXPECT_EQ(window.Label1.Caption(), u"No places of this project are remembered yet.");
        window.tvwHistory.DoubleClick();
        window.tvwHistory.Type(u'\r');
        EXPECT_TRUE(window.Visible());
    };
    Show(expectEmpty);
    host.services->hasHistory = false;
    Show(expectEmpty);
    host.fixture.workspace().Clear();
    Show(expectEmpty);
    EXPECT_EQ(toolkit.formsShown, 3);
    EXPECT_EQ(host.services->selKey, u"earlier");
}

TEST_F(FHistoryTest, AsksForEachEntryOnceUnderItsNames) {
    Show([](FHistory&) {});
    std::vector<std::string> expected = {"load FHistory"};
    for (int i = 0; i < 10; ++i) {
        expected.push_back("HistBackItem " + std::to_string(i));
        expected.push_back("HistNextItem " + std::to_string(i));
    }
    expected.emplace_back("save FHistory");
    EXPECT_EQ(host.services->log, expected);
}

TEST_F(FHistoryTest, SelectsTheCurrentEntryAndScrollsToIt) {
    FillAllSlots();
    host.services->currentKey = u"Next|3";
    Show([](FHistory& window) {
        TreeNode* current = window.tvwHistory.Find(u"Next|3");
        ASSERT_NE(current, nullptr);
        EXPECT_EQ(window.tvwHistory.SelectedItem(), current);
        EXPECT_EQ(window.tvwHistory.InView(), current);
        EXPECT_TRUE(window.tvwHistory.HasFocus());
    });
}

TEST_F(FHistoryTest, ACurrentKeyThatNoEntryHasSelectsNothing) {
    FillAllSlots();
    for (const TextView key : {u"", u"Back", u"Back|11"}) {
        host.services->currentKey = key;
        Show([](FHistory& window) { EXPECT_EQ(window.tvwHistory.SelectedItem(), nullptr); });
    }
    EXPECT_EQ(toolkit.formsShown, 3);
}

TEST_F(FHistoryTest, ShowsTheHourglassWhileItLoads) {
    Show([&](FHistory&) {
        EXPECT_THAT(toolkit.pointers, ElementsAre(MousePointer::Hourglass, MousePointer::Default));
    });
    EXPECT_EQ(toolkit.pointers.size(), 2U);
}

// Choosing.

TEST_F(FHistoryTest, ADoubleClickChoosesTheSelectedEntry) {
    FillAllSlots();
    Show([](FHistory& window) {
        window.tvwHistory.Pick(*window.tvwHistory.Find(u"Back|5"));
        window.tvwHistory.DoubleClick();
        EXPECT_FALSE(window.Visible());
    });
    EXPECT_EQ(host.services->selKey, u"Back|5");
    EXPECT_EQ(host.services->selObject, u"Module1.B5|x");
    EXPECT_EQ(host.services->log.back(), "save FHistory");
    EXPECT_EQ(std::ranges::count(host.services->log, "save FHistory"), 1);
}

TEST_F(FHistoryTest, EnterChoosesTheSelectedEntry) {
    FillAllSlots();
    Show([](FHistory& window) {
        window.tvwHistory.Pick(*window.tvwHistory.Find(u"Next|0"));
        window.tvwHistory.Type(u'x');
        EXPECT_TRUE(window.Visible());
        window.tvwHistory.Type(u'\r');
        EXPECT_FALSE(window.Visible());
    });
    EXPECT_EQ(host.services->selKey, u"Next|0");
}

TEST_F(FHistoryTest, GroupsAndComponentsCannotBeChosen) {
    FillAllSlots();
    for (const TextView separator : {u"|", u"", u"a", u"."}) {
        host.services->separator = separator;
        Show([](FHistory& window) {
            TreeNode* group = window.tvwHistory.Roots().front();
            window.tvwHistory.DoubleClick();
            for (TreeNode* node : {group, group->Children().front()}) {
                window.tvwHistory.Pick(*node);
                window.tvwHistory.DoubleClick();
                window.tvwHistory.Type(u'\r');
            }
            EXPECT_TRUE(window.Visible());
        });
    }
    EXPECT_EQ(toolkit.formsShown, 4);
    EXPECT_EQ(host.services->selKey, u"earlier");
}

TEST_F(FHistoryTest, TheCloseButtonAndTheCloseBoxChooseNothing) {
    FillAllSlots();
    const auto pick = [](FHistory& window) { window.tvwHistory.Pick(*window.tvwHistory.Find(u"Back|5")); };
    Show(pick);
    Show([&](FHistory& window) {
        pick(window);
        window.cmdClose.Press();
        EXPECT_FALSE(window.Visible());
    });
    EXPECT_EQ(host.services->selKey, u"earlier");
    EXPECT_EQ(std::ranges::count(host.services->log, "save FHistory"), 2);
}

// What fails.

TEST_F(FHistoryTest, EveryStepThatFailsIsLeftOut) {
    for (const support::Fault fault : {support::Fault::Fails, support::Fault::Empty}) {
        std::size_t runs = 0;
        support::WithEveryCallFaulty(
            fault,
            [&] {
                auto subject = std::make_unique<support::HistoryHost>();
                subject->services->back[0] = u"Module1.A|x";
                subject->services->next[9] = u"Module1.B|y";
                return subject;
            },
            [&](const auto& globals) {
                toolkit.user = [](forms::Form& form) {
                    auto& window = dynamic_cast<FHistory&>(form);
                    for (const TextView key : {u"Back|0", u"Back0", u"Next|9"}) {
                        if (TreeNode* node = window.tvwHistory.Find(key); node && window.Visible()) {
                            window.tvwHistory.Pick(*node);
                            window.tvwHistory.DoubleClick();
                        }
                    }
                };
                ShowHistoryWindow(*globals, toolkit);
            },
            [&](const support::HistoryHost& subject, const support::FaultPlan& plan, std::string_view call) {
                ++runs;
                EXPECT_EQ(plan.liveHandles, 1U) << call;
                EXPECT_EQ(plan.CountOf("Globals.SaveWindowState"), 1U) << call;
                if (call == "no fault") {
                    EXPECT_EQ(subject.services->selKey, u"Back|0");
                    EXPECT_EQ(subject.services->selObject, u"Module1.A|x");
                }
                if (call == "Globals.LoadWindowState" || call == "Globals.HistCurrentKey") {
                    EXPECT_EQ(subject.services->selKey, u"Back|0");
                }
            });
        EXPECT_GT(runs, 25U);
    }
    EXPECT_EQ(toolkit.pointers.back(), MousePointer::Default);
}

// Layout.

void ExpectLayout(const FHistory& window, Twips w, Twips h) {
    EXPECT_EQ(window.DBPanel1.Place(), (forms::Rect{90, 90, w - 180, h - 840}));
    EXPECT_EQ(window.tvwHistory.Place(), (forms::Rect{15, 15, w - 210, h - 870}));
    EXPECT_EQ(window.DBPanel2.Place(), (forms::Rect{90, h - 660, w - 180, 570}));
    EXPECT_EQ(window.cmdClose.Left(), w - 180 - 1275 - 90);
}

TEST_F(FHistoryTest, TheTreeFillsTheFirstPanel) {
    FHistory window(*host.services, toolkit);
    window.EnsureLoaded();
    ExpectLayout(window, window.Width(), window.Height());
    EXPECT_THAT(support::LayoutComplaints(window), IsEmpty());
    for (const forms::Size size : {window.minimum, forms::Size{7001, 5003}, forms::Size{30000, 20000}}) {
        ASSERT_TRUE(window.Move({0, 0, size.width, size.height}));
        ExpectLayout(window, size.width, size.height);
        EXPECT_THAT(support::LayoutComplaints(window), IsEmpty());
    }
}

TEST_F(FHistoryTest, EverySizeIsSurvivedAndMended) {
    FHistory window(*host.services, toolkit);
    window.EnsureLoaded();
    for (Twips length = 3000; length >= 0; length -= 60) {
        ASSERT_TRUE(window.Move({0, 0, length, 3000 - length}));
        ASSERT_TRUE(window.Move({0, 0, length, length}));
    }
    ASSERT_TRUE(window.Move({0, 0, 6600, 6000}));
    ExpectLayout(window, 6600, 6000);
}

}  // namespace
}  // namespace lintara::history
