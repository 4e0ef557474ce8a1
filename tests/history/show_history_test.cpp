// `Lintara::ShowHistory` with the real window: what the host is asked, and in which order.

#include "history/show_history.h"

#include "assistant/lintara.h"
#include "base/statement.h"
#include "history/fhistory.h"
#include "tests/support/faulty_host.h"
#include "tests/support/history_host.h"
#include "tests/support/scripted_toolkit.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::history {
namespace {

using support::Fault;
using support::FaultPlan;
using support::HistoryHost;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

struct ShowHistoryTest : testing::Test {
    ShowHistoryTest() {
        host.services->back[0] = u"Module1.A|x = 1";
        host.services->next[1] = u"Module1.B|y = 2";
    }

    // The user chooses the entry of that key, or closes the window when it is empty.
    void Show(TextView key) {
        toolkit.user = [this, key](forms::Form& form) {
            host.services->log.emplace_back("shown");
            auto& window = dynamic_cast<FHistory&>(form);
            if (key.empty()) {
                window.cmdClose.Press();
            } else {
                window.tvwHistory.Pick(*window.tvwHistory.Find(key));
                window.tvwHistory.DoubleClick();
            }
        };
        Lintara assistant(platform);
        assistant.oG = host.services;
        assistant.ShowHistory();
    }
    // What was asked of the host, without the entries of the lists.
    std::vector<std::string> Calls() const {
        std::vector<std::string> calls = host.services->log;
        std::erase_if(calls, [](const std::string& call) {
            return call.starts_with("Hist") && call.contains("Item ");
        });
        return calls;
    }

    HistoryHost host;
    support::ScriptedToolkit toolkit;
    Platform platform{
        .showHistoryWindow = [this](hostmodel::Globals& globals) { ShowHistoryWindow(globals, toolkit); }};
};

TEST_F(ShowHistoryTest, StopsTheTimerCleansUpShowsAndOpensTheChoice) {
    Show(u"Next|1");
    EXPECT_THAT(Calls(), ElementsAre("tmrMain.Enabled=False", "CleanupBackHistory", "CleanupNextHistory",
                                     "HistSelKey=''", "load FHistory", "shown", "HistSelKey='Next|1'",
                                     "HistSelObject='Module1.B|y = 2'", "save FHistory",
                                     "OpenHistObject 'Module1.B|y = 2' 'Next|1'", "tmrMain.Enabled=True"));
}

TEST_F(ShowHistoryTest, WithoutAChoiceNothingIsOpened) {
    Show(u"");
    EXPECT_THAT(Calls(), ElementsAre("tmrMain.Enabled=False", "CleanupBackHistory", "CleanupNextHistory",
                                     "HistSelKey=''", "load FHistory", "shown", "save FHistory",
                                     "tmrMain.Enabled=True"));
    EXPECT_EQ(host.services->selKey, u"");
}

TEST_F(ShowHistoryTest, AProjectWithoutHistoryGivesAnEmptyWindow) {
    host.services->hasHistory = false;
    Show(u"");
    EXPECT_THAT(Calls(), ElementsAre("tmrMain.Enabled=False", "HistSelKey=''", "load FHistory", "shown",
                                     "save FHistory", "tmrMain.Enabled=True"));
}

TEST_F(ShowHistoryTest, TheHistoryIsThatOfTheActiveProject) {
    host.services->project = u"Other";
    Show(u"");
    EXPECT_THAT(host.services->log, Not(Contains("CleanupBackHistory")));
}

TEST_F(ShowHistoryTest, WithoutAWindowTheRestIsDone) {
    platform.showHistoryWindow = nullptr;
    Show(u"");
    EXPECT_THAT(Calls(), ElementsAre("tmrMain.Enabled=False", "CleanupBackHistory", "CleanupNextHistory",
                                     "HistSelKey=''", "tmrMain.Enabled=True"));
}

TEST_F(ShowHistoryTest, AWindowThatThrowsLeavesTheTimerRunning) {
    platform.showHistoryWindow = [](hostmodel::Globals&) { throw std::runtime_error("out of memory"); };
    Show(u"");
    EXPECT_EQ(host.services->log.back(), "tmrMain.Enabled=True");
}

TEST_F(ShowHistoryTest, EveryStepThatFailsIsLeftOut) {
    for (const Fault fault : {Fault::Fails, Fault::Empty}) {
        support::WithEveryCallFaulty(
            fault, [] { return std::make_unique<HistoryHost>(); },
            [&](const auto& globals) {
                platform.showHistoryWindow = [](hostmodel::Globals& services) {
                    Attempt(services.SetHistSelKey(u"Back|0"));
                };
                Lintara assistant(platform);
                assistant.oG = globals;
                assistant.ShowHistory();
            },
            [&](const HistoryHost& subject, const FaultPlan& plan, std::string_view call) {
                const auto& log = subject.services->log;
                const auto made = [&](std::string_view name) { return std::ranges::count(log, name); };
                if (!call.starts_with("Globals.") || call == "Globals.VBE") {
                    EXPECT_EQ(made("OpenHistObject 'earlier object' 'Back|0'"),
                              call == "Dispatch.OpenHistObject" ? 0 : 1)
                        << call;
                }
                EXPECT_EQ(plan.liveHandles, 1U) << call;
                // One faulty call costs the step that it belongs to, and no other.
                const bool timerFails =
                    call == "Globals.HostForm" || call == "Dispatch.tmrMain" || call == "Dispatch.Put";
                EXPECT_EQ(made("tmrMain.Enabled=False") + made("tmrMain.Enabled=True"), timerFails ? 1 : 2)
                    << call;
                const bool pathFails = call == "Globals.VBE" || call == "VBE.ActiveVBProject" ||
                                       call == "VBProject.Name" || call == "Globals.ProjectsData" ||
                                       call == "Dispatch." || call == "Dispatch.HistItems";
                EXPECT_EQ(made("CleanupBackHistory"),
                          pathFails || call == "Dispatch.CleanupBackHistory" ? 0 : 1)
                    << call;
                EXPECT_EQ(made("CleanupNextHistory"),
                          pathFails || call == "Dispatch.CleanupNextHistory" ? 0 : 1)
                    << call;
            });
    }
}

}  // namespace
}  // namespace lintara::history
