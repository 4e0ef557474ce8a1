// A recovery that is struck itself leaves what the next one can finish.
#include "tests/faults/trial.h"

#include <cerrno>
#include <iostream>

#include <gtest/gtest.h>

namespace lintara::faults {
namespace {

class RecoveryUnderFaults : public testing::TestWithParam<const char*> {
  protected:
    RecoveryUnderFaults() { WriteSmallProject(folder_); }

    // Kills a save at that call; what it left.
    [[nodiscard]] FileTree Interrupted(const Trial& trial, long at) const {
        trial.Begin();
        EXPECT_EQ(folder_.Run(trial.command(), {.at = at, .kind = "kill", .lacks = GetParam()}).status,
                  killed);
        return ReadTree(folder_.project());
    }

    // Strikes the recovery of it at every call.
    void StrikeRecoveries(Trial& trial, const FileTree& left, const Fault& kind) {
        for (Fault fault = kind;; fault.at += TakesAll() || !IsSanitized() ? 1 : 5) {
            RestoreTree(folder_.project(), left);
            const Outcome outcome = folder_.Run(recover_, fault);
            SCOPED_TRACE(fault.ToString() + "\n" + outcome.text);
            if (!outcome.struck) {
                return;
            }
            ++struck_;
            if (fault.kind == "kill") {
                EXPECT_EQ(outcome.status, killed);
            } else if (fault.kind == std::to_string(EINTR)) {
                EXPECT_EQ(outcome.status, 0);
            } else if (outcome.status != 0) {
                EXPECT_EQ(outcome.status, 3);
                EXPECT_TRUE(outcome.Says("Input/output error"));
            }
            if (outcome.status == 0) {
                EXPECT_EQ(Leftovers(ReadTree(folder_.project())), "");
            }
            trial.LookAt({.status = killed});
        }
    }

    FaultFolder folder_;
    const Words recover_ = {"recover", "@p/p.vbp"};
    long struck_ = 0;
};

TEST_P(RecoveryUnderFaults, IsFinishedByTheNextOne) {
    Trial trial(folder_, {}, {"insert", "--line-numbers", "@p/p.vbp"}, GetParam());
    const auto all = static_cast<long>(trial.calls().size());
    const long stride = TakesAll() ? 1 : IsSanitized() ? 31 : 11;
    for (long at = 2; at <= all; at += stride) {
        const FileTree left = Interrupted(trial, at);
        for (const std::string& kind : {std::string("kill"), std::to_string(EIO), std::to_string(EINTR)}) {
            StrikeRecoveries(trial, left, {.at = 1, .kind = kind, .lacks = GetParam()});
        }
    }
    std::cout << "Recovery: struck " << struck_ << " times; in the end old " << trial.tally().olds << ", new "
              << trial.tally().news << "\n";
    EXPECT_GT(struck_, 0);
}

INSTANTIATE_TEST_SUITE_P(Recoveries, RecoveryUnderFaults, testing::Values("", "exchange"),
                         [](const auto& parameter) {
                             return std::string_view(parameter.param).empty() ? "Usual" : "WithoutExchange";
                         });

// A power cut may lose a journal and leave a link to it.
TEST(RecoveryOfParts, ALinkWhoseJournalWasLostIsNoObstacle) {
    const FaultFolder folder;
    WriteSmallProject(folder);
    folder.Write({{"p/sub/.lintara-journal-link", "../.lintara-journal\n"}});
    const Outcome outcome = folder.Run({"insert", "--line-numbers", "@p/p.vbp"});
    EXPECT_EQ(outcome.status, 0) << outcome.text;
    EXPECT_EQ(Leftovers(ReadTree(folder.project())), "");
}

TEST(RecoveryOfParts, AnUndoThatWasKilledAtItsEndIsNotMadeTwice) {
    const FaultFolder folder;
    WriteSmallProject(folder);
    const FileTree old = ReadTree(folder.project());
    const Words undo = {"undo", "@p/p.vbp"};
    const Trial trial(folder, {{"insert", "--line-numbers", "@p/p.vbp"}}, undo);
    trial.Begin();
    ASSERT_TRUE(trial.calls().back().starts_with("unlink " + folder.machine().state().string()));
    const auto last = static_cast<long>(trial.calls().size());
    ASSERT_EQ(folder.Run(undo, {.at = last, .kind = "kill"}).status, killed);
    const Outcome again = folder.Run(undo);
    EXPECT_EQ(again.status, 0);
    EXPECT_TRUE(again.Says("Nothing to undo")) << again.text;
    EXPECT_EQ(Differences(old, ReadTree(folder.project())), "");
}

}  // namespace
}  // namespace lintara::faults
