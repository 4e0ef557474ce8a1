#include "workspace/open.h"

#include "tests/support/other_process.h"
#include "tests/support/project_generator.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;
using hostmodel::ComponentType;
using support::TemporaryFolder;

constexpr const char* classHead = "VERSION 1.0 CLASS\r\nBEGIN\r\nEND\r\n";

std::string Sentences(const Diagnostics& diagnostics, const TemporaryFolder& folder) {
    std::string sentences;
    const std::string prefix = folder.path().string() + "/";
    for (const Diagnostic& each : diagnostics) {
        std::string sentence = each.ToString() + "\n";
        for (std::size_t at = 0; (at = sentence.find(prefix, at)) != std::string::npos;) {
            sentence.erase(at, prefix.size());
        }
        sentences += sentence;
    }
    return sentences;
}

class OpenTest : public testing::Test {
  protected:
    // The warnings; the open must succeed.
    std::string Opened(std::string_view name) {
        const auto result = Open(workspace_, folder_ / name, options_);
        EXPECT_TRUE(result.has_value()) << Sentences(result.error(), folder_);
        return result ? Sentences(*result, folder_) : "";
    }
    // The errors; the workspace must stay as it was.
    std::string Refused(std::string_view name) {
        const std::size_t before = workspace_.projects().size();
        const auto result = Open(workspace_, folder_ / name, options_);
        EXPECT_FALSE(result.has_value());
        EXPECT_EQ(workspace_.projects().size(), before);
        return result ? "" : Sentences(result.error(), folder_);
    }
    // "Project: name type path ..." of what is open.
    std::vector<std::string> Components() {
        std::vector<std::string> list;
        for (const auto& project : workspace_.projects()) {
            for (const auto& component : project->components()) {
                list.push_back(ToUtf8(project->name()) + ": " + ToUtf8(component->name) + " " +
                               std::to_string(static_cast<int>(component->type)) + " " +
                               component->path.lexically_relative(folder_.path()).string());
            }
        }
        return list;
    }

    TemporaryFolder folder_;
    Workspace workspace_;
    OpenOptions options_;
};

using Expected = std::vector<std::string>;

TEST_F(OpenTest, AProjectFileGivesItsComponentsInOrder) {
    folder_.Write("App.vbp",
                  "Module=modZ; modZ.bas\r\nForm=Forms\\FRMMAIN.FRM\r\nClass=CNamed; c.cls\r\n"
                  "Module=modShared; ..\\Shared\\s.bas\r\nName=\"Invoicing\"\r\n");
    folder_.Write("modZ.bas", "Attribute VB_Name = \"modOwn\"\r\nDim a\r\n");
    folder_.Write("forms/frmMain.frm",
                  "VERSION 5.00\r\nBegin VB.MDIForm f\r\nEnd\r\nAttribute VB_Name = \"frmMain\"\r\n");
    folder_.Write("c.cls", classHead);
    fs::rename(folder_ / "App.vbp", folder_.Write("app/App.vbp", ""));
    for (const char* const moved : {"modZ.bas", "c.cls"}) {
        fs::rename(folder_ / moved, folder_ / ("app/" + std::string(moved)));
    }
    fs::rename(folder_ / "forms", folder_ / "app/forms");
    folder_.Write("shared/s.bas", "Dim s\r\n");
    EXPECT_EQ(Opened("app/App.vbp"), "");
    EXPECT_EQ(Components(),
              (Expected{"Invoicing: modOwn 1 app/modZ.bas", "Invoicing: frmMain 6 app/forms/frmMain.frm",
                        "Invoicing: CNamed 2 app/c.cls", "Invoicing: modShared 1 shared/s.bas"}));
    EXPECT_EQ(workspace_.activeProject(), workspace_.projects().front().get());
    const Component& module = *workspace_.projects().front()->components().front();
    EXPECT_EQ(module.module->AllText(), u"Dim a");
}

TEST_F(OpenTest, AProjectWithoutANameIsNamedAfterItsFile) {
    folder_.Write("Old Project.vbp", "Module=m; m.bas\n");
    folder_.Write("m.bas", "Dim a\n");
    Opened("Old Project.vbp");
    EXPECT_EQ(workspace_.projects().front()->name(), u"Old Project");
}

TEST_F(OpenTest, AGroupGivesEveryProjectAndTheStartupProjectIsActive) {
    folder_.Write("g.vbg", "VBGROUP 5.0\r\nProject=lib\\lib.vbp\r\nStartupProject=App.vbp\r\n");
    folder_.Write("lib/Lib.vbp", "Module=m; m.bas\r\nName=\"Lib\"\r\n");
    folder_.Write("lib/m.bas", "Dim a\r\n");
    folder_.Write("App.vbp", "Module=m; m.bas\r\nName=\"App\"\r\n");
    folder_.Write("m.bas", "Dim a\r\n");
    EXPECT_EQ(Opened("g.vbg"), "");
    EXPECT_EQ(Components(), (Expected{"Lib: m 1 lib/m.bas", "App: m 1 m.bas"}));
    EXPECT_EQ(workspace_.activeProject()->name(), u"App");
}

TEST_F(OpenTest, AFolderGivesTheComponentsDirectlyInIt) {
    folder_.Write("macros/b.bas", "Dim a\n");
    folder_.Write("macros/A.BAS", "Dim a\n");
    folder_.Write("macros/c.Cls", classHead);
    folder_.Write("macros/.hidden.bas", "Dim a\n");
    folder_.Write("macros/notes.txt", "");
    folder_.Write("macros/a.frx", "");
    folder_.Write("macros/deeper/z.bas", "Dim a\n");
    Opened("macros");
    EXPECT_EQ(Components(),
              (Expected{"macros: A 1 macros/A.BAS", "macros: b 1 macros/b.bas", "macros: c 2 macros/c.Cls"}));
}

TEST_F(OpenTest, RecursiveTakesWhatLiesBelowAFolderInPathOrder) {
    folder_.Write("macros/m.bas", "Dim a\n");
    folder_.Write("macros/z/y.bas", "Dim a\n");
    folder_.Write("macros/a/x.bas", "Dim a\n");
    folder_.Write("macros/.git/no.bas", "Dim a\n");
    folder_.Write("elsewhere/no.bas", "Dim a\n");
    fs::create_directory_symlink(folder_ / "elsewhere", folder_ / "macros/link");
    fs::create_directory_symlink(folder_ / "macros", folder_ / "macros/z/loop");
    options_.recursive = true;
    Opened("macros");
    EXPECT_EQ(Components(), (Expected{"macros: x 1 macros/a/x.bas", "macros: m 1 macros/m.bas",
                                      "macros: y 1 macros/z/y.bas"}));
}

TEST_F(OpenTest, FoldersAreNamedHoweverTheyAreWritten) {
    folder_.Write("macros/m.bas", "Dim a\n");
    const fs::path before = fs::current_path();
    fs::current_path(folder_ / "macros");
    for (const char* const path : {".", "./", "../macros/", "../macros"}) {
        Workspace workspace;
        ASSERT_TRUE(Open(workspace, path, options_).has_value()) << path;
        EXPECT_EQ(workspace.projects().front()->name(), u"macros") << path;
    }
    Workspace workspace;
    ASSERT_TRUE(Open(workspace, ".", options_).has_value());
    EXPECT_EQ(workspace.projects().front()->components().front()->path, "m.bas");
    fs::current_path(before);
}

TEST_F(OpenTest, ASingleComponentIsAProjectNamedAfterItsStem) {
    folder_.Write("Report 1.cls", std::string(classHead) + "Attribute VB_Name = \"CReport\"\r\n");
    Opened("Report 1.cls");
    EXPECT_EQ(Components(), Expected{"Report 1: CReport 2 Report 1.cls"});
}

TEST_F(OpenTest, FilesAreReadInTheCodePageUnlessAMarkTellsAnother) {
    options_.codePage = *FindEncoding("1251");
    folder_.Write("p/a.bas", "Attribute VB_Name = \"\xCF\"\n");
    folder_.Write("p/b.bas",
                  "\xEF\xBB\xBF"
                  "Attribute VB_Name = \"\xC3\xA4\"\n");
    Opened("p");
    EXPECT_EQ(Components(), (Expected{"p: П 1 p/a.bas", "p: ä 1 p/b.bas"}));
}

TEST_F(OpenTest, ADesignerIsThatOfTheFile) {
    folder_.Write("f.frm", "VERSION 5.00\nBegin VB.Form f\n Begin VB.Label l\n End\nEnd\n");
    Opened("f.frm");
    const Component& form = *workspace_.projects().front()->components().front();
    ASSERT_TRUE(form.designer.has_value());
    EXPECT_EQ(form.designer->front().className, u"Label");
}

TEST_F(OpenTest, EveryMissingFileIsNamed) {
    folder_.Write("p.vbp", "Module=a; a.bas\nModule=b; sub\\b.bas\nModule=c; c.bas\nForm=C:\\x\\d.frm\n");
    folder_.Write("b.bas", "");
    folder_.Write("c.bas", "Dim a\n");
    const std::string errors = Refused("p.vbp");
    EXPECT_TRUE(errors.contains("p.vbp:1: the component \"a.bas\" is missing")) << errors;
    EXPECT_TRUE(errors.contains("p.vbp:2: the component \"sub\\b.bas\" is missing")) << errors;
    EXPECT_TRUE(errors.contains("p.vbp:4: the component \"C:\\x\\d.frm\" is missing")) << errors;
    EXPECT_EQ(std::ranges::count(errors, '\n'), 3) << errors;
    options_.skipMissing = true;
    const std::string warnings = Opened("p.vbp");
    EXPECT_EQ(std::ranges::count(warnings, '\n'), 3) << warnings;
    EXPECT_EQ(Components(), Expected{"p: c 1 c.bas"});
}

TEST_F(OpenTest, MissingFilesCountAsUnreadableWhereThoseAreLeftOut) {
    folder_.Write("g.vbg", "StartupProject=p.vbp\nProject=no.vbp\n");
    folder_.Write("p.vbp", "Module=a; a.bas\nModule=b; b.bas\n");
    folder_.Write("b.bas", "Dim a\n");
    std::vector<std::string> left;
    options_.unreadable = [&](const Diagnostic& problem) { left.push_back(problem.ToString()); };
    EXPECT_EQ(Opened("g.vbg"), "");
    ASSERT_EQ(left.size(), 2U);
    EXPECT_TRUE(left[0].contains("p.vbp:1: the component \"a.bas\" is missing")) << left[0];
    EXPECT_TRUE(left[1].contains("g.vbg:2: the project \"no.vbp\" is missing")) << left[1];
    EXPECT_EQ(Components(), Expected{"p: b 1 b.bas"});
}

TEST_F(OpenTest, AFileNamedTwiceIsAnErrorWithBothLines) {
    folder_.Write("p.vbp", "Module=a; a.bas\nModule=b; b.bas\nModule=c; A.BAS\n");
    folder_.Write("a.bas", "Dim a\n");
    folder_.Write("b.bas", "Dim a\n");
    const std::string errors = Refused("p.vbp");
    EXPECT_TRUE(errors.contains("p.vbp:3: names the file a.bas again, after line 1")) << errors;
}

TEST_F(OpenTest, LinesThatNameNoFileOrTwoAreErrors) {
    folder_.Write("p.vbp", "Form=\nModule=a; a.bas\n");
    folder_.Write("A.bas", "Dim a\n");
    folder_.Write("a.BAS", "Dim a\n");
    const std::string errors = Refused("p.vbp");
    EXPECT_TRUE(errors.contains("p.vbp:1: this line names no file\n")) << errors;
    EXPECT_TRUE(errors.contains("p.vbp:2: the component \"a.bas\" is ambiguous: \"a.bas\" may be "))
        << errors;
    EXPECT_TRUE(errors.contains("which differ only in case")) << errors;
}

TEST_F(OpenTest, AProjectNamedTwiceIsAnErrorWithBothLines) {
    folder_.Write("g.vbg", "Project=q.vbp\nStartupProject=Q.VBP\n");
    folder_.Write("q.vbp", "");
    const std::string errors = Refused("g.vbg");
    EXPECT_TRUE(errors.contains("g.vbg:2: names the project q.vbp again, after line 1")) << errors;
}

TEST_F(OpenTest, ProjectsAndGroupsThatAreNoTextAreRefused) {
    folder_.Write("p.vbp", std::string_view("Type=Exe\n\0\n", 11));
    folder_.Write("g.vbg", std::string_view("VBGROUP 5.0\n\0\n", 14));
    EXPECT_TRUE(Refused("p.vbp").contains("p.vbp:2: holds a NUL byte"));
    EXPECT_TRUE(Refused("g.vbg").contains("g.vbg:2: holds a NUL byte"));
}

TEST_F(OpenTest, OneFileUnderTwoNamesIsAnError) {
    folder_.Write("p.vbp", "Module=a; a.bas\nModule=b; b.bas\n");
    folder_.Write("a.bas", "Dim a\n");
    fs::create_symlink("a.bas", folder_ / "b.bas");
    const std::string errors = Refused("p.vbp");
    EXPECT_TRUE(errors.contains("p.vbp:2: b.bas is the same file as a.bas in line 1")) << errors;
}

TEST_F(OpenTest, TwoComponentsOfOneNameAreAnError) {
    folder_.Write("p/a.bas", "Attribute VB_Name = \"modMain\"\n");
    folder_.Write("p/b.bas", "Attribute VB_Name = \"MODMAIN\"\n");
    const std::string errors = Refused("p");
    EXPECT_TRUE(errors.contains("p/b.bas: is named MODMAIN as is p/a.bas")) << errors;
}

TEST_F(OpenTest, TwoProjectsOfOneNameAreAnError) {
    folder_.Write("a.bas", "Dim a\n");
    Opened("a.bas");
    EXPECT_TRUE(Refused("a.bas").contains("is open already"));
    folder_.Write("g.vbg", "Project=x\\p.vbp\nProject=y\\p.vbp\n");
    folder_.Write("x/p.vbp", "");
    folder_.Write("y/p.vbp", "");
    EXPECT_TRUE(Refused("g.vbg").contains("y/p.vbp: is named p as is x/p.vbp"));
}

TEST_F(OpenTest, AllThatIsWrongIsTold) {
    folder_.Write("p.vbp", "Module=a; a.bas\nForm=f.frm\nForm=g.frm\n");
    folder_.Write("a.bas", std::string_view("Dim\n\0", 5));
    folder_.Write("f.frm", "VERSION 5.00\nBegin VB.Form f\n");
    folder_.Write("g.frm", "VERSION 5.00\n");
    const std::string errors = Refused("p.vbp");
    EXPECT_TRUE(errors.contains("a.bas:2: holds a NUL byte")) << errors;
    EXPECT_TRUE(errors.contains("f.frm:2: this Begin has no End")) << errors;
}

TEST_F(OpenTest, WarningsNameTheFile) {
    folder_.Write("p/a.bas", "");
    folder_.Write("p/b.bas", "' \xC3\xA4\n");
    EXPECT_EQ(Opened("p"),
              "p/a.bas: the file is empty\n"
              "p/b.bas: is read as windows-1252 but looks like UTF-8; if it is, pass --code-page 65001\n");
}

TEST_F(OpenTest, PathsThatCannotBeOpenedAreRefused) {
    folder_.Write("readme.txt", "x");
    folder_.Write("empty/readme.txt", "x");
    folder_.Write("empty.vbg", "VBGROUP 5.0\n");
    folder_.Write("dir.bas/readme.txt", "x");
    folder_.Write("p.vbp", "Module=d; dir.bas\n");
    fs::create_symlink("loop.bas", folder_ / "loop.bas");
    fs::create_symlink("gone.bas", folder_ / "dangling.bas");
    ASSERT_EQ(::mkfifo((folder_ / "pipe.bas").c_str(), 0600), 0);
    EXPECT_TRUE(Refused("none.vbp").contains("none.vbp: cannot be opened: No such file or directory"));
    EXPECT_TRUE(Refused("readme.txt").contains("is no project (.vbp)"));
    EXPECT_TRUE(Refused("empty").contains("holds no component file"));
    EXPECT_TRUE(Refused("empty.vbg").contains("names no project"));
    EXPECT_TRUE(Refused("p.vbp").contains("dir.bas: is a folder, not a file"));
    EXPECT_TRUE(Refused("loop.bas").contains("Too many levels of symbolic links"));
    EXPECT_TRUE(Refused("dangling.bas").contains("No such file or directory"));
    EXPECT_TRUE(Refused("pipe.bas").contains("is a pipe, not a file"));
    EXPECT_FALSE(Open(workspace_, "/dev/null", options_).has_value());
    EXPECT_FALSE(Open(workspace_, "", options_).has_value());
}

TEST_F(OpenTest, AFileWithoutReadPermissionIsRefused) {
    folder_.Write("p/a.bas", "Dim a\n");
    fs::permissions(folder_ / "p/a.bas", fs::perms::none);
    const std::string error = support::AsOrdinaryUser(folder_.path(), [&] { return Refused("p"); });
    EXPECT_TRUE(error.contains("a.bas: cannot be read: Permission denied")) << error;
}

TEST_F(OpenTest, FilesThatLinksLeadToAreRead) {
    folder_.Write("real/a.bas", "Dim a\n");
    fs::create_directory(folder_ / "p");
    fs::create_symlink(folder_ / "real/a.bas", folder_ / "p/a.bas");
    Opened("p");
    EXPECT_EQ(Components(), Expected{"p: a 1 p/a.bas"});
}

TEST_F(OpenTest, AProjectOfFiveThousandEntriesOpens) {
    std::string project;
    for (int i = 0; i < 5000; ++i) {
        const std::string name = "Module" + std::to_string(i);
        project += "Module=" + name + "; sub\\" + name + ".BAS\r\n";
        folder_.Write("sub/" + name + ".bas", "Attribute VB_Name = \"" + name + "\"\r\nDim a\r\n");
    }
    folder_.Write("big.vbp", project);
    std::size_t lastDone = 0;
    options_.progress = [&](std::size_t done, std::size_t total) {
        EXPECT_EQ(total, 5000U);
        EXPECT_LE(lastDone, done);
        lastDone = done;
    };
    EXPECT_EQ(Opened("big.vbp"), "");
    EXPECT_EQ(lastDone, 5000U);
    EXPECT_EQ(workspace_.projects().front()->components().size(), 5000U);
    EXPECT_NE(workspace_.projects().front()->Find(u"module4999"), nullptr);
}

TEST_F(OpenTest, FilesThatChangeWhileTheyAreReadAreReadAgain) {
    folder_.Write("p/a.bas", "Dim old\n");
    folder_.Write("p/b.bas", "Dim old\n");
    int changes = 0;
    // When the first of the two has been read, another program writes both.
    options_.progress = [&](std::size_t, std::size_t) {
        if (changes == 0) {
            ++changes;
            folder_.Write("p/b.bas", "Dim newer\n");
            folder_.Write("p/a.bas", "Dim newer\n");
        }
    };
    Opened("p");
    for (const auto& component : workspace_.projects().front()->components()) {
        EXPECT_EQ(component->module->AllText(), u"Dim newer");
    }
    // Where that never ends, it is told.
    workspace_.Clear();
    options_.progress = [&](std::size_t, std::size_t) {
        folder_.Write("p/a.bas", "Dim change" + std::to_string(++changes) + "\n");
    };
    EXPECT_TRUE(Refused("p").contains("are being changed by another program"));
}

TEST_F(OpenTest, AGeneratedProjectOpensWithoutWarnings) {
    const fs::path project = support::WriteProject(support::GenerateProject({}), folder_.path());
    const auto result = Open(workspace_, project, options_);
    ASSERT_TRUE(result.has_value()) << Sentences(result.error(), folder_);
    EXPECT_EQ(Sentences(*result, folder_), "");
}

}  // namespace
}  // namespace lintara::workspace
