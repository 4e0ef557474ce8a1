// An editor that damages what it edits: the command notices, writes nothing, and keeps what is needed to mend
// the fault.
#include "cli/edits/edit_run.h"
#include "cli/invariants/fault_folder.h"
#include "tests/cli/command_run.h"
#include "tests/support/temporary_folder.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// Does something else than it says.
class Vandal : public ComponentEditor {
  public:
    using Deed = void (*)(workspace::Module& module);

    Vandal(workspace::Workspace& workspace, Deed deed, std::string victim)
        : workspace_(workspace), deed_(deed), victim_(std::move(victim)) {}

    ComponentReport Edit(const ScopedComponent& scope) override {
        for (const auto& component : workspace_.projects().front()->components()) {
            const bool isVictim = workspace::ToUtf8(component->name) == victim_;
            if (victim_.empty() ? component.get() == scope.component : isVictim) {
                deed_(*component->module);
            }
        }
        return {.project = scope.project, .component = scope.component};
    }

  private:
    workspace::Workspace& workspace_;
    Deed deed_;
    std::string victim_;  // empty: the component that is to be edited
};

void LoseALine(workspace::Module& module) {
    ASSERT_TRUE(module.DeleteLines(module.Procedure(0).bodyBegin, 1));
}

void RewriteAHeader(workspace::Module& module) {
    ASSERT_TRUE(module.ReplaceLine(module.Procedure(0).header, u"Public Sub Main(a)"));
}

class EditFault : public testing::Test {
  protected:
    void SetUp() override {
        test.WriteShop();
        options.read.path = test.Path("Shop.vbp");
        before = test.Files();
    }

    ExitStatus Run(Vandal::Deed deed, const std::string& victim = {}) {
        StringSource in;
        Environment environment{.streams = {.in = in, .out = out, .err = err},
                                .stateFolder = stateFolder,
                                .commandLine = {"insert", "Shop.vbp", "--label", "it's"}};
        const EditJob job{
            .command = "insert",
            .stage = "numbering",
            .done = "Numbered",
            .wouldDo = "Would number",
            .makeEditor =
                [&](workspace::Workspace& workspace, const std::shared_ptr<hostmodel::Globals>&) {
                    return std::make_unique<Vandal>(workspace, deed, victim);
                },
            .independent = independent,
            .rules = {.numbers = {.in = true}}};
        return RunEdit(options, job, environment);
    }

    // The folders of the faults that were kept.
    [[nodiscard]] std::vector<fs::path> Kept() const {
        std::vector<fs::path> kept;
        if (fs::exists(stateFolder / "faults")) {
            for (const auto& entry : fs::directory_iterator(stateFolder / "faults")) {
                kept.push_back(entry.path());
            }
        }
        return kept;
    }

    CommandTest test;
    support::TemporaryFolder state;
    fs::path stateFolder = state / "Lintara";
    EditCommandOptions options;
    std::map<std::string, std::string> before;
    StringSink out;
    StringSink err;
    bool independent = false;
};

TEST_F(EditFault, NothingIsWrittenAndTheStatusIsFive) {
    for (const bool parallel : {false, true}) {
        independent = parallel;
        err.text.clear();
        EXPECT_EQ(static_cast<int>(Run(LoseALine)), 5);
        EXPECT_EQ(test.Files(), before);
        EXPECT_EQ(out.text, "");
        EXPECT_THAT(err.text,
                    AllOf(HasSubstr("Main.bas:6: error: lintara would have damaged component Main: lines of "
                                    "the procedure would go\n"),
                          HasSubstr("Stock.bas:3: error: lintara would have damaged component Stock: "),
                          HasSubstr("nothing was written. This is a fault of lintara, not of your code")));
    }
}

TEST_F(EditFault, NothingIsShownEither) {
    options.edit.diff = true;
    EXPECT_EQ(Run(RewriteAHeader), ExitStatus::InternalFault);
    EXPECT_EQ(out.text, "");
    EXPECT_THAT(err.text, HasSubstr("the header of the procedure would change"));
    options.edit = {};
    options.edit.check = true;
    EXPECT_EQ(Run(RewriteAHeader), ExitStatus::InternalFault);
    options.edit = {};
    options.edit.output = test.Path("copy");
    EXPECT_EQ(Run(RewriteAHeader), ExitStatus::InternalFault);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(EditFault, AComponentThatWasNotToBeEditedIsMissed) {
    options.scope.components = {"Main"};
    EXPECT_EQ(Run(LoseALine, "Stock"), ExitStatus::InternalFault);
    EXPECT_EQ(test.Files(), before);
    EXPECT_THAT(err.text, HasSubstr("component Stock: it would change, though it was not to be edited"));
}

TEST_F(EditFault, TheReportSaysSo) {
    options.output.json = true;
    EXPECT_EQ(Run(LoseALine), ExitStatus::InternalFault);
    const auto report = nlohmann::json::parse(out.text);
    EXPECT_EQ(report["status"], 5);
    EXPECT_EQ(report["written"], false);
    EXPECT_THAT(report["components"], IsEmpty());
    EXPECT_THAT(report["errors"], SizeIs(3));
    EXPECT_THAT(report["errors"][0]["message"].get<std::string>(),
                HasSubstr("lines of the procedure would go"));
}

TEST_F(EditFault, WhatLedToItIsKeptForNobodyElse) {
    ASSERT_EQ(Run(LoseALine), ExitStatus::InternalFault);
    ASSERT_THAT(Kept(), SizeIs(1));
    const fs::path folder = Kept().front();
    EXPECT_THAT(err.text, HasSubstr("kept in " + folder.string()));
    const auto text = [&](const char* name) { return support::ReadBytes(folder / name); };
    EXPECT_EQ(text("before/1-Main.bas"), before["Main.bas"]);
    EXPECT_EQ(text("after/1-Main.bas"), Replaced(before["Main.bas"], "    count = 1\r\n", ""));
    EXPECT_EQ(text("before/2-Stock.bas"), before["lib/Stock.bas"]);
    EXPECT_THAT(text("report.txt"),
                AllOf(HasSubstr("version: "), HasSubstr("command: insert\n"),
                      HasSubstr("command line: lintara insert Shop.vbp --label 'it'\\''s'\n"),
                      HasSubstr("file 1: Main.bas\n  line 6: lines of the procedure would go\n")));
    EXPECT_THAT(text("README.txt"), AllOf(HasSubstr("source code"), HasSubstr("maintainers")));
    for (const auto& entry : fs::recursive_directory_iterator(stateFolder / "faults")) {
        struct stat status {};
        ASSERT_EQ(::stat(entry.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, entry.is_directory() ? 0700U : 0600U) << entry.path();
    }
    struct stat status {};
    ASSERT_EQ(::stat((stateFolder / "faults").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(EditFault, EachFaultHasAFolderOfItsOwn) {
    ASSERT_EQ(Run(LoseALine), ExitStatus::InternalFault);
    ASSERT_EQ(Run(LoseALine), ExitStatus::InternalFault);
    EXPECT_THAT(Kept(), SizeIs(2));
}

TEST_F(EditFault, TheNewestFaultsAreKept) {
    const auto others = stateFolder / "faults" / "mine";
    std::string first;
    for (std::size_t i = 0; i <= mostFaults; ++i) {
        ASSERT_EQ(Run(LoseALine), ExitStatus::InternalFault);
        if (i == 0) {
            first = Kept().front();
            fs::last_write_time(first, fs::file_time_type::clock::now() - std::chrono::hours(1));
            fs::create_directory(others);
        }
    }
    EXPECT_THAT(Kept(), SizeIs(mostFaults + 1));
    EXPECT_FALSE(fs::exists(first));
    EXPECT_TRUE(fs::exists(others));
}

TEST_F(EditFault, ThatNothingCanBeKeptIsToldAndTheStatusIsTheSame) {
    // A file where the folder should be; a folder that cannot be made; none at all.
    state.Write("Lintara/faults", "");
    for (const fs::path& folder : {stateFolder, fs::path("/proc/nothing/here"), fs::path()}) {
        stateFolder = folder;
        err.text.clear();
        EXPECT_EQ(Run(LoseALine), ExitStatus::InternalFault);
        EXPECT_THAT(err.text, HasSubstr("What led to it could not be kept: "));
        EXPECT_EQ(test.Files(), before);
    }
}

// As on a full disk: no file may grow. Runs in a process of its own, which ends with the command's status.
TEST_F(EditFault, OnAFullDiskNothingOfItIsLeft) {
    const auto runOnFullDisk = [&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const struct rlimit none {};
        setrlimit(RLIMIT_FSIZE, &none);
        const ExitStatus status = Run(LoseALine);
        const bool told = err.text.contains("What led to it could not be kept: ");
        std::_Exit(told ? static_cast<int>(status) : 99);
    };
    EXPECT_EXIT(runOnFullDisk(), testing::ExitedWithCode(5), "");
    EXPECT_THAT(Kept(), IsEmpty());
    EXPECT_EQ(test.Files(), before);
}

// The terminal's interrupt reaches the process while it says what happened.
class InterruptedSink : public StringSink {
  protected:
    bool DoWrite(std::string_view bytes) override {
        std::raise(SIGINT);
        return StringSink::DoWrite(bytes);
    }
};

TEST_F(EditFault, CtrlCDoesNotHideIt) {
    const auto run = [&] {
        std::signal(SIGINT, SIG_DFL);
        InterruptedSink interrupted;
        StringSource in;
        Environment environment{.streams = {.in = in, .out = out, .err = interrupted},
                                .stateFolder = stateFolder};
        const EditJob job{
            .command = "insert",
            .stage = "numbering",
            .done = "Numbered",
            .wouldDo = "Would number",
            .makeEditor = [](workspace::Workspace& workspace, const std::shared_ptr<hostmodel::Globals>&) {
                return std::make_unique<Vandal>(workspace, LoseALine, "");
            }};
        const ExitStatus status = RunEdit(options, job, environment);
        std::_Exit(interrupted.text.contains("kept in ") ? static_cast<int>(status) : 99);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(5), "");
    EXPECT_THAT(Kept(), SizeIs(1));
}

TEST_F(EditFault, WhatTheCommandsDoIsNone) {
    for (const std::string line :
         {"insert @Shop.vbp --line-numbers --error-handlers",
          "remove @Shop.vbp --line-numbers --error-handlers",
          "custom insert @Shop.vbp --id 3 --code @code.txt", "custom remove @Shop.vbp --id 3",
          "replace @Shop.vbp --component Main --find count --replace total"}) {
        test.Write("code.txt", "    Beep\r\n");
        const Outcome outcome = test.Run(line);
        EXPECT_EQ(outcome.status, 0) << line << "\n" << outcome.err;
    }
    EXPECT_FALSE(fs::exists(test.stateFolder() / "faults"));
}

}  // namespace
}  // namespace lintara::cli
