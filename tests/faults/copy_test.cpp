// Copies that are struck by faults: the sources stay as they are, and a copy that is neither complete nor
// untouched tells it.
#include "tests/faults/trial.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iostream>

#include <gtest/gtest.h>

namespace lintara::faults {
namespace {

namespace fs = std::filesystem;

// With an older copy in its place, and without one.
class CopyUnderFaults : public testing::TestWithParam<bool> {
  protected:
    CopyUnderFaults() {
        WriteSmallProject(folder_);
        sources_ = ReadTree(folder_.project());
        if (GetParam()) {
            EXPECT_EQ(folder_.Run({"insert", "--error-handlers", "--output", "@out", "@p/p.vbp"}).status, 0);
            old_ = ReadOutput();
        }
        const Outcome outcome = folder_.Run(copy_);
        EXPECT_EQ(outcome.status, 0) << outcome.text;
        calls_ = outcome.calls;
        new_ = ReadOutput();
        EXPECT_NE(old_, new_);
    }

    [[nodiscard]] fs::path output() const { return folder_.machine().folder / "out"; }
    [[nodiscard]] FileTree ReadOutput() const {
        return fs::exists(output()) ? ReadTree(output()) : FileTree();
    }

    void Begin() const {
        fs::remove_all(output());
        if (!old_.empty()) {
            fs::create_directories(output());
            RestoreTree(output(), old_);
        }
    }

    void Strike(const Fault& fault) {
        Begin();
        const Outcome outcome = folder_.Run(copy_, fault);
        SCOPED_TRACE(fault.ToString() + "\n" + outcome.text);
        EXPECT_TRUE(outcome.struck);
        ++struck_;
        EXPECT_EQ(Differences(sources_, ReadTree(folder_.project())), "");
        LookAtStatus(outcome, fault);
        LookAtCopy();
        const Outcome again = folder_.Run(copy_);
        EXPECT_EQ(again.status, 0) << again.text;
        EXPECT_EQ(Differences(new_, ReadOutput()), "") << "made again";
    }

    void LookAtStatus(const Outcome& outcome, const Fault& fault) const {
        const FileTree copy = ReadOutput();
        if (fault.kind == "kill") {
            EXPECT_EQ(outcome.status, killed);
        } else if (fault.kind == "short" || fault.kind == std::to_string(EINTR) || outcome.status == 0) {
            EXPECT_EQ(outcome.status, 0);
            EXPECT_EQ(Differences(new_, copy), "");
        } else {
            EXPECT_EQ(outcome.status, 3);
            EXPECT_TRUE(outcome.Says("Input/output error") || outcome.Says("No space left on device"));
            EXPECT_TRUE(outcome.Says("holds a copy that is not complete") || Untouched(copy));
        }
    }

    // Temporary files may be left that could not be deleted.
    [[nodiscard]] bool Untouched(FileTree copy) const {
        std::erase_if(copy, [](const auto& each) { return !Leftovers({each}).empty(); });
        return copy == old_;
    }

    // Opening it tells, unless it is whole or nothing has happened to it.
    void LookAtCopy() {
        const FileTree copy = ReadOutput();
        if (copy == old_ || copy == new_ || !copy.contains("p.vbp")) {
            return;
        }
        LintaraRun run(folder_.machine(), folder_.Named({"list", "@out/p.vbp"}), {}, false);
        const Outcome listed = run.Result();
        EXPECT_TRUE(listed.status == 0 ? Untouched(copy) : listed.Says("holds a copy that is not complete"))
            << listed.text;
        told_ += listed.status == 3 ? 1 : 0;
    }

    FaultFolder folder_;
    const Words copy_ = {"insert", "--line-numbers", "--output", "@out", "@p/p.vbp"};
    FileTree sources_;
    FileTree old_;
    FileTree new_;
    std::vector<std::string> calls_;
    long struck_ = 0;
    long told_ = 0;
};

TEST_P(CopyUnderFaults, NeverTouchesTheSourcesAndTellsThatItIsIncomplete) {
    const auto all = static_cast<long>(calls_.size());
    const auto writes =
        std::ranges::count_if(calls_, [](const std::string& call) { return call.starts_with("write "); });
    const long stride = TakesAll() ? 1 : IsSanitized() ? 13 : 3;
    const std::vector<Fault> faults = {{.kind = "kill"},
                                       {.kind = "short"},
                                       {.kind = std::to_string(EINTR)},
                                       {.kind = std::to_string(EIO)},
                                       {.kind = std::to_string(ENOSPC)},
                                       {.kind = std::to_string(ENOSPC), .lasting = true}};
    long begin = 0;
    for (Fault fault : faults) {
        const long last = fault.kind == "short" ? writes : all;
        for (fault.at = 1 + begin++ % stride; fault.at <= last; fault.at += stride) {
            Strike(fault);
        }
    }
    std::cout << "Copy: " << all << " calls; faults " << struck_
              << ", copies that tell that they are incomplete " << told_ << "\n";
    EXPECT_GT(told_, 0);
}

INSTANTIATE_TEST_SUITE_P(Copies, CopyUnderFaults, testing::Bool(), [](const auto& parameter) {
    return parameter.param ? "OverAnOlderOne" : "IntoANewFolder";
});

}  // namespace
}  // namespace lintara::faults
