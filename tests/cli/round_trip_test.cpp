// Insertion, then removal with base 10000: every byte comes back, whatever the code holds.
#include "tests/cli/edited_module.h"
#include "tests/support/project_generator.h"
#include "tests/support/random.h"
#include "tests/support/wild_module.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>

#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

// Lines of procedures that had five-digit numbers before the insertion. Nothing tells those from numbers
// that the insertion wrote, so removal takes them out, as it should.
std::vector<bool> LinesNumberedBefore(const EditedModule& module, const ComponentReport& inserted) {
    std::vector<bool> lines(static_cast<std::size_t>(module.module().CountOfLines()) + 1);
    for (const ProcedureGroup& group : GroupProcedures(module.module().Procedures())) {
        const auto isGroup = [&](const auto& told) { return told.name == group.name; };
        const auto skip = std::ranges::find_if(inserted.skipped, isGroup);
        const bool numbered = skip != inserted.skipped.end() ? skip->reason == SkipReason::AlreadyNumbered
                                                             : std::ranges::none_of(inserted.edited, isGroup);
        for (const workspace::ProcedureInfo& procedure : group.reached) {
            for (Line line = procedure.header; numbered && line <= procedure.closing; ++line) {
                lines[static_cast<std::size_t>(line.value())] = true;
            }
        }
    }
    return lines;
}

std::vector<Text> AllLines(const EditedModule& module) {
    std::vector<Text> lines(1);
    for (Line line(1); line.value() <= module.module().CountOfLines(); ++line) {
        module.module().ReadLine(line, lines.emplace_back());
    }
    return lines;
}

// The first line that is not as it was; "" when there is none.
std::string FirstLoss(std::string bytes, NumberOptions numbers, std::size_t& edited) {
    EditedModule module = EditedModule::FromFile(std::move(bytes));
    const std::vector<Text> before = AllLines(module);
    const ComponentReport inserted = module.Insert(numbers);
    const std::vector<bool> numberedBefore = LinesNumberedBefore(module, inserted);
    const std::vector<Text> numbered = AllLines(module);
    edited += inserted.edited.size();
    // As another run would find it on disk.
    EditedModule reloaded = EditedModule::FromFile(module.Bytes());
    const ComponentReport removed = reloaded.Remove();
    if (reloaded.Bytes() == module.OriginalBytes()) {
        return "";
    }
    const std::vector<Text> after = AllLines(reloaded);
    if (after.size() != before.size()) {
        return "the number of lines";
    }
    for (std::size_t i = 1; i < before.size(); ++i) {
        if (before[i] != after[i] && !numberedBefore[i]) {
            return "line " + std::to_string(i) + "\n  before   " + workspace::ToUtf8(before[i]) +
                   "\n  numbered " + workspace::ToUtf8(numbered[i]) + "\n  after    " +
                   workspace::ToUtf8(after[i]);
        }
    }
    return "";
}

TEST(RoundTrip, OfWildModulesLosesNothing) {
    std::size_t edited = 0;
    for (std::uint64_t seed = 1; seed <= 400; ++seed) {
        ASSERT_EQ(FirstLoss(support::GenerateWildModule({.lines = 150, .seed = seed}), {}, edited), "")
            << "seed " << seed;
    }
    EXPECT_GT(edited, 400U) << "the modules give the insertion nothing to do";
}

TEST(RoundTrip, OfWildModulesLosesNothingWithOddSteps) {
    std::size_t edited = 0;
    for (std::uint64_t seed = 1; seed <= 400; ++seed) {
        const std::int32_t step = static_cast<std::int32_t>(1 + seed * 997 % 40000);
        ASSERT_EQ(FirstLoss(support::GenerateWildModule({.lines = 60, .seed = seed}),
                            {.base = 10000, .step = step}, edited),
                  "")
            << "seed " << seed << ", step " << step;
    }
    EXPECT_GT(edited, 200U) << "the modules give the insertion nothing to do";
}

TEST(RoundTrip, OfWildModulesLosesNothingWithNumbersByModule) {
    std::size_t edited = 0;
    for (std::uint64_t seed = 1; seed <= 400; ++seed) {
        ASSERT_EQ(FirstLoss(support::GenerateWildModule({.lines = 150, .seed = seed}),
                            {.numbering = Numbering::Module}, edited),
                  "")
            << "seed " << seed;
    }
    EXPECT_GT(edited, 400U) << "the modules give the insertion nothing to do";
}

struct Frame {
    std::string_view header;
    std::string_view closing;
};

// Procedures put together from pieces that the guards are about, in no sensible order.
std::string MosaicModule(std::uint64_t seed) {
    static constexpr std::array<Frame, 11> frames = {
        {{"Sub A()", "End Sub"},
         {"Sub B( _\r\n    ByVal x)", "End Sub"},
         {"Sub b( _\r\n _\r\n )", "End Sub"},
         {"Function C() As Long", "End Function"},
         {"Property Get P() As Long", "End Property"},
         {"Property Let P( _\r\n   ByVal v As Long)", "End Property"},
         {"Property Set P(v)", "End Property"},
         {"Property Get Q( _\r\n )", "End Property"},
         {"Property Let Q(v) ' Property Get P", "End Property"},
         {"Private Sub D()", "End Sub"},
         {"Sub E(): x", "End Sub"}}};
    static constexpr std::array<std::string_view, 44> pieces = {"    x = 1",
                                                                "    x = 1 + _",
                                                                "        2",
                                                                "              deep",
                                                                "",
                                                                "        ",
                                                                "\t",
                                                                "here:",
                                                                "here:        x = 1",
                                                                ":       y",
                                                                "    Select Case x",
                                                                "Select Case x",
                                                                "    Case 1",
                                                                "Case Else",
                                                                "    ' comment",
                                                                "    ' comment _",
                                                                "#If X Then",
                                                                "#Else",
                                                                "# End If",
                                                                "    name_",
                                                                "    GoTo 10005",
                                                                "    If x Then 10010 Else 10000",
                                                                "12345x: y",
                                                                "End Sub' 1234567890123",
                                                                "End Property' 123456789012345678",
                                                                "    On Error GoTo here",
                                                                "Rem End Sub",
                                                                "x=1:       y=2",
                                                                "_",
                                                                " _",
                                                                "       _",
                                                                "10 x",
                                                                "10005: y",
                                                                "1: y",
                                                                "End Sub ' done",
                                                                "End Function  ' comment",
                                                                "Sub F()",
                                                                "a: b: End Sub",
                                                                "10: End Property",
                                                                "    ' Property Let P",
                                                                "    s = \"Property Set P\"",
                                                                "       Exit Sub",
                                                                "\t10 y",
                                                                "x\t_"};
    support::Random random(seed);
    std::string bytes = "Attribute VB_Name = \"Mosaic\"\r\n";
    for (std::size_t procedures = 1 + random.Below(6); procedures > 0; --procedures) {
        const Frame& frame = random.Pick(frames);
        bytes += frame.header;
        bytes += "\r\n";
        // A few pieces each, or most procedures would hold one that has them skipped.
        const std::array<std::string_view, 3> chosen = {random.Pick(pieces), random.Pick(pieces), pieces[0]};
        for (std::size_t lines = random.Below(7); lines > 0; --lines) {
            bytes += random.Pick(chosen);
            bytes += random.Chance(3) ? "\n" : "\r\n";
        }
        bytes += random.Chance(94) ? frame.closing : random.Pick(pieces);
        bytes += "\r\n";
        if (random.Chance(30)) {
            bytes += random.Pick(pieces);
            bytes += "\r\n";
        }
    }
    return bytes;
}

// More for a long search: LINTARA_SEEDS.
std::uint64_t Seeds() {
    const char* seeds = std::getenv("LINTARA_SEEDS");
    return seeds == nullptr ? 5000 : std::stoull(seeds);
}

TEST(RoundTrip, OfMosaicsLosesNothing) {
    std::size_t edited = 0;
    for (std::uint64_t seed = 1; seed <= Seeds(); ++seed) {
        const std::int32_t step = seed % 3 == 0 ? static_cast<std::int32_t>(seed * 7919 % 30000 + 1) : 5;
        ASSERT_EQ(FirstLoss(MosaicModule(seed), {.base = 10000, .step = step}, edited), "")
            << MosaicModule(seed);
    }
    EXPECT_GT(edited, 4000U) << "the modules give the insertion nothing to do";
}

TEST(RoundTrip, OfMosaicsLosesNothingWithNumbersByModule) {
    std::size_t edited = 0;
    for (std::uint64_t seed = 1; seed <= Seeds(); ++seed) {
        ASSERT_EQ(FirstLoss(MosaicModule(seed), {.numbering = Numbering::Module}, edited), "")
            << MosaicModule(seed);
    }
    EXPECT_GT(edited, 4000U) << "the modules give the insertion nothing to do";
}

TEST(RoundTrip, OfUsualModulesLosesNothingAndSkipsNothing) {
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        EditedModule module = EditedModule::FromFile(support::GenerateModule({.lines = 3000, .seed = seed}));
        const ComponentReport report = module.Insert();
        EXPECT_TRUE(report.skipped.empty());
        EXPECT_GT(report.edited.size(), 15U);
        EXPECT_TRUE(module.Remove().skipped.empty());
        EXPECT_EQ(module.Bytes(), module.OriginalBytes());
    }
}

TEST(RoundTrip, OfASkippedProcedureTouchesNothing) {
    for (std::uint64_t seed = 1; seed <= 3000; ++seed) {
        EditedModule module = EditedModule::FromFile(MosaicModule(seed));
        const std::vector<Text> before = AllLines(module);
        const ComponentReport report = module.Insert();
        const std::vector<Text> after = AllLines(module);
        for (const ProcedureGroup& group : GroupProcedures(module.module().Procedures())) {
            const bool wasEdited = std::ranges::any_of(
                report.edited, [&](const EditedProcedure& edited) { return edited.name == group.name; });
            for (const workspace::ProcedureInfo& procedure : group.reached) {
                for (Line line = procedure.header; !wasEdited && line <= procedure.closing; ++line) {
                    const auto i = static_cast<std::size_t>(line.value());
                    ASSERT_EQ(before[i], after[i]) << MosaicModule(seed);
                }
            }
        }
    }
}

}  // namespace
}  // namespace lintara::cli
