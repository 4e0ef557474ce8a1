#include "workspace/read_file.h"

#include "tests/support/temporary_folder.h"

#include <fstream>
#include <sys/stat.h>
#include <thread>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

struct ReadFileTest : testing::Test {
    support::TemporaryFolder folder;
};

TEST_F(ReadFileTest, ReadsAPipeToItsEndWhereOneIsExpected) {
    const std::filesystem::path pipe = folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    const std::string sent(200'000, 'x');
    std::thread writer([&] { std::ofstream(pipe, std::ios::binary) << sent; });
    const auto bytes = ReadFileOrPipe(pipe);
    writer.join();
    ASSERT_TRUE(bytes) << bytes.error();
    EXPECT_EQ(*bytes, sent);
}

TEST_F(ReadFileTest, RefusesAPipeWhereSourcesAreRead) {
    const std::filesystem::path pipe = folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    const auto content = ReadFile(pipe);
    ASSERT_FALSE(content);
    EXPECT_EQ(content.error(), "is a pipe, not a file");
}

TEST_F(ReadFileTest, AnyOtherPathIsReadAsAFile) {
    const std::filesystem::path file = folder.path() / "file";
    std::ofstream(file, std::ios::binary) << "a\r\nb";
    EXPECT_EQ(ReadFileOrPipe(file), "a\r\nb");
    EXPECT_EQ(ReadFileOrPipe(folder.path()).error(), "is a folder, not a file");
    EXPECT_EQ(ReadFileOrPipe("/dev/null").error(), "is a device, not a file");
    EXPECT_FALSE(ReadFileOrPipe(folder.path() / "absent"));
}

}  // namespace
}  // namespace lintara::workspace
