// Files that a copy gets on top of those of the projects.
#include "tests/workspace/saved_project.h"
#include "workspace/save.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using Files = SavedProject::Files;
using support::TemporaryFolder;

const Files shop = {
    {"Shop.vbp", "Module=a; a.bas\nModule=b; b.bas\n"}, {"a.bas", "Dim a\n"}, {"b.bas", "Dim b\n"}};

SaveOptions WithNotes(const std::string& bytes) {
    SaveOptions options;
    options.added.push_back({"notes.txt", bytes});
    return options;
}

TEST(SaveCopyAdded, StandsInTheCopysOwnFolder) {
    SavedProject project(shop, "Shop.vbp");
    project.Open();
    const TemporaryFolder output;
    const auto copied = SaveCopy(project.workspace, output / "out", WithNotes("hello"));
    ASSERT_TRUE(copied.has_value()) << Sentences(copied.error());
    EXPECT_EQ(copied->size(), 4U);
    EXPECT_EQ(output.Read("out/notes.txt"), "hello");
    EXPECT_EQ(output.Read("out/a.bas"), "Dim a\n");
    EXPECT_EQ(project.folder.Files(), shop);
}

TEST(SaveCopyAdded, NeverTakesThePlaceOfAProjectsFile) {
    Files files = shop;
    files["Notes.TXT"] = "the project's own";
    files["Shop.vbp"] += "RelatedDoc=Notes.TXT\n";
    SavedProject project(files, "Shop.vbp");
    project.Open();
    const TemporaryFolder output;
    EXPECT_FALSE(SaveCopy(project.workspace, output / "out", WithNotes("hello")).has_value());
    EXPECT_EQ(output.Files(), Files{});
}

// An older copy of everything stands there. Wherever the run is cut off, added files stand beside files of
// their own run alone.
TEST(SaveCopyAdded, IsNotThereBesideACopyThatWasLeftHalfDone) {
    bool cutOff = true;
    for (int last = 0; cutOff; ++last) {
        SavedProject project(shop, "Shop.vbp");
        project.Open();
        const TemporaryFolder output;
        ASSERT_TRUE(SaveCopy(project.workspace, output / "out", WithNotes("old")).has_value());
        for (int i = 0; i < 2; ++i) {
            ASSERT_TRUE(
                project.module(static_cast<std::size_t>(i)).InsertLines(Line{1}, u"'new").has_value());
        }
        int steps = 0;
        SaveOptions options = WithNotes("new");
        options.beforeStep = [&] {
            if (steps++ == last) {
                throw std::runtime_error("cut off");
            }
        };
        cutOff = false;
        try {
            ASSERT_TRUE(SaveCopy(project.workspace, output / "out", options).has_value());
        } catch (const std::runtime_error&) {
            cutOff = true;
        }
        const Files files = output.Files();
        const auto notes = files.find("out/notes.txt");
        if (notes != files.end()) {
            const std::string first = notes->second == "new" ? "'new\n" : "";
            EXPECT_EQ(files.at("out/a.bas"), first + "Dim a\n") << "cut off at step " << last;
            EXPECT_EQ(files.at("out/b.bas"), first + "Dim b\n") << "cut off at step " << last;
        }
        EXPECT_TRUE(cutOff || notes->second == "new");
        ASSERT_LT(last, 100);
    }
}

}  // namespace
}  // namespace lintara::workspace
