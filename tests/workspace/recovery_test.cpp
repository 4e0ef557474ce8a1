#include "workspace/recovery.h"

#include "tests/support/other_process.h"
#include "tests/workspace/saved_project.h"
#include "workspace/journal.h"
#include "workspace/project_lock.h"
#include "workspace/save.h"

#include <atomic>
#include <string>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;
using Files = SavedProject::Files;

// A project, and how a save of it is asked for.
struct Scenario {
    const char* name;
    Files files;
    std::string project;
    std::string backupSuffix;
    int stride = 1;  // between the steps at which it is interrupted
};

Scenario ManyFiles() {
    Scenario scenario{"many", {}, "p.vbp", "", 9};
    for (int i = 0; i < 40; ++i) {
        const std::string name = "m" + std::to_string(i) + ".bas";
        scenario.files[name] = "Dim m\r\n";
        scenario.files["p.vbp"] += "Module=m" + std::to_string(i) + "; " + name + "\r\n";
    }
    return scenario;
}

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> scenarios = {
        {"two",
         {{"p.vbp", "Module=a; a.bas\nModule=b; b.bas\n"}, {"a.bas", "Dim a\n"}, {"b.bas", "Dim b\n"}},
         "p.vbp",
         ""},
        {"backups",
         {{"p.vbp", "Module=a; a.bas\nModule=b; b.bas\n"}, {"a.bas", "Dim a\n"}, {"b.bas", "Dim b\n"}},
         "p.vbp",
         ".bak"},
        {"folders",
         {{"p/p.vbp", "Module=a; a.bas\nModule=b; ..\\shared\\b.bas\nModule=c; sub\\c.bas\n"},
          {"p/a.bas", "Dim a\n"},
          {"shared/b.bas", "Dim b\n"},
          {"p/sub/c.bas", "Dim c\n"}},
         "p/p.vbp",
         ""},
        {"group",
         {{"g.vbg", "Project=x\\x.vbp\nProject=y\\y.vbp\n"},
          {"x/x.vbp", "Module=a; a.bas\n"},
          {"y/y.vbp", "Module=b; b.bas\n"},
          {"x/a.bas", "Dim a\n"},
          {"y/b.bas", "Dim b\n"}},
         "g.vbg",
         ".old"},
        {"single", {{"a.bas", "Dim a\n"}}, "a.bas", ""},
        {"folder", {{"f/a.bas", "Dim a\n"}, {"f/b.bas", "Dim b\n"}}, "f", ""},
        ManyFiles(),
    };
    return scenarios;
}

bool IsComponent(const std::string& name) {
    return name.ends_with(".bas");
}

Files AllEdited(const Scenario& scenario) {
    Files edited;
    for (const auto& [name, bytes] : scenario.files) {
        if (!IsComponent(name)) {
            edited[name] = bytes;
            continue;
        }
        edited[name] = (bytes.contains('\r') ? "'edited\r\n" : "'edited\n") + bytes;
        if (!scenario.backupSuffix.empty()) {
            edited[name + scenario.backupSuffix] = bytes;
        }
    }
    return edited;
}

// Saves in another process that ends before its step number `last`. False when there are not so many steps.
bool SaveInterrupted(SavedProject& project, const Scenario& scenario, int last) {
    return support::InOtherProcess([&]() -> std::string {
               project.Open();
               project.EditAll();
               std::atomic<int> steps = 0;
               SaveOptions options;
               options.backupSuffix = scenario.backupSuffix;
               options.beforeStep = [&] {
                   if (steps++ == last) {
                       ::_exit(9);
                   }
               };
               return "ended: " + project.Save(options);
           }) == "";
}

TEST(Recovery, AfterAnyInterruptionAllFilesAreOldOrAllAreNew) {
    for (const Scenario& scenario : Scenarios()) {
        const Files edited = AllEdited(scenario);
        int olds = 0;
        int news = 0;
        for (int step = 0;; step += scenario.stride) {
            SavedProject project(scenario.files, scenario.project);
            if (!SaveInterrupted(project, scenario, step)) {
                EXPECT_EQ(project.folder.Files(), edited) << scenario.name;
                break;
            }
            const auto done = Recover(project.path());
            ASSERT_TRUE(done.has_value()) << scenario.name << step << Sentences(done.error());
            const Files after = project.folder.Files();
            EXPECT_TRUE(after == scenario.files || after == edited) << scenario.name << " step " << step;
            olds += after == scenario.files ? 1 : 0;
            news += after == edited ? 1 : 0;
            const auto again = Recover(project.path());
            EXPECT_TRUE(again.has_value() && again->empty()) << scenario.name << step;
        }
        EXPECT_GT(olds, 2) << scenario.name;
        EXPECT_GT(news, 1) << scenario.name;
    }
}

TEST(Recovery, HappensWhenTheProjectIsOpened) {
    const Scenario& scenario = Scenarios()[2];
    for (int step = 0;; ++step) {
        SavedProject project(scenario.files, scenario.project);
        if (!SaveInterrupted(project, scenario, step)) {
            break;
        }
        const bool isInterrupted = HasJournal({project.folder / "p"});
        Workspace workspace;
        const auto opened = Open(workspace, project.path(), {});
        ASSERT_TRUE(opened.has_value()) << Sentences(opened.error());
        EXPECT_EQ(!opened->empty(), isInterrupted) << step;
        const Files after = project.folder.Files();
        EXPECT_TRUE(after == scenario.files || after == AllEdited(scenario)) << step;
    }
}

TEST(Recovery, IsStartedFromAnyFolderThatTheSaveTouched) {
    const Scenario& scenario = Scenarios()[2];
    for (const char* const entrance : {"shared/b.bas", "p/sub"}) {
        for (int step = 0;; ++step) {
            SavedProject project(scenario.files, scenario.project);
            if (!SaveInterrupted(project, scenario, step)) {
                break;
            }
            if (!HasJournal({fs::is_directory(project.folder / entrance)
                                 ? project.folder / entrance
                                 : (project.folder / entrance).parent_path()})) {
                continue;  // nothing has happened there yet, or it is over
            }
            Workspace workspace;
            ASSERT_TRUE(Open(workspace, project.folder / entrance, {}).has_value()) << entrance << step;
            const Files after = project.folder.Files();
            EXPECT_TRUE(after == scenario.files || after == AllEdited(scenario)) << entrance << step;
        }
    }
}

// Interrupts the save of a project that works in a folder beside its own, at every step, moves the project's
// folder away, lets `meanwhile` happen, and moves it back. Whatever happened, the save can be recovered then.
template <typename Meanwhile>
void ExpectRecoveryAfter(const Meanwhile& meanwhile) {
    const Scenario& scenario = Scenarios()[2];
    for (int step = 0;; ++step) {
        SavedProject project(scenario.files, scenario.project);
        if (!SaveInterrupted(project, scenario, step)) {
            break;
        }
        const fs::path folder = project.path().parent_path();
        const fs::path away = folder.parent_path() / "away";
        fs::rename(folder, away);
        meanwhile(project, away);
        fs::rename(away, folder);
        Workspace workspace;
        const auto opened = Open(workspace, project.path(), {});
        ASSERT_TRUE(opened) << step << Sentences(opened.error());
        // Of a save that had not begun to replace anything, remains may lie in the other folder.
        Files after = project.folder.Files();
        std::erase_if(after, [](const auto& file) {
            const fs::path path(file.first);
            return path.parent_path() == "shared" &&
                   (IsTemporaryName(path) || path.filename() == journalLinkName);
        });
        EXPECT_TRUE(after == scenario.files || after == AllEdited(scenario))
            << step << testing::PrintToString(after);
    }
}

TEST(Recovery, ASaveOutlivesThatItsOtherFoldersAreOpenedWithoutItsJournal) {
    ExpectRecoveryAfter([](const SavedProject& project, const fs::path& /*away*/) {
        Workspace workspace;
        (void)Open(workspace, project.folder / "shared/b.bas", {});
    });
}

TEST(Recovery, ASaveOutlivesThatItsProjectIsOpenedElsewhere) {
    ExpectRecoveryAfter([](const SavedProject& project, const fs::path& away) {
        Workspace workspace;
        (void)Open(workspace, away / project.path().filename(), {});
    });
}

TEST(Recovery, TouchesNothingInFoldersOfAGroupWhereNothingMayBeWritten) {
    SavedProject project({{"g/g.vbg", "VBGROUP 5.0\r\nProject=p.vbp\r\nProject=..\\other\\o.vbp\r\n"},
                          {"g/p.vbp", "Module=a; a.bas\r\n"},
                          {"g/a.bas", "Dim a\r\n"},
                          {"g/.lintara-1.tmp", "ours"},
                          {"g/.lintara-journal", "lintara-journal 1\n"},
                          {"other/o.vbp", "Module=b; b.bas\r\n"},
                          {"other/b.bas", "Dim b\r\n"},
                          {"other/.lintara-2.tmp", "theirs"},
                          {"other/.lintara-journal-link", ".lintara-journal\n"}},
                         "g/g.vbg");
    (void)Recover(project.path());
    EXPECT_EQ(project.folder.Read("other/.lintara-2.tmp"), "theirs");
    EXPECT_TRUE(fs::exists(project.folder / "other/.lintara-journal-link"));
}

TEST(Recovery, ASaveAfterAnInterruptedOneInTheSameSessionIsRefused) {
    const Scenario& scenario = Scenarios()[0];
    SavedProject project(scenario.files, scenario.project);
    ASSERT_TRUE(SaveInterrupted(project, scenario, 3));
    SavedProject other(scenario.files, scenario.project);
    other.Open();
    other.EditAll();
    other.folder.Write(".lintara-journal", project.folder.Read(".lintara-journal"));
    EXPECT_TRUE(other.Save().contains("run \"lintara recover\" first"));
    EXPECT_EQ(other.folder.Read("a.bas"), "Dim a\n");
    EXPECT_TRUE(fs::exists(other.folder / ".lintara-journal"));
}

// Two files a and b, in a state that an interruption after the commit can leave; each is old ("Dim x") or new
// ("'edited, Dim x"), and its temporary file holds the other.
class CommittedTest : public testing::Test {
  protected:
    CommittedTest() {
        for (const char* const name : {"a", "b"}) {
            const std::string file = name + std::string(".bas");
            journal_.replacements.push_back(
                {folder_ / file, folder_ / Temporary(name), {}, MarkOf(Old(name)), MarkOf(New(name))});
            folder_.Write(file, Old(name));
            folder_.Write(Temporary(name), New(name));
        }
        journal_.path = folder_ / journalName;
        const std::string head = JournalHead(journal_);
        folder_.Write(journalName, head + JournalCommit(journal_, head));
    }

    static std::string Old(const std::string& name) { return "Dim " + name + "\n"; }
    static std::string New(const std::string& name) { return "'edited\nDim " + name + "\n"; }
    static std::string Temporary(const std::string& name) { return ".lintara-0-" + name + ".tmp"; }

    void Replace(const std::string& name) const {
        EXPECT_TRUE(Exchange(folder_ / Temporary(name), folder_ / (name + ".bas")).has_value());
    }
    [[nodiscard]] std::string Recovered() const {
        const auto done = Recover(folder_.path());
        if (!done) {
            return Sentences(done.error());
        }
        std::string lines;
        for (const std::string& line : *done) {
            lines += line;
        }
        return lines;
    }

    support::TemporaryFolder folder_;
    Journal journal_;
};

const Files bothNew = {{"a.bas", "'edited\nDim a\n"}, {"b.bas", "'edited\nDim b\n"}};
const Files bothOld = {{"a.bas", "Dim a\n"}, {"b.bas", "Dim b\n"}};

TEST_F(CommittedTest, NoneReplacedIsFinished) {
    EXPECT_EQ(Recovered(), "finished an interrupted save of 2 files");
    EXPECT_EQ(folder_.Files(), bothNew);
}

TEST_F(CommittedTest, OneReplacedIsFinished) {
    Replace("b");
    EXPECT_EQ(Recovered(), "finished an interrupted save of 2 files");
    EXPECT_EQ(folder_.Files(), bothNew);
}

TEST_F(CommittedTest, ReplacedAndCleanedUpIsFinished) {
    Replace("a");
    Replace("b");
    fs::remove(folder_ / Temporary("a"));
    EXPECT_EQ(Recovered(), "finished an interrupted save of 2 files");
    EXPECT_EQ(folder_.Files(), bothNew);
}

TEST_F(CommittedTest, AReplacementInStepsIsFinishedFromEachOfThem) {
    fs::create_hard_link(folder_ / "a.bas", KeptName(folder_ / Temporary("a")));
    EXPECT_EQ(Recovered(), "finished an interrupted save of 2 files");
    EXPECT_EQ(folder_.Files(), bothNew);
}

TEST_F(CommittedTest, AReplacementInStepsIsFinishedFromTheLastOfThem) {
    fs::create_hard_link(folder_ / "a.bas", KeptName(folder_ / Temporary("a")));
    fs::rename(folder_ / Temporary("a"), folder_ / "a.bas");
    EXPECT_EQ(Recovered(), "finished an interrupted save of 2 files");
    EXPECT_EQ(folder_.Files(), bothNew);
}

TEST_F(CommittedTest, AnEditOfAFileBeforeItWasReplacedUndoesTheOthers) {
    Replace("a");
    folder_.Write("b.bas", "Dim mine\n");
    EXPECT_TRUE(Recovered().starts_with("undid an interrupted save"));
    EXPECT_EQ(folder_.Files(), (Files{{"a.bas", "Dim a\n"}, {"b.bas", "Dim mine\n"}}));
}

TEST_F(CommittedTest, AnEditOfAFileAfterItWasReplacedFinishesTheOthers) {
    Replace("a");
    folder_.Write("a.bas", "'edited\nDim mine\n");
    EXPECT_EQ(Recovered(), "finished an interrupted save of 2 files");
    EXPECT_EQ(folder_.Files(), (Files{{"a.bas", "'edited\nDim mine\n"}, {"b.bas", "'edited\nDim b\n"}}));
}

TEST_F(CommittedTest, NewContentThatIsGoneUndoesTheOthers) {
    Replace("a");
    fs::remove(folder_ / Temporary("b"));
    EXPECT_TRUE(Recovered().starts_with("undid an interrupted save"));
    EXPECT_EQ(folder_.Files(), bothOld);
}

TEST_F(CommittedTest, EditsOfBothKindsAreExplainedAndKept) {
    Replace("a");
    folder_.Write("a.bas", "'edited\nDim mine\n");
    folder_.Write("b.bas", "Dim mine\n");
    const Files before = folder_.Files();
    const std::string errors = Recovered();
    EXPECT_TRUE(errors.contains("a.bas: was changed since an interrupted save had replaced it")) << errors;
    EXPECT_TRUE(errors.contains("b.bas: was changed since an interrupted save was to replace it")) << errors;
    EXPECT_TRUE(errors.contains("can neither be finished nor undone")) << errors;
    EXPECT_EQ(folder_.Files(), before);
    Workspace workspace;
    EXPECT_FALSE(Open(workspace, folder_.path(), {}).has_value());
}

TEST_F(CommittedTest, DamagedNewContentIsNotUsed) {
    folder_.Write(Temporary("b"), "damage");
    EXPECT_TRUE(Recovered().starts_with("undid an interrupted save"));
    EXPECT_EQ(folder_.Files(), bothOld);
}

// Each round of a writer puts one more line in front of both files.
std::string WriteRounds(const fs::path& path, int rounds) {
    std::string errors;
    for (int round = 0; round < rounds; ++round) {
        const auto lock = ProjectLock::Acquire(path, 60);
        Workspace workspace;
        const auto opened = Open(workspace, path, {});
        if (!lock || !opened) {
            errors += lock ? Sentences(opened.error()) : lock.error().ToString();
            continue;
        }
        for (const auto& component : workspace.projects().front()->components()) {
            (void)component->module->InsertLines(Line{1}, u"'round");
        }
        const auto saved = Save(workspace, {});
        errors += saved ? "" : Sentences(saved.error());
    }
    return errors + "done";
}

TEST(Recovery, RunsThatWriteAndReadAtTheSameTimeSeeWholeStates) {
    const Scenario& scenario = Scenarios()[0];
    constexpr int rounds = 40;
    SavedProject project(scenario.files, scenario.project);
    const auto write = [&] { return WriteRounds(project.path(), rounds); };
    support::OtherProcess one(write);
    support::OtherProcess two(write);
    std::int32_t last = 0;
    while (!one.HasEnded() || !two.HasEnded()) {
        Workspace workspace;
        const auto opened = Open(workspace, project.path(), {});
        if (!opened) {
            EXPECT_TRUE(Sentences(opened.error()).contains("being changed")) << Sentences(opened.error());
            continue;
        }
        const auto& components = workspace.projects().front()->components();
        const std::int32_t lines = components[0]->module->CountOfLines();
        EXPECT_EQ(components[1]->module->CountOfLines(), lines);
        EXPECT_GE(lines, last);
        last = lines;
    }
    EXPECT_EQ(one.Answer(), "done");
    EXPECT_EQ(two.Answer(), "done");
    project.Open();
    EXPECT_EQ(project.module(0).CountOfLines(), 2 * rounds + 1);
    EXPECT_EQ(project.folder.Files().size(), 3U);
}

TEST(Recovery, RemovesTemporariesThatNoJournalNames) {
    SavedProject project({{"p/a.bas", "Dim a\n"},
                          {"p/.lintara-0123456789abcdef-7.tmp", "lost"},
                          {"p/.lintara-notes", "mine"},
                          {"p/x.tmp", "mine"}},
                         "p");
    const auto done = Recover(project.path());
    ASSERT_TRUE(done.has_value());
    EXPECT_EQ(done->size(), 1U);
    EXPECT_EQ(project.folder.Files(),
              (Files{{"p/a.bas", "Dim a\n"}, {"p/.lintara-notes", "mine"}, {"p/x.tmp", "mine"}}));
}

TEST(Recovery, OfAPathThatIsNotThereIsAnError) {
    EXPECT_FALSE(Recover("/nonexistent/x.vbp").has_value());
}

}  // namespace
}  // namespace lintara::workspace
