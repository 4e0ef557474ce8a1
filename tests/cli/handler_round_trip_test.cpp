// Handlers and numbers in, then both out again: every procedure is what it was, with "On Error GoTo 0" as its
// new first line, whatever the code holds.
#include "cli/guards/code_text.h"
#include "tests/cli/handler_edits.h"
#include "tests/support/project_generator.h"
#include "tests/support/wild_module.h"
#include "workspace/encoding.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::IsEmpty;

const HandlerCommand& Both() {
    static const HandlerCommand both{
        .handler = {u"zzHandler", u"    Report \"{MemberName}\", _\r\n           Erl\r\n    Resume Next"},
        .numbers = NumberOptions{}};
    return both;
}

std::vector<std::string> BodyOf(const EditedModule& module, std::size_t procedure) {
    std::vector<std::string> lines;
    const LineRange body = module.module().Procedure(procedure).body();
    Text line;
    for (Line at = body.begin; at < body.end; ++at) {
        module.module().ReadLine(at, line);
        // The statement comes back in the letter case that the IDE gives it.
        const std::size_t off = FindText(line, u"On Error GoTo 0");
        lines.push_back(
            workspace::ToUtf8(off == Text::npos ? line : line.replace(off, 15, u"On Error GoTo 0")));
    }
    return lines;
}

bool IsIn(const std::vector<std::string>& names, const Text& name) {
    return std::ranges::find(names, workspace::ToUtf8(name)) != names.end();
}

bool WasSkipped(const ComponentReport& report, const Text& name) {
    return std::ranges::find(report.skipped, name, &SkippedProcedure::name) != report.skipped.end();
}

// Compares the procedures that got both and lost both, and those that got nothing. How many got both.
std::size_t CompareProcedures(const EditedModule& before, const EditedModule& after,
                              const ComponentReport& in, const ComponentReport& out) {
    std::size_t compared = 0;
    for (const ProcedureGroup& group : GroupProcedures(before.module().Procedures())) {
        const bool edited = IsIn(EditedIn(in), group.name);
        const bool skipped = WasSkipped(in, group.name) || WasSkipped(out, group.name);
        for (const workspace::ProcedureInfo& procedure : group.reached) {
            std::vector<std::string> expected = BodyOf(before, procedure.number);
            if (skipped || (!edited && IsIn(EditedIn(out), group.name))) {
                continue;
            }
            if (edited) {
                expected.insert(expected.begin(), "    On Error GoTo 0");
                ++compared;
            }
            EXPECT_EQ(BodyOf(after, procedure.number), expected) << workspace::ToUtf8(group.name);
        }
    }
    return compared;
}

std::size_t CompareRoundTrip(const std::string& bytes) {
    const EditedModule before = EditedModule::FromFile(bytes);
    EditedModule module = EditedModule::FromFile(bytes);
    const ComponentReport in = InsertHandlers(module, Both());
    EditedModule reloaded = EditedModule::FromFile(module.Bytes());
    const ComponentReport out = RemoveHandlers(reloaded, Both());
    EXPECT_EQ(reloaded.module().CountOfProcedures(), before.module().CountOfProcedures());
    return CompareProcedures(before, reloaded, in, out);
}

TEST(HandlerRoundTrip, OfUsualModulesLosesNothingAndSkipsNothing) {
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        const std::string bytes = support::GenerateModule({.lines = 2000, .seed = seed});
        EditedModule module = EditedModule::FromFile(bytes);
        EXPECT_THAT(SkippedIn(InsertHandlers(module, Both())), IsEmpty());
        EXPECT_GT(CompareRoundTrip(bytes), 15U);
    }
}

TEST(HandlerRoundTrip, OfWildModulesLosesNothing) {
    std::size_t compared = 0;
    for (std::uint64_t seed = 1; seed <= 400 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        compared += CompareRoundTrip(support::GenerateWildModule({.lines = 150, .seed = seed}));
    }
    EXPECT_GT(compared, 200U) << "the modules give the insertion nothing to do";
}

// A procedure that could not be told from the next one in the first run may be told from it in the second:
// handlers below it have moved the lines that misled the search for its end.
TEST(HandlerRoundTrip, NothingGoesInTwice) {
    std::size_t edited = 0;
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        EditedModule module =
            EditedModule::FromFile(support::GenerateWildModule({.lines = 150, .seed = seed}));
        HandlerCommand handlers = Both();
        handlers.numbers.reset();
        const ComponentReport first = InsertHandlers(module, handlers);
        edited += first.edited.size();
        EditedModule reloaded = EditedModule::FromFile(module.Bytes());
        handlers.refresh = true;
        const ComponentReport second = InsertHandlers(reloaded, handlers);
        for (const EditedProcedure& procedure : second.edited) {
            EXPECT_TRUE(WasSkipped(first, procedure.name)) << "seed " << seed;
        }
        if (second.edited.empty()) {
            EXPECT_EQ(reloaded.Bytes(), module.Bytes()) << "seed " << seed;
        }
    }
    EXPECT_GT(edited, 100U);
}

}  // namespace
}  // namespace lintara::cli
