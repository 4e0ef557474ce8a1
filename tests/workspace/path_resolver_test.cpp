#include "workspace/path_resolver.h"

#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;
using support::TemporaryFolder;

// The path that was found, relative to the folder; else why there is none.
std::string Found(const TemporaryFolder& folder, std::string_view written, const char* from = "p") {
    PathResolver resolver;
    const auto found = resolver.Resolve(folder / from, written);
    if (found) {
        return found->lexically_relative(folder.path()).string();
    }
    return found.error().missing ? "missing" : "ambiguous: " + found.error().message;
}

TEST(PathResolver, MatchesEachSegmentExactlyOrWithoutRegardToCase) {
    const TemporaryFolder folder;
    folder.Write("p/Src/modMain.bas", "");
    folder.Write("p/Exact.bas", "");
    folder.Write("p/exact.bas", "");
    folder.Write("p/ÄRGER.bas", "");
    folder.Write("shared/x.bas", "");
    EXPECT_EQ(Found(folder, "Src\\modMain.bas"), "p/Src/modMain.bas");
    EXPECT_EQ(Found(folder, "SRC\\MODMAIN.BAS"), "p/Src/modMain.bas");
    EXPECT_EQ(Found(folder, "src/modmain.bas"), "p/Src/modMain.bas");
    EXPECT_EQ(Found(folder, ".\\src\\\\modmain.bas"), "p/Src/modMain.bas");
    EXPECT_EQ(Found(folder, "exact.bas"), "p/exact.bas");
    EXPECT_EQ(Found(folder, "ärger.BAS"), "p/ÄRGER.bas");
    EXPECT_EQ(Found(folder, "..\\Shared\\X.bas"), "shared/x.bas");
    EXPECT_EQ(Found(folder, "Src\\..\\..\\shared\\x.bas"), "shared/x.bas");
    EXPECT_EQ(Found(folder, "none.bas"), "missing");
    EXPECT_EQ(Found(folder, "none\\modMain.bas"), "missing");
    EXPECT_EQ(Found(folder, "C:\\Src\\modMain.bas"), "missing");
    EXPECT_EQ(Found(folder, "\\\\server\\share\\modMain.bas"), "missing");
}

TEST(PathResolver, TwoThatDifferOnlyInCaseAreNamedBoth) {
    const TemporaryFolder folder;
    folder.Write("p/Main.bas", "");
    folder.Write("p/main.bas", "");
    const std::string found = Found(folder, "MAIN.bas");
    EXPECT_TRUE(found.starts_with("ambiguous")) << found;
    EXPECT_TRUE(found.contains("p/Main.bas")) << found;
    EXPECT_TRUE(found.contains("p/main.bas")) << found;
}

TEST(PathResolver, RelativeFoldersGiveRelativePaths) {
    const TemporaryFolder folder;
    folder.Write("p/a.bas", "");
    folder.Write("p/sub/b.bas", "");
    const fs::path before = fs::current_path();
    fs::current_path(folder / "p");
    PathResolver resolver;
    EXPECT_EQ(resolver.Resolve(".", "A.BAS").value(), "a.bas");
    EXPECT_EQ(resolver.Resolve("sub", "..\\a.bas").value(), "a.bas");
    EXPECT_EQ(resolver.Resolve(".", "..\\P\\a.bas").value(), "./../p/a.bas");
    fs::current_path(before);
}

TEST(PathResolver, TheFolderAboveALinkIsWhereTheLinkLeads) {
    const TemporaryFolder folder;
    folder.Write("real/deep/a.bas", "");
    folder.Write("real/b.bas", "");
    fs::create_directory(folder / "p");
    fs::create_directory_symlink(folder / "real/deep", folder / "p/link");
    PathResolver resolver;
    const auto found = resolver.Resolve(folder / "p", "link\\..\\b.bas");
    ASSERT_TRUE(found.has_value());
    EXPECT_TRUE(fs::equivalent(*found, folder / "real/b.bas"));
    EXPECT_EQ(AbsolutePath(*found), folder / "real/b.bas");
}

TEST(AbsolutePath, HasNoDots) {
    const TemporaryFolder folder;
    EXPECT_EQ(AbsolutePath(folder.path() / "a/./b/../c"), folder / "a/c");
    EXPECT_EQ(AbsolutePath("/../x"), "/x");
    EXPECT_EQ(AbsolutePath("."), fs::current_path());
}

}  // namespace
}  // namespace lintara::workspace
