#include "workspace/write_file.h"

#include "tests/support/temporary_folder.h"

#include <array>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;

std::string AttributeOf(const fs::path& file, const char* name) {
    std::array<char, 64> value{};
    const ssize_t size = ::getxattr(file.c_str(), name, value.data(), value.size());
    return size < 0 ? "none" : std::string(value.data(), static_cast<std::size_t>(size));
}

TEST(WriteFile, ANewFileTakesOverModeAndExtendedAttributes) {
    const support::TemporaryFolder folder;
    const fs::path original = folder.Write("a.bas", "Dim a\n");
    if (::setxattr(original.c_str(), "user.origin", "vault", 5, 0) != 0) {
        GTEST_SKIP() << "the file system keeps no attributes";
    }
    ASSERT_EQ(::setxattr(original.c_str(), "user.empty", "", 0, 0), 0);
    ASSERT_EQ(::chmod(original.c_str(), 0640), 0);
    struct stat status {};
    ASSERT_EQ(::stat(original.c_str(), &status), 0);

    const fs::path replacement = folder / "new";
    const auto file = CreateNew(replacement);
    ASSERT_TRUE(file);
    EXPECT_TRUE(TakeOverAttributes(file->get(), original, status));

    EXPECT_EQ(AttributeOf(replacement, "user.origin"), "vault");
    EXPECT_EQ(AttributeOf(replacement, "user.empty"), "");
    struct stat made {};
    ASSERT_EQ(::stat(replacement.c_str(), &made), 0);
    EXPECT_EQ(made.st_mode & 07777, 0640U);
}

}  // namespace
}  // namespace lintara::workspace
