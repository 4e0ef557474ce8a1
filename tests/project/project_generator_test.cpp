#include "tests/support/project_generator.h"

#include "tests/project/include_arrows.h"
#include "tests/support/wild_module.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::support {
namespace {

std::size_t LinesIn(std::string_view bytes) {
    return static_cast<std::size_t>(std::ranges::count(bytes, '\n'));
}

std::size_t Count(std::string_view bytes, std::string_view piece) {
    std::size_t count = 0;
    for (std::size_t at = bytes.find(piece); at != std::string_view::npos; at = bytes.find(piece, at + 1)) {
        ++count;
    }
    return count;
}

// The attribute lines of procedures are on top of the lines that were asked for.
std::size_t ShownAndHeadLines(std::string_view bytes) {
    return LinesIn(bytes) - Count(bytes, ".VB_Description");
}

TEST(ProjectGenerator, TheSameOptionsGiveTheSameBytes) {
    const std::string once = GenerateModule({.lines = 700, .procedures = 30, .seed = 7});
    EXPECT_EQ(once, GenerateModule({.lines = 700, .procedures = 30, .seed = 7}));
    EXPECT_NE(once, GenerateModule({.lines = 700, .procedures = 30, .seed = 8}));
}

TEST(ProjectGenerator, BytesAreTheSameOnEveryMachine) {
    std::uint64_t hash = 14695981039346656037U;  // FNV-1a
    for (const char byte : GenerateModule({.lines = 500, .procedures = 25, .seed = 1})) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    }
    EXPECT_EQ(hash, 7379939499390885114U);
}

class ModuleSizes : public testing::TestWithParam<ModuleOptions> {};

TEST_P(ModuleSizes, ModulesHaveTheLinesAndProceduresAskedFor) {
    const std::string bytes = GenerateModule(GetParam());
    constexpr std::size_t head = 14;
    EXPECT_EQ(ShownAndHeadLines(bytes), GetParam().lines + head);
    const std::size_t properties = Count(bytes, "\nEnd Property");
    const std::size_t all = properties + Count(bytes, "\nEnd Sub") + Count(bytes, "\nEnd Function");
    EXPECT_EQ(all, GetParam().procedures);
    EXPECT_NEAR(static_cast<double>(properties),
                static_cast<double>(GetParam().procedures) * GetParam().propertyShare, 2.0);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ModuleSizes,
                         testing::Values(ModuleOptions{.lines = 100, .procedures = 5},
                                         ModuleOptions{.lines = 1000, .procedures = 100, .propertyShare = 0},
                                         ModuleOptions{.lines = 4000, .procedures = 200, .propertyShare = 1},
                                         ModuleOptions{.lines = 20000, .procedures = 3, .propertyShare = 0.1},
                                         ModuleOptions{.lines = 64000, .procedures = 3200}),
                         [](const auto& sizes) { return "Lines" + std::to_string(sizes.param.lines); });

TEST(ProjectGenerator, ProjectsHaveTheLinesAndFilesAskedFor) {
    const GeneratedProject project = GenerateProject({.files = 60, .lines = 45000, .seed = 3});
    ASSERT_EQ(project.files.size(), 61U);
    std::size_t lines = 0;
    for (const GeneratedFile& file : project.files) {
        lines += file.path == project.projectFile ? 0 : ShownAndHeadLines(file.bytes);
    }
    EXPECT_EQ(lines, 45000U);
    const double average = static_cast<double>(project.bytes()) / 45000;
    EXPECT_NEAR(average, 44, 3);
}

TEST(ProjectGenerator, ProjectsHoldEveryKindOfFileAndText) {
    const GeneratedProject project = GenerateProject({.files = 20, .lines = 15000});
    std::set<std::string> endings;
    std::string all;
    for (const GeneratedFile& file : project.files) {
        endings.insert(file.path.extension().string());
        all += file.bytes;
    }
    EXPECT_THAT(endings, testing::ElementsAre(".bas", ".cls", ".frm", ".vbp"));
    for (const char* piece : {"Property Get ", "Property Let ", "Property Set ", "Select Case ", " _\r\n",
                              "Failed:\r\n", "\r\n        \r\n", "\xFC", "BeginProperty Font"}) {
        EXPECT_THAT(all, testing::HasSubstr(piece));
    }
}

TEST(ProjectGenerator, WritingPutsEveryFileOnDisk) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "lintara_generated_project";
    std::filesystem::remove_all(folder);
    const GeneratedProject project = GenerateProject({.files = 5, .lines = 1000});
    EXPECT_EQ(WriteProject(project, folder), folder / "Generated.vbp");
    for (const GeneratedFile& file : project.files) {
        EXPECT_EQ(lintara::project::ReadFile(folder / file.path), file.bytes);
    }
    std::filesystem::remove_all(folder);
}

TEST(WildModule, IsTheSameForTheSameSeedAndHoldsNoNul) {
    for (std::uint64_t seed = 0; seed < 50; ++seed) {
        const std::string bytes = GenerateWildModule({.lines = 80, .seed = seed});
        EXPECT_EQ(bytes, GenerateWildModule({.lines = 80, .seed = seed}));
        EXPECT_FALSE(bytes.contains('\0'));
        EXPECT_GE(bytes.size(), 300U);
    }
}

TEST(WildModule, SeedsDifferInEndingsAndClosings) {
    std::size_t mixed = 0;
    std::size_t open = 0;
    for (std::uint64_t seed = 0; seed < 50; ++seed) {
        const std::string bytes = GenerateWildModule({.lines = 80, .seed = seed});
        mixed += Count(bytes, "\r\n") != LinesIn(bytes) ? 1 : 0;
        open += bytes.ends_with('\n') || bytes.ends_with('\r') ? 0 : 1;
    }
    EXPECT_GT(mixed, 10U);
    EXPECT_GT(open, 10U);
}

}  // namespace
}  // namespace lintara::support
