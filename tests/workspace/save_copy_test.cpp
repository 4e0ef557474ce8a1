#include "tests/support/other_process.h"
#include "tests/workspace/saved_project.h"
#include "workspace/save.h"

#include <new>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;
using Files = SavedProject::Files;
using support::TemporaryFolder;

std::string Copied(const SavedProject& project, const fs::path& output) {
    const auto copied = SaveCopy(project.workspace, output, {});
    return copied ? "" : Sentences(copied.error());
}

const Files invoicing = {
    {"app/App.vbp",
     "Form=frmMain.frm\nModule=m; ..\\SHARED\\m.bas\nClass=c; sub\\c.cls\nResFile32=\"app.RES\"\n"
     "RelatedDoc=gone.txt\n"},
    {"app/frmMain.frm", "VERSION 5.00\nBegin VB.Form f\nEnd\nDim f\n"},
    {"app/FRMMAIN.FRX", std::string("\0\1\2", 3)},
    {"app/app.res", "resource"},
    {"app/unrelated.frx", "other"},
    {"app/sub/c.cls", "Dim c\n"},
    {"shared/m.bas", "Dim m\n"},
    {"shared/other.bas", "Dim other\n"},
};

TEST(SaveCopy, HoldsAllThatBelongsToTheProjectWithTheEditsInIt) {
    SavedProject project(invoicing, "app/App.vbp");
    project.Open();
    ASSERT_TRUE(project.module(1).InsertLines(Line{1}, u"'edited").has_value());
    const TemporaryFolder output;
    const auto copied = SaveCopy(project.workspace, output / "deep/er", {});
    ASSERT_TRUE(copied.has_value()) << Sentences(copied.error());
    Files expected;
    for (const auto& [name, bytes] : invoicing) {
        if (name != "app/unrelated.frx" && name != "shared/other.bas") {
            expected["deep/er/" + name] = bytes;
        }
    }
    expected["deep/er/shared/m.bas"] = "'edited\nDim m\n";
    EXPECT_EQ(output.Files(), expected);
    EXPECT_EQ(copied->size(), expected.size());
    EXPECT_EQ(project.folder.Files(), invoicing);
    Workspace again;
    EXPECT_TRUE(Open(again, output / "deep/er/app/App.vbp", {}).has_value());
}

TEST(SaveCopy, OfAGroupHoldsTheGroupToo) {
    const Files files = {{"g/g.vbg", "Project=x.vbp\nProject=..\\y\\y.vbp\n"},
                         {"g/x.vbp", "Module=a; a.bas\nModule=s; ..\\s.bas\n"},
                         {"y/y.vbp", "Module=b; b.bas\nModule=s; ..\\s.bas\n"},
                         {"g/a.bas", "Dim a\n"},
                         {"y/b.bas", "Dim b\n"},
                         {"s.bas", "Dim s\n"}};
    SavedProject project(files, "g/g.vbg");
    project.Open();
    // What either project did to the file that they share is in the copy.
    ASSERT_TRUE(project.workspace.projects()[1]
                    ->components()[1]
                    ->module->InsertLines(Line{1}, u"'edited")
                    .has_value());
    const TemporaryFolder output;
    ASSERT_EQ(Copied(project, output.path()), "");
    Files expected = files;
    expected["s.bas"] = "'edited\nDim s\n";
    EXPECT_EQ(output.Files(), expected);
    ASSERT_TRUE(project.module(1).InsertLines(Line{1}, u"'differently").has_value());
    EXPECT_TRUE(Copied(project, output.path()).contains("edited it differently"));
}

TEST(SaveCopy, OfAFolderOrAComponentHoldsTheComponents) {
    const Files files = {
        {"p/a.bas", "Dim a\n"}, {"p/f.frm", "Dim f\n"}, {"p/f.frx", "x"}, {"p/notes.txt", "x"}};
    SavedProject folder(files, "p");
    folder.Open();
    const TemporaryFolder output;
    ASSERT_EQ(Copied(folder, output.path()), "");
    EXPECT_EQ(output.Files(), (Files{{"a.bas", "Dim a\n"}, {"f.frm", "Dim f\n"}, {"f.frx", "x"}}));
    SavedProject single(files, "p/f.frm");
    single.Open();
    const TemporaryFolder other;
    ASSERT_EQ(Copied(single, other.path()), "");
    EXPECT_EQ(other.Files(), (Files{{"f.frm", "Dim f\n"}, {"f.frx", "x"}}));
}

TEST(SaveCopy, ReplacesFilesOfAnEarlierCopyAndNothingElse) {
    SavedProject project({{"p/a.bas", "Dim a\n"}}, "p");
    project.Open();
    project.EditAll();
    const TemporaryFolder output;
    output.Write("a.bas", "an earlier copy");
    output.Write("mine.txt", "mine");
    ASSERT_EQ(Copied(project, output.path()), "");
    EXPECT_EQ(output.Files(), (Files{{"a.bas", "'edited\nDim a\n"}, {"mine.txt", "mine"}}));
}

TEST(SaveCopy, NeverReplacesASource) {
    SavedProject project(invoicing, "app/App.vbp");
    project.Open();
    project.EditAll();
    for (const char* const output : {"", ".", "app/.."}) {
        const std::string errors = Copied(project, project.folder / output);
        EXPECT_TRUE(errors.contains("would replace the source")) << output << errors;
    }
    // Also not by way of a link.
    const TemporaryFolder other;
    fs::create_directory_symlink(project.folder.path(), other / "link");
    EXPECT_TRUE(Copied(project, other / "link").contains("would replace the source"));
    fs::create_directory_symlink(project.folder / "app", other / "app");
    EXPECT_NE(Copied(project, other.path()), "");
    EXPECT_EQ(project.folder.Files(), invoicing);
}

TEST(SaveCopy, MayLieInsideTheProject) {
    SavedProject project({{"p/a.bas", "Dim a\n"}}, "p");
    project.Open();
    project.EditAll();
    ASSERT_EQ(Copied(project, project.folder / "p/out"), "");
    EXPECT_EQ(project.folder.Files(), (Files{{"p/a.bas", "Dim a\n"}, {"p/out/a.bas", "'edited\nDim a\n"}}));
}

TEST(SaveCopy, DoesNotFollowLinksThatLeadOut) {
    SavedProject project(invoicing, "app/App.vbp");
    project.Open();
    const TemporaryFolder elsewhere;
    elsewhere.Write("precious.bas", "precious");
    const TemporaryFolder output;
    fs::create_directory_symlink(elsewhere.path(), output / "shared");
    EXPECT_TRUE(Copied(project, output.path()).contains("shared: is a link"));
    fs::remove(output / "shared");
    fs::create_directory(output / "shared");
    fs::create_symlink(elsewhere / "precious.bas", output / "shared/m.bas");
    EXPECT_TRUE(Copied(project, output.path()).contains("m.bas: is there and is no regular file"));
    EXPECT_EQ(elsewhere.Files(), (Files{{"precious.bas", "precious"}}));
    EXPECT_TRUE(fs::is_empty(output / "shared") || fs::is_symlink(output / "shared/m.bas"));
    EXPECT_FALSE(fs::exists(output / "app"));
}

TEST(SaveCopy, LeavesNothingBehindWhenItFails) {
    SavedProject project(invoicing, "app/App.vbp");
    project.Open();
    ASSERT_TRUE(project.module(2).InsertLines(Line{1}, u"' \u4E2D").has_value());
    const TemporaryFolder output;
    EXPECT_TRUE(Copied(project, output / "new").contains("c.cls:1: the character U+4E2D"));
    EXPECT_TRUE(fs::is_empty(output.path()));
    ASSERT_TRUE(project.module(2).DeleteLines(Line{1}, 1).has_value());
    output.Write("file", "");
    EXPECT_TRUE(Copied(project, output / "file").contains("is a file where a folder is needed"));
    EXPECT_TRUE(Copied(project, output / "file/below").contains("file"));
    fs::permissions(output.path(), fs::perms::owner_read | fs::perms::owner_exec);
    const std::string errors =
        support::AsOrdinaryUser(output.path(), [&] { return Copied(project, output / "new"); });
    EXPECT_TRUE(errors.contains("Permission denied") || errors.contains("cannot be")) << errors;
    EXPECT_EQ(output.Files(), (Files{{"file", ""}}));
}

TEST(SaveCopy, LeavesNothingBehindWhenMemoryEnds) {
    SavedProject project(invoicing, "app/App.vbp");
    project.Open();
    project.EditAll();
    bool isThere = false;
    for (int end = 0; !isThere; ++end) {
        const TemporaryFolder output;
        SaveOptions options;
        int steps = 0;
        options.beforeStep = [&] {
            if (steps++ == end) {
                throw std::bad_alloc();
            }
        };
        try {
            ASSERT_TRUE(SaveCopy(project.workspace, output / "new", options));
            isThere = true;
        } catch (const std::bad_alloc&) {
            // What has begun to take its place is marked.
            EXPECT_TRUE(fs::is_empty(output.path()) || fs::exists(output / "new/.lintara-copy")) << end;
        }
    }
}

TEST(SaveCopy, AFolderInTheMarksPlaceIsNoCopy) {
    SavedProject project(invoicing, "app/App.vbp");
    project.Open();
    const TemporaryFolder output;
    fs::create_directory(output / ".lintara-copy");
    EXPECT_TRUE(
        Copied(project, output.path()).contains(".lintara-copy: is a folder, not a file; lintara keeps"));
    EXPECT_TRUE(output.Files().empty());
}

TEST(SaveCopy, AResourceThatCannotBeReadIsNamed) {
    SavedProject project({{"p/f.frm", "VERSION 5.00\nBegin VB.Form f\nEnd\nDim f\n"}}, "p");
    const TemporaryFolder output;
    const fs::path resource = project.folder / "p/f.frx";
    project.Open();
    fs::create_symlink("/dev/zero", resource);
    EXPECT_EQ(Copied(project, output / "a"), resource.string() + ": is a device, not a file\n");
    fs::remove(resource);
    fs::create_symlink("nowhere", resource);
    EXPECT_EQ(Copied(project, output / "b"),
              resource.string() + ": cannot be read: No such file or directory\n");
    fs::remove(resource);
    ASSERT_EQ(::mkfifo(resource.c_str(), 0600), 0);
    EXPECT_EQ(Copied(project, output / "c"), resource.string() + ": is a pipe, not a file\n");
    EXPECT_TRUE(fs::is_empty(output.path()));
}

TEST(SaveCopy, KeepsModesAndMakesTheCopyWritable) {
    SavedProject project({{"p/a.bas", "Dim a\n"}, {"p/b.bas", "Dim b\n"}}, "p");
    ASSERT_EQ(::chmod((project.folder / "p/a.bas").c_str(), 0440), 0);
    ASSERT_EQ(::chmod((project.folder / "p/b.bas").c_str(), 0755), 0);
    project.Open();
    const TemporaryFolder output;
    ASSERT_EQ(Copied(project, output.path()), "");
    struct stat status {};
    ASSERT_EQ(::stat((output / "a.bas").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    ASSERT_EQ(::stat((output / "b.bas").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0755U);
}

}  // namespace
}  // namespace lintara::workspace
