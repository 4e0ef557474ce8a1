// Error handlers and custom code in and out of generated modules: nothing but the procedures' bodies changes,
// and what can be taken out leaves what was there.
#include "tests/support/procedure_bodies.h"
#include "tests/support/project_generator.h"
#include "tests/support/wild_module.h"
#include "tests/transform/opened_file.h"
#include "transform/custom_code.h"
#include "transform/error_handler_insertion.h"
#include "transform/error_handler_removal.h"
#include "transform/line_numbers.h"
#include "workspace/encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using support::BodiesOf;
using support::ModuleName;
using support::OpenedFile;
using support::Outside;
using support::ProcedureNames;
using support::ProjectName;
using Lines = std::vector<Text>;

constexpr TextView Code = u"    Debug.Print \"{MemberName}\"\r\n    Resume Next";

void InsertHandler(OpenedFile& file, TextView procedure) {
    ErrorHandlerInserter({*file.globals()}, ProjectName, ModuleName, procedure, u"hErr", Code);
}

void RemoveHandler(OpenedFile& file, TextView procedure) {
    ErrorHandlerRemover(*file.globals(), nullptr, ProjectName, ModuleName, procedure);
}

// The hidden lines with their owners, whose statements on errors may have been given another label.
std::vector<std::string> Owners(const OpenedFile& file) {
    std::vector<std::string> hidden = file.HiddenLines();
    for (std::string& line : hidden) {
        std::ranges::transform(line, line.begin(), [](char c) { return 'A' <= c && c <= 'Z' ? c + 32 : c; });
        for (const std::string_view label : {"on error goto herr", "on error goto 0"}) {
            if (const auto at = line.find(label); at != std::string::npos) {
                line.replace(at, label.size(), "on error");
            }
        }
    }
    return hidden;
}

struct Operation {
    std::string_view name;
    void (*run)(OpenedFile&, TextView);
    bool takesLines;  // and the lines hidden behind them
};

const std::array<Operation, 4> operations = {{
    {"insert handler", InsertHandler, false},
    {"insert code",
     [](OpenedFile& file, TextView procedure) {
         CustomCodeInserter({*file.globals()}, ProjectName, ModuleName, procedure,
                            {.code = Code, .place = CodePlace::BeforeLastLine, .id = 12});
     },
     false},
    {"remove code",
     [](OpenedFile& file, TextView procedure) {
         CustomCodeRemover(*file.globals(), ProjectName, ModuleName, procedure, 12);
     },
     true},
    {"remove handler", RemoveHandler, true},
}};

TEST(RandomInsertionsTest, NothingOutsideTheBodiesChangesAndHiddenLinesStayBehindTheirOwn) {
    int edits = 0;
    int restructured = 0;
    for (std::uint64_t seed = 1; seed <= 150; ++seed) {
        OpenedFile file(support::GenerateWildModule({.lines = 100, .seed = seed}));
        for (const Operation& operation : operations) {
            for (const Text& name : ProcedureNames(file.module())) {
                const auto bodies = BodiesOf(file, name);
                const Lines before = file.lines();
                const auto owners = Owners(file);
                operation.run(file, name);
                if (bodies.empty()) {
                    continue;
                }
                const auto edited = BodiesOf(file, name, true);
                const Lines after = file.lines();
                if (edited.size() != bodies.size()) {
                    // A block between the lines of a continued statement moves the procedures' ends.
                    ++restructured;
                    continue;
                }
                ASSERT_EQ(Outside(after, edited), Outside(before, bodies))
                    << operation.name << ", seed " << seed;
                if (!operation.takesLines) {
                    ASSERT_EQ(Owners(file), owners) << operation.name << ", seed " << seed;
                }
                edits += after != before ? 1 : 0;
            }
        }
        EXPECT_EQ(file.globals()->liveHandles(), 0U);
    }
    EXPECT_GT(edits, 500);
    EXPECT_LT(restructured, 20);
}

TEST(RandomInsertionsTest, HandlersAreInsertedOnce) {
    int inserted = 0;
    for (std::uint64_t seed = 1; seed <= 150; ++seed) {
        OpenedFile file(support::GenerateWildModule({.lines = 100, .seed = seed}));
        for (const Text& name : ProcedureNames(file.module())) {
            const std::string original = file.bytes();
            InsertHandler(file, name);
            const std::string once = file.bytes();
            if (!BodiesOf(file, name).empty()) {
                inserted += once != original ? 1 : 0;
                InsertHandler(file, name);
                ASSERT_EQ(file.bytes(), once) << "seed " << seed;
            }
        }
    }
    EXPECT_GT(inserted, 200);
}

support::ModuleOptions Tame(std::uint64_t seed) {
    return {.lines = 600, .procedures = 30, .seed = seed};
}

TEST(RandomInsertionsTest, CustomCodeGoesInAndOutOfTameModulesWithoutATrace) {
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        OpenedFile file(support::GenerateModule(Tame(seed)));
        const std::string original = file.bytes();
        for (const std::int16_t place : std::array<std::int16_t, 3>{1, 2, 3}) {
            for (const Text& name : ProcedureNames(file.module())) {
                CustomCodeInserter({*file.globals()}, ProjectName, ModuleName, name,
                                   {.code = Code, .place = CodePlace{place}, .line = 2, .id = 7});
            }
            EXPECT_GT(file.bytes().size(), original.size() + 30 * 100);
            for (const Text& name : ProcedureNames(file.module())) {
                CustomCodeRemover(*file.globals(), ProjectName, ModuleName, name, 7);
            }
            ASSERT_EQ(file.bytes(), original) << "seed " << seed << ", place " << place;
        }
    }
}

// The first line that differs; "" when there is none.
std::string FirstDifference(const Lines& a, const Lines& b) {
    for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
        const Text left = i < a.size() ? a[i] : Text(u"(none)");
        const Text right = i < b.size() ? b[i] : Text(u"(none)");
        if (left != right) {
            return std::to_string(i + 1) + ": " + workspace::ToUtf8(left) + " | " + workspace::ToUtf8(right);
        }
    }
    return "";
}

// The removal of numbers takes seven blanks off every line, those of blanks only included, to which the
// insertion has put none.
Lines WithoutBlanks(Lines lines) {
    for (Text& line : lines) {
        if (line.find_first_not_of(u' ') == Text::npos) {
            line.clear();
        }
    }
    return lines;
}

// The lines without the one that the removal of a handler leaves at the top of each body.
Lines WithoutKeptLine(OpenedFile& file) {
    Lines lines = WithoutBlanks(file.lines());
    std::vector<Line> starts;
    for (const workspace::ProcedureInfo& procedure : file.module().Procedures()) {
        starts.push_back(procedure.bodyBegin);
    }
    for (auto start = starts.rbegin(); start != starts.rend(); ++start) {
        const auto line = lines.begin() + start->value() - 1;
        EXPECT_EQ(*line, u"    On Error GoTo 0");
        lines.erase(line);
    }
    return lines;
}

TEST(RandomInsertionsTest, HandlersAndNumbersComeOutOfTameModulesAgain) {
    for (std::uint64_t seed = 1; seed <= 6; ++seed) {
        for (const bool numbersOutFirst : {false, true}) {
            OpenedFile file(support::GenerateModule(Tame(seed)));
            const Lines original = WithoutBlanks(file.lines());
            const std::set<Text> names = ProcedureNames(file.module());
            const auto forAll = [&](auto edit) { std::ranges::for_each(names, edit); };
            const auto removeNumbers = [&](const Text& name) {
                LineNumbersRemover(*file.globals(), ProjectName, ModuleName, name);
            };
            forAll([&](const Text& name) { InsertHandler(file, name); });
            forAll([&](const Text& name) {
                LineNumbersInserter(*file.globals(), ProjectName, ModuleName, name, 10000, 5);
            });
            EXPECT_GT(file.lines().size(), original.size() + 30 * 5);
            if (numbersOutFirst) {
                forAll(removeNumbers);
            }
            forAll([&](const Text& name) { RemoveHandler(file, name); });
            if (!numbersOutFirst) {
                forAll(removeNumbers);
            }
            ASSERT_EQ(FirstDifference(WithoutKeptLine(file), original), "") << "seed " << seed;
        }
    }
}

// Numbers that are there first stay in front of their lines.
TEST(RandomInsertionsTest, HandlersGoIntoNumberedModulesAndOutAgain) {
    for (std::uint64_t seed = 1; seed <= 6; ++seed) {
        OpenedFile file(support::GenerateModule(Tame(seed)));
        const Lines original = WithoutBlanks(file.lines());
        const std::set<Text> names = ProcedureNames(file.module());
        const auto forAll = [&](auto edit) { std::ranges::for_each(names, edit); };
        forAll([&](const Text& name) {
            LineNumbersInserter(*file.globals(), ProjectName, ModuleName, name, 10000, 5);
        });
        forAll([&](const Text& name) { InsertHandler(file, name); });
        forAll([&](const Text& name) { RemoveHandler(file, name); });
        forAll([&](const Text& name) { LineNumbersRemover(*file.globals(), ProjectName, ModuleName, name); });
        ASSERT_EQ(FirstDifference(WithoutKeptLine(file), original), "") << "seed " << seed;
    }
}

}  // namespace
}  // namespace lintara::transform
