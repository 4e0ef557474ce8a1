// SIGKILL at random moments of a save of 200 files.
#include "tests/faults/trial.h"
#include "tests/support/random.h"

#include <chrono>
#include <iostream>
#include <thread>

#include <gtest/gtest.h>

namespace lintara::faults {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

struct Scenario {
    std::string name;
    std::vector<Words> before;
    Words command;
};

std::ostream& operator<<(std::ostream& stream, const Scenario& scenario) {
    return stream << scenario.name;
}

const std::vector<Scenario>& Scenarios() {
    static const Words number = {"insert", "--line-numbers", "@p/Generated.vbp"};
    static const std::vector<Scenario> scenarios = {
        {"Insert", {}, {"insert", "--error-handlers", "--line-numbers", "@p/Generated.vbp"}},
        {"Remove", {number}, {"remove", "--line-numbers", "@p/Generated.vbp"}},
        {"CustomInsert", {}, {"custom", "insert", "--id", "7", "--code", "@block.txt", "@p/Generated.vbp"}},
        {"Undo", {number}, {"undo", "@p/Generated.vbp"}},
    };
    return scenarios;
}

long KillsOfAScenario() {
    return TakesAll() ? 75 : IsSanitized() ? 3 : 12;
}

class Killed : public testing::TestWithParam<Scenario> {
  protected:
    Killed() { WriteManyFiles(folder_, 200); }

    [[nodiscard]] std::filesystem::path journal() const { return folder_.project() / ".lintara-journal"; }

    // Until the save begins; false when the run is over before.
    bool WaitForSave(LintaraRun& run) const {
        while (!std::filesystem::exists(journal())) {
            if (run.HasEnded()) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
        return true;
    }

    // How long a save takes, from its first file until the end of the run.
    [[nodiscard]] Seconds TimeOfSave(const Trial& trial) const {
        trial.Begin();
        LintaraRun run(folder_.machine(), folder_.Named(trial.command()));
        (void)WaitForSave(run);
        const auto begin = Clock::now();
        EXPECT_EQ(run.Result().status, 0);
        return Clock::now() - begin;
    }

    FaultFolder folder_;
};

TEST_P(Killed, AtARandomMomentLeavesTheProjectWhollyOldOrWhollyNew) {
    Trial trial(folder_, GetParam().before, GetParam().command);
    support::Random random(20'26);
    const Seconds span = TimeOfSave(trial);
    for (long attempt = 0; trial.tally().kills < KillsOfAScenario(); ++attempt) {
        ASSERT_LT(attempt, 10 * KillsOfAScenario()) << "the runs end before they are killed";
        trial.Begin();
        LintaraRun run(folder_.machine(), folder_.Named(trial.command()));
        // One in five is killed at any time, also while it reads.
        if (attempt % 5 != 0) {
            (void)WaitForSave(run);
        }
        constexpr std::size_t parts = 10'000;
        std::this_thread::sleep_for(span * (static_cast<double>(random.Below(parts)) / parts));
        run.Kill();
        const Outcome outcome = run.Result();
        SCOPED_TRACE("attempt " + std::to_string(attempt) + "\n" + outcome.text);
        trial.LookAt(outcome);
    }
    trial.End();
    std::cout << GetParam().name << ": " << trial.tally().ToString() << "\n";
    RecordProperty("figures", trial.tally().ToString());
}

INSTANTIATE_TEST_SUITE_P(Saves, Killed, testing::ValuesIn(Scenarios()),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace lintara::faults
