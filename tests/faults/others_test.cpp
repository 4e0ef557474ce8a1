// Others at work on the same files: a second command, an editor that saves meanwhile, a folder that goes
// away. The run under test is stopped at a certain call while the other acts, so that every order is met for
// certain.
#include "tests/faults/trial.h"
#include "workspace/descriptor.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <unistd.h>
#include <utility>

#include <gtest/gtest.h>

namespace lintara::faults {
namespace {

namespace fs = std::filesystem;

constexpr const char* edited = "Attribute VB_Name = \"E\"\nSub Last()\n    ' somebody's work\nEnd Sub";

void Overwrite(const fs::path& file) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << edited;
}

// As editors do that keep the old file until the new one is whole.
void ReplaceByRename(const fs::path& file) {
    const fs::path beside = file.parent_path() / "E.bas~";
    Overwrite(beside);
    fs::rename(beside, file);
}

using Act = std::function<void(const fs::path& file)>;

class Others : public testing::Test {
  protected:
    Others() {
        WriteSmallProject(folder_);
        old_ = ReadTree(folder_.project());
    }

    [[nodiscard]] fs::path file() const { return folder_.project() / "sub/E.bas"; }

    // The calls that a save makes, of the name if one is given.
    [[nodiscard]] std::vector<std::string> Calls(const std::string& name = {}) const {
        const std::vector<std::string> calls = folder_.Run(insert_, {.call = name}).calls;
        RestoreTree(folder_.project(), old_);
        return calls;
    }

    // Ahead of the call, which is found by a part of its line in the log, from the end.
    [[nodiscard]] Fault StopAt(const std::string& name, const std::string& part) const {
        const std::vector<std::string> calls = Calls(name);
        const auto found = std::ranges::find_if(calls.rbegin(), calls.rend(),
                                                [&](const std::string& call) { return call.contains(part); });
        EXPECT_NE(found, calls.rend()) << part;
        return {.at = calls.rend() - found, .kind = "stop", .call = name};
    }
    // When everything is read, and nothing has been written.
    [[nodiscard]] Fault StopAfterReading() const { return StopAt("access", ".lintara-journal-link"); }

    Outcome RunWith(const Fault& fault, const std::function<void()>& act) const {
        LintaraRun run(folder_.machine(), folder_.Named(insert_), fault);
        if (!run.WaitUntilStopped()) {
            ADD_FAILURE() << "ended before the call";
        } else {
            act();
            run.Continue();
        }
        return run.Result();
    }

    // The other's file is kept, the rest is as it was, and nothing is left.
    void ExpectNothingLost(const Outcome& outcome) const {
        EXPECT_EQ(outcome.status, 3) << outcome.text;
        EXPECT_TRUE(outcome.Says("E.bas: error: changed on disk")) << outcome.text;
        FileTree expected = old_;
        expected["sub/E.bas"].bytes = edited;
        EXPECT_EQ(Differences(expected, ReadTree(folder_.project())), "") << outcome.text;
    }

    void RunCommandsTogether(const Words& one, const Words& other,
                             const std::function<void(const Outcome&, const Outcome&)>& look) const {
        LintaraRun first(folder_.machine(), folder_.Named(one), {}, false);
        LintaraRun second(folder_.machine(), folder_.Named(other), {}, false);
        const Outcome firstOutcome = first.Result();
        look(firstOutcome, second.Result());
        EXPECT_EQ(Leftovers(ReadTree(folder_.project())), "");
    }

    FaultFolder folder_;
    const Words insert_ = {"insert", "--line-numbers", "@p/p.vbp"};
    const Words remove_ = {"remove", "--line-numbers", "@p/p.vbp"};
    FileTree old_;
};

TEST_F(Others, AnEditorThatSavesBeforeTheSaveIsRefused) {
    for (const Act& act : {Act(Overwrite), Act(ReplaceByRename)}) {
        const Fault fault = StopAfterReading();
        ExpectNothingLost(RunWith(fault, [&] { act(file()); }));
        RestoreTree(folder_.project(), old_);
    }
}

TEST_F(Others, AnEditorThatSavesAtAnyCallOfTheSaveLosesNothing) {
    const std::vector<std::string> calls = Calls();
    // Until the old content of the first file is deleted.
    const auto end =
        std::ranges::find_if(calls, [](const std::string& call) { return call.starts_with("unlink "); });
    const long last = end - calls.begin();
    const long stride = TakesAll() || !IsSanitized() ? 1 : 7;
    for (const Act& act : {Act(Overwrite), Act(ReplaceByRename)}) {
        bool isReplaced = false;
        for (long at = 1; at <= last; at = at < last ? std::min(at + stride, last) : last + 1) {
            RestoreTree(folder_.project(), old_);
            SCOPED_TRACE(calls[static_cast<std::size_t>(at - 1)]);
            const std::string before = old_["sub/E.bas"].bytes;
            const Outcome outcome = RunWith({.at = at, .kind = "stop"}, [&] {
                isReplaced = support::ReadBytes(file()) != before;
                act(file());
            });
            const FileTree after = ReadTree(folder_.project());
            EXPECT_EQ(after.at("sub/E.bas").bytes, edited);
            EXPECT_EQ(Leftovers(after), "");
            if (!isReplaced) {
                ExpectNothingLost(outcome);
            }
        }
        EXPECT_TRUE(isReplaced) << "the last of these calls come after it";
    }
}

// The editor had opened the file before it was replaced, and writes when the new content is in place.
TEST_F(Others, AnEditorThatWritesIntoTheReplacedFileLosesNothing) {
    const Fault fault = StopAt("fsync", "/p/sub");
    const workspace::Descriptor opened(::open(file().c_str(), O_WRONLY | O_CLOEXEC));
    ExpectNothingLost(RunWith(fault, [&] {
        EXPECT_NE(support::ReadBytes(file()), old_["sub/E.bas"].bytes);
        EXPECT_EQ(::ftruncate(opened.get(), 0), 0);
        EXPECT_GT(::write(opened.get(), edited, std::strlen(edited)), 0);
    }));
}

TEST_F(Others, AFileThatBecomesAFolderIsRefused) {
    const Outcome outcome = RunWith(StopAfterReading(), [&] {
        fs::remove(file());
        fs::create_directory(file());
    });
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(outcome.Says("E.bas: error: is a folder, not a file")) << outcome.text;
    FileTree expected = old_;
    expected.erase("sub/E.bas");
    EXPECT_EQ(Differences(expected, ReadTree(folder_.project())), "");
}

TEST_F(Others, AFileThatIsDeletedOrLosesItsRightsIsRefused) {
    const Fault fault = StopAfterReading();
    const Outcome deleted = RunWith(fault, [&] { fs::remove(file()); });
    EXPECT_EQ(deleted.status, 3);
    EXPECT_TRUE(deleted.Says("E.bas: error: was deleted since it was read")) << deleted.text;
    RestoreTree(folder_.project(), old_);
    const Outcome locked = RunWith(fault, [&] { fs::permissions(file(), fs::perms::none); });
    EXPECT_EQ(locked.status, 3);
    EXPECT_TRUE(locked.Says("E.bas: error: is read-only")) << locked.text;
    FileTree expected = old_;
    expected["sub/E.bas"].mode = 0;
    fs::permissions(file(), fs::perms::owner_read);
    expected["sub/E.bas"].mode = 0400;
    EXPECT_EQ(Differences(expected, ReadTree(folder_.project())), "");
}

TEST_F(Others, AProjectFolderThatDisappearsIsRefused) {
    const Outcome outcome = RunWith(StopAfterReading(), [&] { fs::remove_all(folder_.project()); });
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(outcome.Says("No such file or directory") || outcome.Says("was deleted")) << outcome.text;
    EXPECT_FALSE(fs::exists(folder_.project()));
}

// Wherever the folder went, the project in it is whole.
TEST_F(Others, AProjectFolderThatIsRenamedDuringTheSaveIsWhole) {
    ASSERT_EQ(folder_.Run(insert_).status, 0);
    const FileTree numbered = ReadTree(folder_.project());
    RestoreTree(folder_.project(), old_);
    const auto calls = static_cast<long>(Calls().size());
    const fs::path moved = folder_.machine().folder / "moved";
    const long stride = TakesAll() ? 1 : IsSanitized() ? 17 : 2;
    for (long at = 1; at <= calls; at += stride) {
        SCOPED_TRACE(at);
        const Outcome outcome =
            RunWith({.at = at, .kind = "stop"}, [&] { fs::rename(folder_.project(), moved); });
        EXPECT_TRUE(outcome.status == 0 || outcome.status == 3) << outcome.text;
        EXPECT_FALSE(fs::exists(folder_.project()));
        EXPECT_EQ(folder_.Run({"list", "@moved/p.vbp"}).status, 0);
        const FileTree after = ReadTree(moved);
        EXPECT_TRUE(after == old_ || after == numbered) << Differences(old_, after) << outcome.text;
        EXPECT_TRUE(outcome.status == 3 || after == numbered) << outcome.text;
        fs::rename(moved, folder_.project());
        RestoreTree(folder_.project(), old_);
    }
}

TEST_F(Others, ACommandThatDoesNotWaitIsRefusedAndNamesTheOther) {
    LintaraRun first(folder_.machine(), folder_.Named(insert_), StopAfterReading());
    ASSERT_TRUE(first.WaitUntilStopped());
    for (Words words : {insert_, remove_, Words{"undo", "@p/p.vbp"}}) {
        words.insert(words.end(), {"--wait", "0.1"});
        LintaraRun second(folder_.machine(), folder_.Named(words), {}, false);
        const Outcome outcome = second.Result();
        EXPECT_EQ(outcome.status, 3);
        EXPECT_TRUE(outcome.Says("another run is at work on this project (process " +
                                 std::to_string(first.id()) + ")"))
            << outcome.text;
        EXPECT_EQ(Differences(old_, ReadTree(folder_.project())), "");
    }
    first.Continue();
    EXPECT_EQ(first.Result().status, 0);
}

TEST_F(Others, CommandsThatWaitFollowEachOther) {
    const Words waiting = {"insert", "--line-numbers", "--wait", "60", "@p/p.vbp"};
    const Words removing = {"remove", "--line-numbers", "--wait", "60", "@p/p.vbp"};
    ASSERT_EQ(folder_.Run(waiting).status, 0);
    const FileTree numbered = ReadTree(folder_.project());
    RestoreTree(folder_.project(), old_);
    const auto bothDone = [](const Outcome& one, const Outcome& other) {
        EXPECT_EQ(one.status, 0) << one.text;
        EXPECT_EQ(other.status, 0) << other.text;
    };
    for (int round = 0; round < (IsSanitized() ? 2 : 10); ++round) {
        RunCommandsTogether(waiting, waiting, bothDone);
        EXPECT_EQ(Differences(numbered, ReadTree(folder_.project())), "");
        RestoreTree(folder_.project(), old_);
        for (const auto& [one, other] : {std::pair(waiting, removing), std::pair(removing, waiting)}) {
            RunCommandsTogether(one, other, bothDone);
            const FileTree after = ReadTree(folder_.project());
            EXPECT_TRUE(after == old_ || after == numbered);
            RestoreTree(folder_.project(), old_);
        }
    }
}

TEST_F(Others, OfTwoUndosOneUndoes) {
    const Words undo = {"undo", "--wait", "60", "@p/p.vbp"};
    for (int round = 0; round < (IsSanitized() ? 2 : 5); ++round) {
        ASSERT_EQ(folder_.Run(insert_).status, 0);
        RunCommandsTogether(undo, undo, [](const Outcome& one, const Outcome& other) {
            EXPECT_EQ(one.status, 0) << one.text;
            EXPECT_EQ(other.status, 0) << other.text;
            EXPECT_NE(one.Says("Undid \"lintara insert\""), other.Says("Undid \"lintara insert\""));
            EXPECT_NE(one.Says("Nothing to undo"), other.Says("Nothing to undo"));
        });
        EXPECT_EQ(Differences(old_, ReadTree(folder_.project())), "");
    }
}

TEST_F(Others, CopiesIntoOneFolderFollowEachOther) {
    const Words numbers = {"insert", "--line-numbers", "--output", "@out", "@p/p.vbp"};
    const Words others = {"insert", "--line-numbers", "--base", "20000", "--output", "@out", "@p/p.vbp"};
    const auto copyOf = [&](const Words& words) {
        EXPECT_EQ(folder_.Run(words).status, 0);
        return ReadTree(folder_.machine().folder / "out");
    };
    const FileTree numbered = copyOf(numbers);
    const FileTree renumbered = copyOf(others);
    for (int round = 0; round < (IsSanitized() ? 2 : 10); ++round) {
        RunCommandsTogether(numbers, others, [](const Outcome& one, const Outcome& other) {
            EXPECT_EQ(one.status, 0) << one.text;
            EXPECT_EQ(other.status, 0) << other.text;
        });
        const FileTree after = ReadTree(folder_.machine().folder / "out");
        EXPECT_TRUE(after == numbered || after == renumbered);
    }
}

}  // namespace
}  // namespace lintara::faults
