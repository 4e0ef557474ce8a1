#include "tests/project/include_arrows.h"

#include "tests/support/source_folder.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::project {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Key;
using testing::UnorderedElementsAre;

const std::filesystem::path root = support::SourceFolder();

ArrowTable DocumentedTable() {
    return ParseArrowTable(ReadFile(root / "docs" / "architecture.md"));
}

constexpr std::string_view smallTable =
    "| folder | what it is | may include | beyond the standard library |\n"
    "|---|---|---|---|\n"
    "| `low/` | letters | nothing | nothing |\n"
    "| `middle/` | words | `low/` | nothing |\n"
    "| `top/own/` | sentences, as `low/` knows them | `middle/` | a library |\n";

std::vector<std::string> ComplaintsAbout(std::string path, std::string text) {
    return ForbiddenArrows(ParseArrowTable(smallTable), {{.path = std::move(path), .text = std::move(text)}});
}

TEST(IncludeArrows, SourcesHaveOnlyTheArrowsOfTheDocument) {
    const ArrowTable table = DocumentedTable();
    EXPECT_THAT(ForbiddenArrows(table, ReadSources(table, root)), IsEmpty());
}

TEST(IncludeArrows, TheSourcesAreReallyRead) {
    const ArrowTable table = DocumentedTable();
    const std::vector<SourceFile> files = ReadSources(table, root);
    std::set<std::string> folders;
    std::size_t includes = 0;
    for (const SourceFile& file : files) {
        folders.insert(FolderOf(table, file.path));
        includes += IncludesOf(file.text).size();
    }
    EXPECT_THAT(folders, IsSupersetOf({"base", "hostmodel", "transform", "assistant", "workspace", "cli"}));
    EXPECT_GT(includes, files.size());
}

bool HoldsSources(const std::filesystem::path& folder) {
    if (std::filesystem::exists(folder / "CMakeCache.txt")) {
        return false;
    }
    return std::ranges::any_of(std::filesystem::directory_iterator(folder), [](const auto& entry) {
        return entry.path().extension() == ".h" || entry.path().extension() == ".cpp";
    });
}

TEST(IncludeArrows, TheDocumentNamesEveryFolderThatHoldsSources) {
    const ArrowTable table = DocumentedTable();
    for (const auto& entry : std::filesystem::directory_iterator(root)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_directory() && HoldsSources(entry.path()) && name != "bench" && name != "fuzz") {
            EXPECT_THAT(table, Contains(Key(name)));
        }
    }
    for (const char* folder :
         {"base", "hostmodel", "transform", "assistant", "workspace", "platform", "forms", "controls",
          "dialogs", "history", "ui/qt", "ui/win32", "cli", "com"}) {
        EXPECT_THAT(table, Contains(Key(folder)));
    }
}

TEST(IncludeArrows, NoTwoFoldersOfTheDocumentIncludeEachOther) {
    const ArrowTable table = DocumentedTable();
    for (const auto& [folder, rule] : table) {
        for (const std::string& target : rule.mayInclude) {
            ASSERT_THAT(table, Contains(Key(target))) << "named in the row of " << folder;
            EXPECT_TRUE(target == folder || !table.at(target).mayInclude.contains(folder))
                << folder << " and " << target;
        }
    }
}

TEST(IncludeArrows, AnArrowGoesOnThroughTheFoldersItReaches) {
    const ArrowTable table = ParseArrowTable(smallTable);
    ASSERT_EQ(table.size(), 3U);
    EXPECT_THAT(table.at("top/own").mayInclude, UnorderedElementsAre("top/own", "middle", "low"));
    EXPECT_THAT(table.at("low").mayInclude, UnorderedElementsAre("low"));
}

TEST(IncludeArrows, AnArrowDownIsAllowed) {
    EXPECT_THAT(ComplaintsAbout("top/own/a.cpp", "#include \"low/x.h\"\n#include <lib/y.h>\n"), IsEmpty());
    EXPECT_THAT(ComplaintsAbout("low/a.cpp", "#include \"low/x.h\"\n#include <vector>\n"), IsEmpty());
}

TEST(IncludeArrows, AnArrowUpIsForbidden) {
    EXPECT_THAT(ComplaintsAbout("low/a.h", "#pragma once\n#include \"middle/x.h\"\n"),
                ElementsAre("low/a.h:2: low/ must not include \"middle/x.h\""));
}

TEST(IncludeArrows, OddlyWrittenArrowsAreFoundToo) {
    EXPECT_THAT(ComplaintsAbout("low/a.h", "  #  include\t\"top/own/x.h\"  // why\r\n"),
                ElementsAre(HasSubstr("top/own/x.h")));
}

TEST(IncludeArrows, AnIncludeThatIsNotFromTheRootIsForbidden) {
    EXPECT_THAT(ComplaintsAbout("middle/a.h", "#include \"b.h\"\n#include \"../low/x.h\"\n"),
                ElementsAre(HasSubstr("\"b.h\""), HasSubstr("\"../low/x.h\"")));
}

TEST(IncludeArrows, TestsAreIncludedByNoFolder) {
    EXPECT_THAT(ComplaintsAbout("middle/a.h", "#include \"tests/support/x.h\"\n"),
                ElementsAre(HasSubstr("tests/support/x.h")));
}

TEST(IncludeArrows, CoreFoldersUseTheStandardLibraryAlone) {
    EXPECT_THAT(ComplaintsAbout("low/a.h", "#include <string>\n#include <lib/y.hpp>\n#include <fcntl.h>\n"),
                ElementsAre(HasSubstr("low/a.h:2: "), HasSubstr("low/a.h:3: ")));
}

TEST(IncludeArrows, WhatIsInAStringOrACommentIsNoArrow) {
    EXPECT_THAT(ComplaintsAbout("low/a.h", "// #include \"middle/x.h\"\nauto s = \"#include <a.h>\";\n"),
                IsEmpty());
}

}  // namespace
}  // namespace lintara::project
