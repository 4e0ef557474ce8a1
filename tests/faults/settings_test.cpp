// The user's settings, struck by faults, and written by several runs at once.
#include "tests/faults/trial.h"

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <memory>

#include <gtest/gtest.h>

namespace lintara::faults {
namespace {

// Settings may hold names, too, so leftovers are told by their end alone.
FileTree Settled(FileTree tree) {
    std::erase_if(tree, [](const auto& each) { return each.first.ends_with(".tmp"); });
    return tree;
}

TEST(SettingsUnderFaults, AreWhollyOldOrWhollyNew) {
    const FaultFolder folder;
    ASSERT_EQ(folder.Run({"settings", "set", "LNStep", "10"}).status, 0);
    const FileTree old = ReadTree(folder.machine().settings());
    const Words change = {"settings", "set", "LNBase", "20000"};
    const Outcome undisturbed = folder.Run(change);
    ASSERT_EQ(undisturbed.status, 0) << undisturbed.text;
    const FileTree changed = ReadTree(folder.machine().settings());
    ASSERT_NE(old, changed);

    const auto all = static_cast<long>(undisturbed.calls.size());
    const auto writes = std::ranges::count_if(
        undisturbed.calls, [](const std::string& call) { return call.starts_with("write "); });
    long struck = 0;
    for (const std::string& kind : {std::string("kill"), std::string("short"), std::to_string(EINTR),
                                    std::to_string(EIO), std::to_string(ENOSPC)}) {
        for (Fault fault{.at = 1, .kind = kind}; fault.at <= (kind == "short" ? writes : all); ++fault.at) {
            RestoreTree(folder.machine().settings(), old);
            const Outcome outcome = folder.Run(change, fault);
            SCOPED_TRACE(fault.ToString() + "\n" + outcome.text);
            EXPECT_TRUE(outcome.struck);
            ++struck;
            const FileTree after = ReadTree(folder.machine().settings());
            EXPECT_TRUE(Settled(after) == old || Settled(after) == changed);
            if (kind == "kill") {
                EXPECT_EQ(outcome.status, killed);
            } else if (kind == "short" || kind == std::to_string(EINTR) || outcome.status == 0) {
                EXPECT_EQ(outcome.status, 0);
                EXPECT_EQ(Differences(changed, after), "");
            } else {
                EXPECT_EQ(outcome.status, 3);
                EXPECT_EQ(Differences(old, Settled(after)), "");
                EXPECT_TRUE(outcome.Says("settings.toml"));
            }
            EXPECT_EQ(folder.Run(change).status, 0);
            EXPECT_EQ(Differences(changed, ReadTree(folder.machine().settings())), "") << "the next run";
        }
    }
    std::cout << "Settings: " << all << " calls; faults " << struck << "\n";
}

TEST(SettingsUnderFaults, OfRunsAtTheSameTimeAreAllKept) {
    const FaultFolder folder;
    const std::vector<Words> changes = {{"settings", "set", "LNBase", "20000"},
                                        {"settings", "set", "LNStep", "10"},
                                        {"settings", "set", "InsertEH", "0"},
                                        {"settings", "set", "EHLabel", "oops"}};
    for (int round = 0; round < (IsSanitized() ? 2 : 8); ++round) {
        RestoreTree(folder.machine().folder, {});
        std::vector<std::unique_ptr<LintaraRun>> runs;
        for (std::size_t i = 0; i < changes.size(); ++i) {
            runs.push_back(std::make_unique<LintaraRun>(folder.machine(), changes[i], Fault(), false));
        }
        for (const auto& run : runs) {
            const Outcome outcome = run->Result();
            EXPECT_EQ(outcome.status, 0) << outcome.text;
        }
        const Outcome list = folder.Run({"settings", "list"});
        for (const char* const line : {"LNBase          20000\n", "LNStep          10\n",
                                       "InsertEH        0\n", "EHLabel         oops\n"}) {
            EXPECT_TRUE(list.Says(line)) << line << list.text;
        }
    }
}

}  // namespace
}  // namespace lintara::faults
