#include "workspace/save.h"

#include "tests/support/other_process.h"
#include "tests/workspace/saved_project.h"
#include "workspace/write_file.h"

#include <csignal>
#include <fstream>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;
using Files = SavedProject::Files;

const Files twoModules = {
    {"p.vbp", "Module=a; a.bas\r\nModule=b; b.bas\r\n"}, {"a.bas", "Dim a\r\n"}, {"b.bas", "Dim b\r\n"}};
const Files twoModulesEdited = {{"p.vbp", "Module=a; a.bas\r\nModule=b; b.bas\r\n"},
                                {"a.bas", "'edited\r\nDim a\r\n"},
                                {"b.bas", "'edited\r\nDim b\r\n"}};

TEST(Save, WritesWhatWasEditedAndLeavesNothingBehind) {
    SavedProject project(twoModules, "p.vbp");
    project.Open();
    project.EditAll();
    const auto saved = Save(project.workspace, {});
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(*saved, (std::vector<fs::path>{project.folder / "a.bas", project.folder / "b.bas"}));
    EXPECT_EQ(project.folder.Files(), twoModulesEdited);
}

TEST(Save, LeavesFilesAloneThatWereNotEdited) {
    SavedProject project(twoModules, "p.vbp");
    project.Open();
    struct stat before {};
    ASSERT_EQ(::stat((project.folder / "b.bas").c_str(), &before), 0);
    ASSERT_TRUE(project.module(0).InsertLines(Line{1}, u"'edited").has_value());
    ASSERT_TRUE(project.module(1).InsertLines(Line{1}, u"'edited").has_value());
    ASSERT_TRUE(project.module(1).DeleteLines(Line{1}, 1).has_value());
    const std::vector<ChangedFile> changed = ChangedFiles(project.workspace);
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(changed.front().component->name, u"a");
    EXPECT_EQ(changed.front().project, project.workspace.projects().front().get());
    EXPECT_EQ(Save(project.workspace, {}).value(), std::vector<fs::path>{project.folder / "a.bas"});
    struct stat after {};
    ASSERT_EQ(::stat((project.folder / "b.bas").c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(project.folder.Files().size(), 3U);
}

TEST(Save, ShowsWhatTheFilesHeldBeforeItGoes) {
    for (const std::string suffix : {"", ".bak"}) {
        SavedProject project(twoModules, "p.vbp");
        project.Open();
        project.EditAll();
        int calls = 0;
        SaveOptions options;
        options.backupSuffix = suffix;
        options.replaced = [&](const std::vector<ReplacedFile>& files) {
            ++calls;
            ASSERT_EQ(files.size(), 2U);
            for (const ReplacedFile& file : files) {
                const std::string name = file.path.filename();
                EXPECT_EQ(support::ReadBytes(file.old), twoModules.at(name));
                EXPECT_EQ(file.before, MarkOf(twoModules.at(name)));
                EXPECT_EQ(file.after, MarkOf(support::ReadBytes(file.path)));
                EXPECT_EQ(support::ReadBytes(file.path), twoModulesEdited.at(name));
            }
        };
        ASSERT_TRUE(Save(project.workspace, options)) << suffix;
        EXPECT_EQ(calls, 1) << suffix;
        ASSERT_TRUE(Save(SavedProject(twoModules, "p.vbp").workspace, options));
        EXPECT_EQ(calls, 1) << "nothing was replaced";
    }
}

TEST(Save, OfNothingDoesNothing) {
    SavedProject project(twoModules, "p.vbp");
    EXPECT_TRUE(Save(project.workspace, {}).value().empty());
    project.Open();
    project.workspace.Find(u"p")->Add(std::make_unique<Component>()).module = Module::FromText(u"in memory");
    EXPECT_TRUE(project.workspace.Find(u"p")->Find(u"")->module->DeleteLines(Line{1}, 1).has_value());
    EXPECT_TRUE(ChangedFiles(project.workspace).empty());
    EXPECT_TRUE(Save(project.workspace, {}).value().empty());
    EXPECT_EQ(project.folder.Files(), twoModules);
}

std::string EveryByte() {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

TEST(Save, KeepsEveryByteOfLinesThatNoEditTouchedAndOfThoseThatWereRestored) {
    std::string utf16 = "\xFF\xFE";
    ASSERT_TRUE(MemoryEncoding()->Encode(u"Dim ä\r\n'\xD800\n\r\nDim b", utf16));
    const Files cases = {
        {"every.bas", EveryByte()},
        {"mixed.bas", "Dim a\r\nDim b\nDim c\rDim d\r\r\n\n\rDim e"},
        {"noend.bas", "Dim a\nDim b"},
        {"blank.bas", "\r\n"},
        {"empty.bas", ""},
        {"utf8.bas",
         "\xEF\xBB\xBF"
         "Dim \xC3\xA4\xFF\xC3\r\n' \xE2\x82"},
        {"utf16.bas", utf16},
        {"head.frm",
         "VERSION 5.00\nBegin VB.Form f\r\n \x81\x8D\nEnd\rAttribute VB_Name = \"f\"\nDim a\r\n"
         "Attribute a.VB_VarHelpID = -1\nDim b"},
    };
    SavedProject project(cases, ".");
    project.Open();
    for (const auto& component : project.workspace.projects().front()->components()) {
        Module& module = *component->module;
        std::string bytes;
        module.AppendCurrentBytes(bytes);
        EXPECT_EQ(bytes, cases.at(component->path.filename().string()));
        for (std::int32_t i = 1; i <= module.CountOfLines(); ++i) {
            Text text;
            module.ReadLine(Line{i}, text);
            ASSERT_TRUE(module.ReplaceLine(Line{i}, u"10000: " + text).has_value());
            ASSERT_TRUE(module.ReplaceLine(Line{i}, text).has_value());
        }
        ASSERT_TRUE(module.InsertLines(Line{module.CountOfLines() + 1}, u"'last").has_value());
        ASSERT_TRUE(module.DeleteLines(Line{module.CountOfLines()}, 1).has_value());
    }
    ASSERT_EQ(project.Save(), "");
    const Files after = project.folder.Files();
    for (const auto& [name, bytes] : cases) {
        if (name == "noend.bas" || name == "mixed.bas" || name == "every.bas" || name == "utf8.bas" ||
            name == "utf16.bas" || name == "head.frm") {
            // The last line got the ending that the line behind it needed, and keeps it.
            EXPECT_EQ(after.at(name).substr(0, bytes.size()), bytes) << name;
        } else {
            EXPECT_EQ(after.at(name), bytes) << name;
        }
    }
}

TEST(Save, KeepsModesAndFollowsLinks) {
    SavedProject project(twoModules, "p.vbp");
    project.folder.Write("elsewhere/real.bas", "Dim a\r\n");
    fs::remove(project.folder / "a.bas");
    fs::create_symlink("elsewhere/real.bas", project.folder / "a.bas");
    ASSERT_EQ(::chmod((project.folder / "elsewhere/real.bas").c_str(), 0640), 0);
    ASSERT_EQ(::chmod((project.folder / "b.bas").c_str(), 02755), 0);
    project.Open();
    project.EditAll();
    ASSERT_EQ(project.Save(), "");
    EXPECT_TRUE(fs::is_symlink(project.folder / "a.bas"));
    EXPECT_EQ(project.folder.Read("elsewhere/real.bas"), "'edited\r\nDim a\r\n");
    struct stat status {};
    ASSERT_EQ(::stat((project.folder / "elsewhere/real.bas").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
    ASSERT_EQ(::stat((project.folder / "b.bas").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 02755U);
    EXPECT_EQ(project.folder.Files().size(), 4U);
}

TEST(Save, KeepsTheOwnerWhereItMay) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only the superuser may give files away";
    }
    SavedProject project(twoModules, "p.vbp");
    ASSERT_EQ(::chown((project.folder / "a.bas").c_str(), 12345, 54321), 0);
    project.Open();
    project.EditAll();
    ASSERT_EQ(project.Save(), "");
    struct stat status {};
    ASSERT_EQ(::stat((project.folder / "a.bas").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 12345U);
    EXPECT_EQ(status.st_gid, 54321U);
}

TEST(Save, KeepsBackupsWhenAsked) {
    SavedProject project(twoModules, "p.vbp");
    project.folder.Write("a.bas.bak", "an older backup");
    project.Open();
    project.EditAll();
    SaveOptions options;
    options.backupSuffix = ".bak";
    ASSERT_EQ(project.Save(options), "");
    Files expected = twoModulesEdited;
    expected["a.bas.bak"] = "Dim a\r\n";
    expected["b.bas.bak"] = "Dim b\r\n";
    EXPECT_EQ(project.folder.Files(), expected);
}

TEST(Save, RefusesBackupsThatWouldReplaceOtherThings) {
    SavedProject project({{"p.vbp", "Module=a; a.bas\nModule=b; a.bas.bas\n"},
                          {"a.bas", "Dim a\n"},
                          {"a.bas.bas", "Dim b\n"},
                          {"a.bas~/x", ""}},
                         "p.vbp");
    const Files before = project.folder.Files();
    project.Open();
    project.EditAll();
    for (const auto& [suffix, message] : {std::pair{"~", "is no regular file"},
                                          {".bas", "belongs to the project"},
                                          {"/../x", "another folder"}}) {
        SaveOptions options;
        options.backupSuffix = suffix;
        EXPECT_TRUE(project.Save(options).contains(message)) << suffix;
        EXPECT_EQ(project.folder.Files(), before);
    }
}

TEST(Save, RefusesBackupsInThePlaceOfFilesThatAreNotEdited) {
    for (const std::string suffix : {".bas", ".vbp", ".frx"}) {
        SavedProject project({{"a.bas.vbp", "Module=a; a.bas\nModule=b; a.bas.bas\nRelatedDoc=a.bas.frx\n"},
                              {"a.bas", "Dim a\n"},
                              {"a.bas.bas", "Dim b\n"},
                              {"a.bas.frx", "not to be lost"}},
                             "a.bas.vbp");
        const Files before = project.folder.Files();
        project.Open();
        ASSERT_TRUE(project.module(0).InsertLines(Line{1}, u"'edited").has_value());
        SaveOptions options;
        options.backupSuffix = suffix;
        EXPECT_TRUE(project.Save(options).contains("a.bas" + suffix + ": belongs to the project")) << suffix;
        EXPECT_EQ(project.folder.Files(), before);
    }
}

// Each of these makes the save fail; everything must stay as it is.
void ExpectRefusal(SavedProject& project, const std::string& message) {
    const Files before = project.folder.Files();
    const std::string errors = project.Save();
    EXPECT_TRUE(errors.contains(message)) << errors;
    EXPECT_EQ(project.folder.Files(), before);
}

TEST(Save, RefusesCharactersThatAFileCannotHold) {
    SavedProject project(twoModules, "p.vbp");
    project.folder.Write("b.bas", "Attribute VB_Name = \"b\"\r\nDim b\r\nDim c\r\n");
    project.Open();
    project.EditAll();
    ASSERT_TRUE(project.module(1).ReplaceLine(Line{3}, u"Dim c ' \u4E2D").has_value());
    ExpectRefusal(
        project,
        "b.bas:3: the character U+4E2D (\xE4\xB8\xAD) in column 9 of the line cannot be written in the "
        "file's code page windows-1252");
}

TEST(Save, TellsWhereALineWithSuchACharacterWouldBeInserted) {
    SavedProject ahead(twoModules, "p.vbp");
    ahead.folder.Write("b.bas", "Attribute VB_Name = \"b\"\r\nDim b\r\nDim c\r\n");
    ahead.Open();
    ASSERT_TRUE(ahead.module(1).InsertLines(Line{1}, u"'one\r\n'two").has_value());
    ASSERT_TRUE(ahead.module(1).InsertLines(Line{4}, u"'\u4E2D").has_value());
    ExpectRefusal(ahead,
                  "b.bas:3: the character U+4E2D (\xE4\xB8\xAD) in column 2 of a line that would be inserted "
                  "ahead of line 3 cannot be written");
    ahead.Open();
    ASSERT_TRUE(ahead.module(1).InsertLines(Line{3}, u"'\u4E2D").has_value());
    ExpectRefusal(ahead,
                  "b.bas:3: the character U+4E2D (\xE4\xB8\xAD) in column 2 of a line that would be inserted "
                  "after line 3 cannot be written");
}

TEST(Save, RefusesFilesThatChangedOnDisk) {
    SavedProject project(twoModules, "p.vbp");
    project.Open();
    project.EditAll();
    project.folder.Write("b.bas", "Dim changed\r\n");
    ExpectRefusal(project, "b.bas: changed on disk since it was read");
    fs::remove(project.folder / "b.bas");
    ExpectRefusal(project, "b.bas: was deleted since it was read");
    fs::create_directory(project.folder / "b.bas");
    ExpectRefusal(project, "b.bas: is a folder");
}

TEST(Save, AcceptsFilesThatWereWrittenAgainWithTheSameContent) {
    SavedProject project(twoModules, "p.vbp");
    project.Open();
    project.EditAll();
    fs::remove(project.folder / "b.bas");
    project.folder.Write("b.bas", "Dim b\r\n");
    EXPECT_EQ(project.Save(), "");
    EXPECT_EQ(project.folder.Files(), twoModulesEdited);
}

TEST(Save, RefusesReadOnlyFilesToTheSuperuserToo) {
    SavedProject project(twoModules, "p.vbp");
    fs::permissions(project.folder / "b.bas", fs::perms::owner_read);
    project.Open();
    project.EditAll();
    ExpectRefusal(project, "b.bas: is read-only");
}

TEST(Save, RefusesAFolderThatCannotBeWritten) {
    SavedProject project(twoModules, "p.vbp");
    fs::permissions(project.folder.path(), fs::perms::owner_read | fs::perms::owner_exec);
    const Files before = project.folder.Files();
    const std::string errors = support::AsOrdinaryUser(project.folder.path(), [&] {
        project.Open();
        project.EditAll();
        return project.Save();
    });
    EXPECT_TRUE(errors.contains(": cannot be written: Permission denied")) << errors;
    EXPECT_EQ(project.folder.Files(), before);
    fs::permissions(project.folder.path(), fs::perms::owner_all);
}

TEST(Save, RefusesWhenOneOfSeveralFoldersCannotBeWritten) {
    SavedProject project({{"p/p.vbp", "Module=a; a.bas\nModule=b; ..\\shared\\b.bas\n"},
                          {"p/a.bas", "Dim a\n"},
                          {"shared/b.bas", "Dim b\n"}},
                         "p/p.vbp");
    const Files before = project.folder.Files();
    fs::permissions(project.folder / "shared", fs::perms::owner_read | fs::perms::owner_exec);
    const std::string errors = support::AsOrdinaryUser(project.folder.path(), [&] {
        project.Open();
        project.EditAll();
        return project.Save();
    });
    EXPECT_TRUE(errors.contains("Permission denied")) << errors;
    EXPECT_EQ(project.folder.Files(), before);
}

TEST(Save, AFullDiskChangesNothing) {
    SavedProject project(twoModules, "p.vbp");
    project.folder.Write("b.bas", std::string(20'000, '\'') + "\r\n");
    const Files before = project.folder.Files();
    const std::string errors = support::InOtherProcess([&] {
        project.Open();
        project.EditAll();
        const rlimit limit{8192, 8192};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            return std::string("no limit");
        }
        // The signal stays as it is: the save itself has to hold it back.
        return project.Save();
    });
    EXPECT_TRUE(errors.contains("b.bas: cannot be written: File too large")) << errors;
    EXPECT_EQ(project.folder.Files(), before);
}

TEST(Save, ASmallFileSystemThatFillsUpChangesNothing) {
    const support::TemporaryFolder place;
    const fs::path disk = place / "disk";
    fs::create_directory(disk);
    if (::mount("none", disk.c_str(), "tmpfs", 0, "size=64k") != 0) {
        GTEST_SKIP() << "no file system can be mounted here";
    }
    std::string errors;
    Files before;
    Files after;
    {
        place.Write("disk/p.vbp", "Module=a; a.bas\nModule=b; b.bas\n");
        place.Write("disk/a.bas", "Dim a\n");
        place.Write("disk/b.bas", std::string(40'000, '\'') + "\n");
        before = place.Files();
        Workspace workspace;
        ASSERT_TRUE(Open(workspace, disk / "p.vbp", {}).has_value());
        for (const auto& component : workspace.projects().front()->components()) {
            ASSERT_TRUE(component->module->InsertLines(Line{1}, u"'edited").has_value());
        }
        const auto saved = Save(workspace, {});
        errors = saved ? "" : Sentences(saved.error());
        after = place.Files();
    }
    ::umount(disk.c_str());
    EXPECT_TRUE(errors.contains("No space left on device")) << errors;
    EXPECT_EQ(after, before);
}

TEST(Save, AnErrorWhileFilesAreReplacedPutsAllBack) {
    // The third step of this kind of sabotage removes the new content of a file just before it is to take its
    // place.
    SavedProject project(twoModules, "p.vbp");
    project.Open();
    project.EditAll();
    SaveOptions options;
    bool removed = false;
    options.beforeStep = [&] {
        // As soon as the first file is new, the other's content goes.
        if (removed || project.folder.Read("a.bas") == "Dim a\r\n") {
            return;
        }
        for (const auto& [name, bytes] : project.folder.Files()) {
            if (bytes == "'edited\r\nDim b\r\n") {
                removed = fs::remove(project.folder / name);
            }
        }
    };
    const std::string errors = project.Save(options);
    EXPECT_TRUE(removed);
    EXPECT_TRUE(errors.contains("b.bas: cannot be replaced: No such file or directory")) << errors;
    EXPECT_EQ(project.folder.Files(), twoModules);
}

TEST(Save, AFileThatChangesDuringTheSaveIsKept) {
    SavedProject project(twoModules, "p.vbp");
    project.Open();
    project.EditAll();
    SaveOptions options;
    options.beforeStep = [&] {
        if (project.folder.Read("a.bas") != "Dim a\r\n") {
            project.folder.Write("b.bas", "Dim somebodyElse\r\n");
        }
    };
    const std::string errors = project.Save(options);
    EXPECT_TRUE(errors.contains("b.bas: changed on disk while it was being saved")) << errors;
    Files expected = twoModules;
    expected["b.bas"] = "Dim somebodyElse\r\n";
    EXPECT_EQ(project.folder.Files(), expected);
}

// Until everything is in place; what is left to do then is done by the next run.
TEST(Save, NothingIsChangedWhenMemoryEnds) {
    bool isNew = false;
    for (int end = 0; !isNew; ++end) {
        SavedProject project(twoModules, "p.vbp");
        project.Open();
        project.EditAll();
        SaveOptions options;
        int steps = 0;
        options.beforeStep = [&] {
            if (steps++ == end) {
                throw std::bad_alloc();
            }
        };
        bool isSaved = false;
        try {
            isSaved = project.Save(options).empty();
        } catch (const std::bad_alloc&) {
            EXPECT_GT(steps, end);
        }
        isNew = project.folder.Read("a.bas") != twoModules.at("a.bas");
        project.Open();
        if (isNew) {
            EXPECT_EQ(project.folder.Read("a.bas"), "'edited\r\nDim a\r\n");
            EXPECT_EQ(project.folder.Read("b.bas"), "'edited\r\nDim b\r\n");
            EXPECT_EQ(project.folder.Files().size(), twoModules.size());
        } else {
            EXPECT_FALSE(isSaved);
            EXPECT_EQ(project.folder.Files(), twoModules) << end;
        }
    }
}

TEST(Save, TwoNamesOfAFileInTwoProjectsAreBothWritten) {
    SavedProject project({{"g.vbg", "Project=x.vbp\nProject=y.vbp\n"},
                          {"x.vbp", "Module=s; s.bas\n"},
                          {"y.vbp", "Module=t; t.bas\n"},
                          {"s.bas", "Dim s\n"}},
                         "g.vbg");
    fs::create_hard_link(project.folder / "s.bas", project.folder / "t.bas");
    project.Open();
    project.EditAll();
    EXPECT_EQ(project.Save(), "");
    EXPECT_EQ(project.folder.Read("s.bas"), "'edited\nDim s\n");
    EXPECT_EQ(project.folder.Read("t.bas"), "'edited\nDim s\n");
    EXPECT_EQ(project.folder.Files().size(), 5U);
}

TEST(Save, AFileThatTwoProjectsShareIsWrittenOnce) {
    const Files files = {{"g.vbg", "Project=x.vbp\nProject=y.vbp\n"},
                         {"x.vbp", "Module=s; s.bas\n"},
                         {"y.vbp", "Module=s; s.bas\n"},
                         {"s.bas", "Dim s\n"}};
    SavedProject project(files, "g.vbg");
    project.Open();
    project.EditAll();
    EXPECT_EQ(Save(project.workspace, {}).value().size(), 1U);
    EXPECT_EQ(project.folder.Read("s.bas"), "'edited\nDim s\n");
    project.Open();
    ASSERT_TRUE(project.module(0).InsertLines(Line{1}, u"'x").has_value());
    ASSERT_TRUE(
        project.workspace.projects()[1]->components()[0]->module->InsertLines(Line{1}, u"'y").has_value());
    ExpectRefusal(project, "s.bas: belongs to the projects x and y, which edited it differently");
}

TEST(Save, ManyFilesInManyFoldersAreAllWritten) {
    Files files;
    Files edited;
    std::string list;
    for (int i = 0; i < 200; ++i) {
        const std::string name = "sub" + std::to_string(i % 7) + "/m" + std::to_string(i) + ".bas";
        files[name] = "Dim m\r\n";
        edited[name] = "'edited\r\nDim m\r\n";
        list += "Module=m" + std::to_string(i) + "; " + name + "\r\n";
    }
    files["p.vbp"] = edited["p.vbp"] = list;
    SavedProject project(files, "p.vbp");
    project.Open();
    project.EditAll();
    SaveOptions options;
    std::size_t last = 0;
    options.progress = [&](std::size_t done, std::size_t total) {
        EXPECT_EQ(total, 200U);
        EXPECT_LE(last, done);
        last = done;
    };
    ASSERT_EQ(project.Save(options), "");
    EXPECT_EQ(last, 200U);
    EXPECT_EQ(project.folder.Files(), edited);
}

TEST(Exchange, InStepsEndsAsInOne) {
    for (const auto exchange : {&Exchange, &ExchangeInSteps}) {
        const support::TemporaryFolder folder;
        folder.Write(".lintara-1-0.tmp", "new");
        folder.Write("a.bas", "old");
        EXPECT_TRUE(exchange(folder / ".lintara-1-0.tmp", folder / "a.bas").has_value());
        EXPECT_EQ(folder.Files(), (Files{{".lintara-1-0.tmp", "old"}, {"a.bas", "new"}}));
    }
}

TEST(Exchange, WithoutNewContentChangesNothing) {
    for (const auto exchange : {&Exchange, &ExchangeInSteps}) {
        const support::TemporaryFolder folder;
        folder.Write("a.bas", "old");
        EXPECT_FALSE(exchange(folder / ".lintara-1-0.tmp", folder / "a.bas").has_value());
        EXPECT_EQ(folder.Files(), (Files{{"a.bas", "old"}}));
    }
}

}  // namespace
}  // namespace lintara::workspace
