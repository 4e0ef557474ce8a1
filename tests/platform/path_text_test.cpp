#include "platform/path_text.h"

#include <string>

#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

namespace fs = std::filesystem;

TEST(PathTextTest, EveryPathComesBack) {
    const std::string paths[] = {
        "/home/ada",
        "/caf\xC3\xA9/\xF0\x9F\x98\x80",
        "/latin-1: caf\xE9",
        "/C:\\Data\\\\x",
        "/line\nbreak\tand \x01\x7F",
        "/broken \xC3/\xF0\x9F\x98/\xED\xA0\x80/\xC0\x80/\xFF\xFE",
        "/byte and surrogate \xF0\x90\x80\x80\x80",
        "",
    };
    for (const std::string& path : paths) {
        EXPECT_EQ(PathFromText(PathToText(path)), fs::path(path)) << path;
    }
    std::string all = "/";
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(PathFromText(PathToText(all)), fs::path(all));
}

TEST(PathTextTest, OrdinaryPathsAreReadable) {
    EXPECT_EQ(PathToText("/home/caf\xC3\xA9"), u"/home/caf\u00e9");
    EXPECT_EQ(PathToText("/\xE9"), Text(u"/") + char16_t{0xDCE9});
}

TEST(PathTextTest, TextsThatNoPathBecomesArePathsOfNothing) {
    EXPECT_EQ(PathFromText(TextView(u"/a\0b", 4)), std::nullopt);
    EXPECT_EQ(PathFromText(Text(u"/") + char16_t{0xD800}), std::nullopt);
    EXPECT_EQ(PathFromText(Text(u"/") + char16_t{0xDC41}), std::nullopt);
    EXPECT_EQ(FilePathFromText(Text(u"/") + char16_t{0xDFFF} + u"\\Assistants.mdb"), std::nullopt);
}

TEST(PathTextTest, OnlyTheLastBackslashSeparates) {
    const auto file = [](TextView folder) { return FilePathFromText(Text(folder) + u"\\Assistants.mdb"); };
    EXPECT_EQ(file(u"/home/ada"), fs::path("/home/ada/Assistants.mdb"));
    EXPECT_EQ(file(u"/home/a\\b\\"), fs::path("/home/a\\b\\/Assistants.mdb"));
    EXPECT_EQ(file(u"/"), fs::path("//Assistants.mdb"));
    EXPECT_EQ(file(u""), fs::path("/Assistants.mdb"));
}

TEST(PathTextTest, FoldersStandFromTheRootOnWithoutASeparatorAtTheEnd) {
    EXPECT_EQ(FolderToText("/home/ada/"), u"/home/ada");
    EXPECT_EQ(FolderToText("/home/./ada/../bob//"), u"/home/bob");
    EXPECT_EQ(FolderToText("/"), u"/");
    EXPECT_EQ(FolderToText("/a\\"), u"/a\\");
    EXPECT_EQ(FolderToText("data"), PathToText(fs::current_path() / "data"));
    EXPECT_EQ(FolderToText("."), PathToText(fs::current_path()));
}

}  // namespace
}  // namespace lintara::platform
