// Paths in project files that are made to hang a reader, to lead it astray or to fill its memory.
#include "tests/support/temporary_folder.h"
#include "tests/workspace/saved_project.h"
#include "workspace/limits.h"
#include "workspace/open.h"
#include "workspace/path_resolver.h"
#include "workspace/read_file.h"

#include <fstream>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::AllOf;
using testing::HasSubstr;

class HostilePaths : public testing::Test {
  protected:
    // Why a project that names the file cannot be opened.
    std::string Errors(const std::string& path) { return ErrorsOf("P.vbp", "Module=M; " + path + "\r\n"); }
    std::string ErrorsOf(const std::string& name, const std::string& bytes, const OpenOptions& options = {}) {
        folder.Write(name, bytes);
        Workspace workspace;
        const auto opened = Open(workspace, folder / name, options);
        return opened ? "" : Sentences(opened.error());
    }

    support::TemporaryFolder folder;
};

TEST_F(HostilePaths, DevicesArePlainlyRefused) {
    for (const auto* const device : {"/dev/zero", "/dev/null", "/dev/tty", "/dev/random"}) {
        EXPECT_EQ(Errors(device), device + ": is a device, not a file\n"s);
        EXPECT_EQ(Errors("..\\..\\..\\..\\..\\..\\.."s + device).find("is a device, not a file") !=
                      std::string::npos,
                  true);
    }
}

TEST_F(HostilePaths, FilesThatTheSystemMakesUpAreRefused) {
    for (const auto* const path : {"/proc/self/environ", "/proc/self/maps", "/proc/kmsg"}) {
        if (fs::exists(path)) {
            EXPECT_THAT(Errors(path), HasSubstr(path)) << path;
        }
    }
    EXPECT_EQ(ReadFile("/proc/self/maps").error(), "is made up by the running system, and no file on a disk");
}

TEST_F(HostilePaths, PipesAndSocketsDoNotBlock) {
    ASSERT_EQ(::mkfifo((folder / "fifo.bas").c_str(), 0600), 0);
    EXPECT_THAT(Errors("fifo.bas"), HasSubstr("fifo.bas: is a pipe, not a file"));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = (folder / "socket.bas").string();
    ASSERT_LT(name.copy(address.sun_path, sizeof address.sun_path - 1), sizeof address.sun_path);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_THAT(Errors("socket.bas"), HasSubstr("socket.bas: is a pipe, not a file"));
    ::close(socket);
}

TEST_F(HostilePaths, APipeInTheProjectsPlaceDoesNotBlock) {
    for (const auto* const name : {"P.vbp", "G.vbg", "C.bas"}) {
        ASSERT_EQ(::mkfifo((folder / name).c_str(), 0600), 0);
        Workspace workspace;
        const auto opened = Open(workspace, folder / name, {});
        ASSERT_FALSE(opened);
        EXPECT_THAT(Sentences(opened.error()), HasSubstr("is a pipe, not a file"));
    }
    fs::create_directory(folder / "sub");
    folder.Write("sub/a.bas", "Dim a\r\n");
    ASSERT_EQ(::mkfifo((folder / "sub/b.bas").c_str(), 0600), 0);
    Workspace workspace;
    EXPECT_FALSE(Open(workspace, folder / "sub", {}));
}

TEST_F(HostilePaths, FoldersLoopsAndDanglingLinksAreErrors) {
    fs::create_directory(folder / "dir.bas");
    EXPECT_THAT(Errors("dir.bas"), HasSubstr("dir.bas: is a folder, not a file"));
    fs::create_symlink("loop.bas", folder / "loop.bas");
    EXPECT_THAT(Errors("loop.bas"), HasSubstr("loop.bas: cannot be read: Too many levels"));
    fs::create_directory_symlink("around", folder / "around");
    EXPECT_THAT(Errors("around\\around\\x.bas"), HasSubstr("is missing"));
    fs::create_symlink("nowhere.bas", folder / "dangling.bas");
    EXPECT_THAT(Errors("dangling.bas"), HasSubstr("dangling.bas: cannot be read: No such file"));
    fs::create_directory_symlink(".", folder / "self");
    folder.Write("x.bas", "Dim a\r\n");
    EXPECT_EQ(Errors("self\\self\\self\\x.bas"), "");
}

TEST_F(HostilePaths, FoldersThatLinkToThemselvesAreSearchedOnce) {
    folder.Write("top/a.bas", "Dim a\r\n");
    fs::create_directory_symlink(".", folder / "top/self");
    Workspace workspace;
    ASSERT_TRUE(Open(workspace, folder / "top",
                     {.codePage = {}, .recursive = true, .unreadable = {}, .progress = {}}));
    EXPECT_EQ(workspace.projects().front()->components().size(), 1U);
}

TEST_F(HostilePaths, OtherMachinesAreNotAsked) {
    EXPECT_THAT(Errors("\\\\server\\share\\x.bas"), HasSubstr("is on another machine of a network"));
    EXPECT_THAT(Errors("//server/share/x.bas"), HasSubstr("is on another machine of a network"));
    EXPECT_THAT(Errors("\\/server/x.bas"), HasSubstr("is on another machine of a network"));
    EXPECT_THAT(Errors("Z:\\x.bas"), HasSubstr("is on a drive of another machine"));
}

TEST_F(HostilePaths, NamesThatNoSystemHasAreErrors) {
    folder.Write("x.bas", "Dim a\r\n");
    PathResolver resolver;
    const auto withNul = resolver.Resolve(folder.path(), "x.bas\0.txt"s);
    ASSERT_FALSE(withNul);
    EXPECT_EQ(withNul.error().message, "no path holds a NUL character");
    EXPECT_THAT(Errors(std::string(300, 'x') + ".bas"), HasSubstr("is missing"));
    EXPECT_THAT(Errors("x\n.bas"), HasSubstr("x"));
}

TEST_F(HostilePaths, ALongPathEndsAtOnceAndIsNotRepeatedInFull) {
    for (const auto* const piece : {"..\\", "x\\", "."}) {
        std::string path;
        while (path.size() < 3'000'000) {
            path += piece;
        }
        const std::string errors = Errors(path + "x.bas");
        EXPECT_THAT(errors, HasSubstr("longer than 4096 bytes"));
        EXPECT_LT(errors.size(), 1000U);
    }
}

TEST_F(HostilePaths, TooManyComponentsAreOneError) {
    std::string entries;
    for (std::size_t i = 0; i <= mostComponents; ++i) {
        entries += "Module=M; a.bas\r\n";
    }
    folder.Write("a.bas", "Dim a\r\n");
    const std::string errors = ErrorsOf("P.vbp", entries);
    EXPECT_THAT(
        errors,
        HasSubstr("P.vbp: has too many components: of all that are opened together there may be 50000"));
    EXPECT_LT(errors.size(), 1000U);
}

TEST_F(HostilePaths, TooManyProjectsAreOneError) {
    std::string entries;
    for (std::size_t i = 0; i <= mostProjects; ++i) {
        entries += "Project=p" + std::to_string(i) + ".vbp\r\n";
    }
    const std::string errors = ErrorsOf("G.vbg", entries);
    EXPECT_THAT(errors, HasSubstr("G.vbg: names more than 1000 projects"));
    EXPECT_LT(errors.size(), 1000U);
}

TEST_F(HostilePaths, GroupsInGroupsAreErrors) {
    folder.Write("H.vbg", "Project=G.vbg\r\n");
    EXPECT_THAT(ErrorsOf("G.vbg", "Project=G.vbg\r\nProject=H.vbg\r\n"),
                testing::AllOf(HasSubstr("G.vbg:1: names the group"), HasSubstr("G.vbg:2: names the group")));
    folder.Write("P.vbp", "");
    fs::create_symlink("H.vbg", folder / "Linked.vbp");
    EXPECT_THAT(ErrorsOf("G.vbg", "Project=Linked.vbp\r\n"), HasSubstr("G.vbg:1: names the group"));
}

TEST_F(HostilePaths, OneFileUnderTwoNamesIsAnError) {
    folder.Write("a.bas", "Dim a\r\n");
    fs::create_hard_link(folder / "a.bas", folder / "b.bas");
    EXPECT_THAT(ErrorsOf("P.vbp", "Module=A; a.bas\r\nModule=B; b.bas\r\n"), HasSubstr("P.vbp:2: "));
    fs::remove(folder / "b.bas");
    fs::create_symlink("a.bas", folder / "b.bas");
    EXPECT_THAT(ErrorsOf("P.vbp", "Module=A; a.bas\r\nModule=B; b.bas\r\n"), HasSubstr("P.vbp:2: "));
}

// What another name of the file holds is not the project's, and stays.
TEST(HardLink, OutsideKeepsItsContent) {
    SavedProject project({{"p/p.vbp", "Module=a; a.bas\n"}, {"victim/v.bas", "Dim v\n"}}, "p/p.vbp");
    fs::create_hard_link(project.folder / "victim/v.bas", project.folder / "p/a.bas");
    project.Open();
    project.EditAll();
    EXPECT_EQ(project.Save(), "");
    EXPECT_EQ(project.folder.Read("p/a.bas"), "'edited\nDim v\n");
    EXPECT_EQ(project.folder.Read("victim/v.bas"), "Dim v\n");
}

// A file that takes no room on the disk.
void MakeLarge(const fs::path& path, std::int64_t size) {
    std::ofstream(path).put(' ');
    fs::resize_file(path, static_cast<std::uintmax_t>(size));
}

TEST_F(HostilePaths, LargeFilesAreRefusedBeforeTheyAreRead) {
    MakeLarge(folder / "huge.bas", largestComponent + 1);
    EXPECT_THAT(Errors("huge.bas"), HasSubstr("huge.bas: is larger than 256 MiB"));
    MakeLarge(folder / "Huge.vbp", largestProjectFile + 1);
    MakeLarge(folder / "Huge.vbg", largestProjectFile + 1);
    for (const auto* const name : {"Huge.vbp", "Huge.vbg"}) {
        Workspace workspace;
        const auto opened = Open(workspace, folder / name, {});
        ASSERT_FALSE(opened);
        EXPECT_THAT(Sentences(opened.error()), HasSubstr("is larger than 16 MiB"));
    }
}

TEST_F(HostilePaths, MoreThanMayBeOpenedTogetherIsRefusedBeforeItIsRead) {
    std::string entries;
    for (std::int64_t size = 0; size <= largestOpening; size += largestComponent) {
        const std::string name = "m" + std::to_string(size / largestComponent);
        MakeLarge(folder / (name + ".bas"), largestComponent + 1);
        entries += "Module=" + name + "; " + name + ".bas\r\n";
    }
    EXPECT_THAT(ErrorsOf("P.vbp", entries),
                AllOf(HasSubstr("m7.bas: is too much: what is opened together may have 2048 MiB"),
                      HasSubstr("m8.bas: is too much"), HasSubstr("m0.bas: is larger than 256 MiB")));
}

TEST_F(HostilePaths, NoFileIsReadThatIsLargerThanAnyShouldBe) {
    MakeLarge(folder / "any", largestFile + 1);
    EXPECT_EQ(ReadFile(folder / "any").error(), "is larger than 1024 MiB, too large for what it should be");
}

TEST_F(HostilePaths, LongNamesAreRefused) {
    const auto withName = [&](std::size_t length) {
        folder.Write("a.bas", "Attribute VB_Name = \"" + std::string(length, 'n') + "\"\r\n");
        return Errors("a.bas");
    };
    EXPECT_EQ(withName(longestName), "");
    EXPECT_THAT(withName(longestName + 1),
                HasSubstr("a.bas: has a name of 256 characters; names have at most 255"));
    folder.Write("a.bas", "");
    EXPECT_THAT(
        ErrorsOf("P.vbp", "Name=\"" + std::string(longestName + 1, 'n') + "\"\r\nModule=A; a.bas\r\n"),
        HasSubstr("P.vbp: has a name of 256 characters; names have at most 255"));
}

// Names that this program uses for its own files.
TEST_F(HostilePaths, FoldersInThePlacesOfMarksAreToldAsThat) {
    folder.Write("a.bas", "");
    for (const auto* const name : {".lintara-copy", ".lintara-journal", ".lintara-journal-link"}) {
        fs::create_directory(folder / name);
        EXPECT_THAT(Errors("a.bas"), AllOf(HasSubstr(name + ": is a folder, not a file; lintara keeps "s),
                                           HasSubstr("under that name, so rename or delete what is there")));
        fs::remove(folder / name);
        EXPECT_EQ(Errors("a.bas"), "");
    }
}

TEST_F(HostilePaths, TooManyLinesAreRefused) {
    folder.Write("lines.bas", std::string(mostLines + 1, '\n'));
    EXPECT_THAT(Errors("lines.bas"), HasSubstr("lines.bas: has more than 10000000 lines"));
    folder.Write("lines.bas", std::string(mostLines + 1, '\r'));
    EXPECT_THAT(Errors("lines.bas"), HasSubstr("lines.bas: has more than 10000000 lines"));
}

TEST_F(HostilePaths, FoldersAreSearchedHoweverDeepTheyLie) {
    fs::path deep = folder / "top";
    fs::create_directory(deep);
    while (deep.native().size() < 3500) {
        deep /= "d";
        fs::create_directory(deep);
    }
    std::ofstream(deep / "m.bas") << "Dim a\r\n";
    Workspace workspace;
    ASSERT_TRUE(Open(workspace, folder / "top",
                     {.codePage = {}, .recursive = true, .unreadable = {}, .progress = {}}));
    EXPECT_EQ(workspace.projects().front()->components().size(), 1U);
}

}  // namespace
}  // namespace lintara::workspace
