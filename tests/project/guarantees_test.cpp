// What docs/guarantees.md promises is shown by the tests that it names: they must be there.
#include "tests/project/include_arrows.h"
#include "tests/support/source_folder.h"

#include <filesystem>
#include <regex>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::project {
namespace {

const std::filesystem::path root = support::SourceFolder();

// "Suite.Test" of everything that the text writes in code style and that looks like it, "Suite.*" for all of
// a suite.
std::set<std::string> TestsNamedIn(const std::string& text) {
    const std::regex name(R"(`([A-Z]\w*\.(?:[A-Z]\w*|\*))`)");
    std::set<std::string> names;
    for (std::sregex_iterator i(text.begin(), text.end(), name), end; i != end; ++i) {
        names.insert((*i)[1]);
    }
    return names;
}

std::set<std::string> TestsIn(const std::string& source) {
    const std::regex macro(R"(\bTEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\))");
    std::set<std::string> names;
    for (std::sregex_iterator i(source.begin(), source.end(), macro), end; i != end; ++i) {
        names.insert((*i)[1].str() + "." + (*i)[2].str());
        names.insert((*i)[1].str() + ".*");
    }
    return names;
}

std::set<std::string> AllTests() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / "tests")) {
        if (entry.path().extension() == ".cpp") {
            names.merge(TestsIn(ReadFile(entry.path())));
        }
    }
    return names;
}

TEST(Guarantees, AreShownByTestsThatThereAre) {
    const std::set<std::string> named = TestsNamedIn(ReadFile(root / "docs" / "guarantees.md"));
    const std::set<std::string> tests = AllTests();
    EXPECT_GT(named.size(), 40U);
    for (const std::string& name : named) {
        EXPECT_TRUE(tests.contains(name)) << name;
    }
}

TEST(Guarantees, TestsAreReadFromSources) {
    EXPECT_THAT(TestsIn("TEST(A, B) {\nTEST_P(C,\n       D) {\n// TESTS(E, F)\n"),
                testing::ElementsAre("A.*", "A.B", "C.*", "C.D"));
}

TEST(Guarantees, TestsAreReadFromTheDocument) {
    EXPECT_THAT(TestsNamedIn("`Save.Works` and `Save.*`, not `save.h` nor Save.This"),
                testing::ElementsAre("Save.*", "Save.Works"));
}

}  // namespace
}  // namespace lintara::project
