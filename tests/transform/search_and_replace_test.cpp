#include "transform/search_and_replace.h"

#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/support/plain_comparison.h"
#include "tests/support/random.h"
#include "tests/support/reference_module.h"
#include "tests/support/scripted_module.h"
#include "tests/transform/plain_operations.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using support::Code;
using support::CodeFixture;
using support::ModuleName;
using support::ScriptedModule;

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();

bool ReplaceIn(hostmodel::Globals& globals, TextView component, TextView sought, TextView replacement,
               Line start, Line end, ReplaceOptions options) {
    bool found = true;
    SearchAndReplace(globals, component, sought, replacement, start, end, options, found);
    return found;
}

bool Replace(CodeFixture& fixture, TextView sought, TextView replacement, std::int32_t start,
             std::int32_t end, ReplaceOptions options = {}) {
    const bool found =
        ReplaceIn(*fixture.globals(), ModuleName, sought, replacement, Line{start}, Line{end}, options);
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
    return found;
}

struct Case {
    std::string_view what;
    std::string_view before;
    TextView sought;
    TextView replacement;
    std::string_view after;
    bool wholeWord = false;
};

const std::vector<Case> Cases = {
    {"every occurrence in turn", "x = abc + abc", u"abc", u"d", "x = d + d"},
    {"any letter case", "x = ABC + Abc", u"abc", u"d", "x = d + d"},
    {"part of a word", "xabcd", u"abc", u"1", "x1d"},
    {"no part of a word", "abcd abc", u"abc", u"1", "abcd 1", true},
    {"at both ends of the line", "abc x abc", u"abc", u"d", "d x d"},
    {"nothing in its place", "a, bcd, e", u", ", u"", "abcde"},
    {"no pattern", "a*b axb", u"a*b", u"1", "1 axb"},
    {"several lines", "abc\nx\n abc", u"abc", u"d", "d\nx\n d"},
    {"one line becomes two", "abc x", u"abc", u"d\r\ne", "d\ne x"},
    {"itself", "abc abc", u"abc", u"abc", "abc abc"},
    {"longer, not holding the sought text", "a b", u"a", u"xyz", "xyz b"},
    {"a text that is not there", "abc", u"abd", u"d", "abc"},
    {"an empty text", "abc", u"", u"d", "abc"},
    // The search goes on from the column where the match ended in the old text.
    {"a shorter one hides what stood close behind", "abcabc abc", u"abc", u"", "abc "},
    {"a longer one is searched behind the old match", "ab", u"b", u"xb", "axxxxb"},
};

TEST(SearchAndReplaceTest, Replaces) {
    for (const Case& c : Cases) {
        for (const bool goThroughDelete : {false, true}) {
            SCOPED_TRACE(c.what);
            CodeFixture fixture(c.before);
            const bool found = Replace(fixture, c.sought, c.replacement, 1, 9,
                                       {.wholeWord = c.wholeWord, .goThroughDelete = goThroughDelete});
            EXPECT_EQ(fixture.text(), c.after);
            EXPECT_EQ(found, c.before != c.after || c.what == "itself");
        }
    }
}

TEST(SearchAndReplaceTest, AStartBehindTheEndAsksTheHostNothing) {
    CodeFixture fixture("abc");
    const auto plan = std::make_shared<support::FaultPlan>();
    support::FaultyGlobals globals(fixture.globals(), plan);
    EXPECT_FALSE(ReplaceIn(globals, ModuleName, u"abc", u"d", Line{10}, Line{5}, {}));
    EXPECT_TRUE(plan->calls.empty());
}

TEST(SearchAndReplaceTest, AMatchBehindTheLastLineIsFoundAndStays) {
    CodeFixture fixture("x\ny\nabc\nabc");
    EXPECT_TRUE(Replace(fixture, u"abc", u"d", 1, 2));
    EXPECT_EQ(fixture.text(), "x\ny\nabc\nabc");
}

TEST(SearchAndReplaceTest, OnlyLinesOfTheRangeAreReplaced) {
    CodeFixture fixture("abc\nabc\nabc\nabc");
    EXPECT_TRUE(Replace(fixture, u"abc", u"d", 2, 3));
    EXPECT_EQ(fixture.text(), "abc\nd\nd\nabc");
}

TEST(SearchAndReplaceTest, AMatchAboveTheFirstLineIsNotFound) {
    CodeFixture fixture("abc\nx");
    EXPECT_FALSE(Replace(fixture, u"abc", u"d", 2, 2));
}

TEST(SearchAndReplaceTest, AnEndBelow1FindsEverywhereAndReplacesNothing) {
    CodeFixture fixture("abc\nabc");
    EXPECT_TRUE(Replace(fixture, u"abc", u"d", 0, 0));
    EXPECT_TRUE(Replace(fixture, u"abc", u"d", -5, -1));
    EXPECT_FALSE(Replace(fixture, u"abc", u"d", 1, 0));
    EXPECT_FALSE(fixture.module().edited());
}

TEST(SearchAndReplaceTest, AMatchAcrossLinesIsFoundAndStays) {
    for (const TextView sought : {u"c\r\nabc", u"c\r\n", u"\r\na", u"abc\r\nabc\r\n"}) {
        CodeFixture fixture("abc\nabc\nabc");
        EXPECT_TRUE(Replace(fixture, sought, u"d", 1, 3));
        EXPECT_FALSE(fixture.module().edited());
    }
}

TEST(SearchAndReplaceTest, TheComponentIsThatOfTheActiveProject) {
    CodeFixture fixture("abc");
    fixture.AddComponent(u"Other", ModuleName, "abc");
    fixture.workspace().SetActiveProject(*fixture.workspace().Find(u"Other"));
    EXPECT_TRUE(Replace(fixture, u"abc", u"d", 1, 1));
    EXPECT_EQ(fixture.text(), "abc");
    EXPECT_EQ(fixture.TextOf(u"Other", ModuleName), "d");
}

TEST(SearchAndReplaceTest, AnUnknownComponentHasNoMatch) {
    CodeFixture fixture("abc");
    EXPECT_FALSE(ReplaceIn(*fixture.globals(), u"Nothing", u"abc", u"d", Line{1}, Line{9}, {}));
}

TEST(SearchAndReplaceTest, TheLineIsReplacedInPlaceOrDeletedAndInserted) {
    for (const bool goThroughDelete : {false, true}) {
        CodeFixture fixture("abc\nx abc");
        const auto plan = std::make_shared<support::FaultPlan>();
        support::FaultyGlobals globals(fixture.globals(), plan);
        EXPECT_TRUE(ReplaceIn(globals, ModuleName, u"abc", u"d", Line{1}, Line{2},
                              {.goThroughDelete = goThroughDelete}));
        EXPECT_EQ(fixture.text(), "d\nx d");
        EXPECT_EQ(plan->CountOf("CodeModule.ReplaceLine"), goThroughDelete ? 0U : 2U);
        EXPECT_EQ(plan->CountOf("CodeModule.DeleteLines"), goThroughDelete ? 2U : 0U);
        EXPECT_EQ(plan->CountOf("CodeModule.InsertLines"), goThroughDelete ? 2U : 0U);
        // One search per match, and the one that finds nothing.
        EXPECT_EQ(plan->CountOf("CodeModule.Find"), 3U);
        EXPECT_EQ(plan->CountOf("VBComponent.CodeModule"), 3U);
        EXPECT_EQ(plan->CountOf("VBComponents.Item"), 1U);
    }
}

// A replacement that finds itself again is written once more than the line had characters, and once more to
// notice.
TEST(SearchAndReplaceGuardTest, AReplacementThatHoldsTheSoughtTextComesToAnEnd) {
    CodeFixture fixture("a\nxyz a");
    EXPECT_TRUE(Replace(fixture, u"a", u"aa", 1, Highest));
    EXPECT_EQ(fixture.text(), "aaaa\nxyz a");
    CodeFixture second("xyz a");
    EXPECT_TRUE(Replace(second, u"a", u"ba", 1, 1));
    EXPECT_EQ(second.text(), "xyz bbbbbbba");
}

TEST(SearchAndReplaceGuardTest, AsManyMatchesAsTheLineHasCharactersAreAllReplaced) {
    CodeFixture fixture(std::string(1000, 'a') + "\n" + std::string(1000, 'a'));
    EXPECT_TRUE(Replace(fixture, u"a", u"b", 1, 2));
    EXPECT_EQ(fixture.text(), std::string(1000, 'b') + "\n" + std::string(1000, 'b'));
}

TEST(SearchAndReplaceGuardTest, ALineThatKeepsMakingLinesEndsAtTheRangesEnd) {
    CodeFixture fixture("a\nb");
    EXPECT_TRUE(Replace(fixture, u"a", u"x\r\na", 1, 4));
    EXPECT_EQ(fixture.text(), "x\nx\nx\nx\na\nb");
}

// The line and those that were made of it count as one where nothing else would end it.
TEST(SearchAndReplaceGuardTest, ALineThatKeepsMakingLinesEndsWithoutARangesEndToo) {
    CodeFixture fixture("a\nb");
    EXPECT_TRUE(Replace(fixture, u"a", u"x\r\na", 1, Highest));
    EXPECT_EQ(fixture.text(), "x\nx\nx\na\nb");
    CodeFixture second("xyz a\na");
    EXPECT_TRUE(Replace(second, u"a", u"a\r\n\r\na", 2, Highest));
    EXPECT_EQ(second.text(), "xyz a\na\n\na\n\na\n\na");
}

TEST(SearchAndReplaceGuardTest, LinesThatEndByThemselvesAreMadeWithoutARangesEndToo) {
    const auto lines = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += "b\n";
        }
        return text;
    };
    for (const bool goThroughDelete : {false, true}) {
        CodeFixture fixture(std::string(300, 'a') + "\n" + std::string(300, 'a'));
        EXPECT_TRUE(Replace(fixture, u"a", u"b\r\n", 1, Highest, {.goThroughDelete = goThroughDelete}));
        EXPECT_EQ(fixture.text(), lines(300) + "\n" + lines(300));
    }
}

TEST(SearchAndReplaceGuardTest, ALineThatKeepsMakingLinesMakesMoreThanTheIdeTakes) {
    constexpr int ManyLines = 70000;
    CodeFixture fixture("a");
    EXPECT_TRUE(Replace(fixture, u"a", u"x\r\na", 1, ManyLines));
    EXPECT_EQ(fixture.module().CountOfLines(), ManyLines + 1);
}

// A code module that takes no line of more than `longest` characters, as the IDE takes none of more than
// 1023.
class ShortLines : public ScriptedModule {
  public:
    explicit ShortLines(std::size_t longest) : longest_(longest) {
        find = [this](TextView sought, Position& start, Position& end,
                      hostmodel::FindOptions) -> Result<bool> {
            auto column = static_cast<std::size_t>(std::max(start.column.value(), 1));
            for (auto line = static_cast<std::size_t>(start.line.value()); line <= lines.size(); ++line) {
                const std::size_t at = lines[line - 1].find(sought, column - 1);
                if (at != Text::npos) {
                    start = {Line{static_cast<std::int32_t>(line)},
                             Column{static_cast<std::int32_t>(at) + 1}};
                    end = {start.line, start.column + static_cast<std::int32_t>(sought.size())};
                    return true;
                }
                column = 1;
            }
            return false;
        };
    }

    Result<void> ReplaceLine(Line line, TextView text) override {
        if (text.size() > longest_) {
            return Failure(ErrorNumber::HostFailure, "the line is too long");
        }
        return ScriptedModule::ReplaceLine(line, text);
    }

  private:
    std::size_t longest_;
};

TEST(SearchAndReplaceGuardTest, HoweverManyLinesAreRefusedTheOnesBehindThemAreReplaced) {
    constexpr std::size_t Longest = 1023;
    const auto module = std::make_shared<ShortLines>(Longest);
    module->lines.assign(200, Text(Longest, u'a'));
    module->lines.emplace_back(u"a");
    EXPECT_TRUE(ReplaceIn(*support::GlobalsOver(module), u"C", u"a", u"bcd", Line{1}, Line{201}, {}));
    EXPECT_EQ(module->replacements, 1U);
    EXPECT_EQ(module->lines.back(), u"bcd");
}

// Where the host does not give the line, what stands in for it may be longer than the line itself.
TEST(SearchAndReplaceGuardTest, EveryMatchOfALineThatIsNotGivenIsReplaced) {
    CodeFixture fixture("aaaaaa\na");
    const auto plan = support::PlanWithOneFailure("CodeModule.Lines", 6);
    support::FaultyGlobals globals(fixture.globals(), plan);
    EXPECT_TRUE(ReplaceIn(globals, ModuleName, u"a", u"b", Line{1}, Line{2}, {}));
    EXPECT_EQ(fixture.text(), "bbbbbb\nbbbbbb");
}

using Positions = std::pair<Position, Position>;

Positions At(std::int32_t line, std::int32_t column, std::int32_t endLine, std::int32_t endColumn) {
    return {{Line{line}, Column{column}}, {Line{endLine}, Column{endColumn}}};
}

// Always finds, at the places in turn.
std::shared_ptr<ScriptedModule> AlwaysFinding(std::vector<Positions> places, std::size_t& searches) {
    auto module = std::make_shared<ScriptedModule>("abc\nabc\nabc\n");
    module->find = [places = std::move(places), &searches](TextView, Position& start, Position& end,
                                                           hostmodel::FindOptions) -> Result<bool> {
        if (!places.empty()) {
            std::tie(start, end) = places[searches % places.size()];
        }
        ++searches;
        return true;
    };
    return module;
}

TEST(SearchAndReplaceGuardTest, AHostThatAlwaysFindsComesToAnEnd) {
    const std::vector<std::vector<Positions>> answers = {
        {},                                                                   // as it was asked
        {At(1, 1, 1, 2)},                                                     // one place
        {At(2, 3, 1, 2)},                                                     // the end first
        {At(1, 2, 2, 1)},                                                     // across lines
        {At(1, 1, 1, 2), At(2, 1, 2, 2)},                                     // to and fro
        {At(1, 1, 2, 2), At(2, 2, 3, 1)},                                     // the same across lines
        {At(3, 1, 3, 2), At(2, 1, 2, 2), At(1, 1, 1, 2)},                     // upwards
        {At(0, 0, 0, 0)},                                                     // nowhere
        {At(-1, -1, -1, -1)},                                                 // below that
        {At(1, 7, 1, 9)},                                                     // behind the line
        {At(1, Highest, 1, Highest)},                                         // far behind it
        {At(Highest, 1, Highest, 2)},                                         // far below the module
        {At(1, std::numeric_limits<std::int32_t>::min(), 1, 1)},              // no length at all
        {At(std::numeric_limits<std::int32_t>::min(), 1, Highest, Highest)},  // everywhere
    };
    for (const auto& places : answers) {
        for (const auto& [first, last] :
             {std::pair(1, Highest), std::pair(1, 2), std::pair(0, 0), std::pair(-9, -1), std::pair(1, 1)}) {
            std::size_t searches = 0;
            const auto module = AlwaysFinding(places, searches);
            EXPECT_TRUE(
                ReplaceIn(*support::GlobalsOver(module), u"C", u"b", u"bb", Line{first}, Line{last}, {}));
            EXPECT_LT(searches, 100U);
        }
    }
}

TEST(SearchAndReplaceGuardTest, AHostThatFindsFurtherAndFurtherComesToAnEnd) {
    for (const bool down : {false, true}) {
        for (const std::int32_t last : {0, Highest}) {
            auto module = std::make_shared<ScriptedModule>("abc\n");
            std::size_t searches = 0;
            module->find = [&](TextView, Position& start, Position& end,
                               hostmodel::FindOptions) -> Result<bool> {
                start.line += down ? 1 : 0;
                ++start.column;
                end = {start.line + 1, start.column};
                ++searches;
                return true;
            };
            EXPECT_TRUE(ReplaceIn(*support::GlobalsOver(module), u"C", u"b", u"", Line{last == 0 ? 0 : 1},
                                  Line{last}, {}));
            EXPECT_LT(searches, 70000U);
        }
    }
}

TEST(SearchAndReplaceGuardTest, EveryMatchThatIsThereIsFoundWhereNothingIsReplaced) {
    std::string source;
    for (int line = 0; line < 700; ++line) {
        source += std::string(100, 'a') + "\n";
    }
    CodeFixture fixture(source);
    const auto plan = std::make_shared<support::FaultPlan>();
    support::FaultyGlobals globals(fixture.globals(), plan);
    EXPECT_TRUE(ReplaceIn(globals, ModuleName, u"a", u"b", Line{0}, Line{0}, {}));
    EXPECT_EQ(plan->CountOf("CodeModule.Find"), 70001U);
}

// A line that can be inserted and not deleted moves down for ever.
TEST(SearchAndReplaceGuardTest, AHostThatDeletesNothingComesToAnEnd) {
    CodeFixture fixture("a");
    const auto plan = std::make_shared<support::FaultPlan>();
    plan->fault = [](std::size_t, std::string_view call) {
        return call == "CodeModule.DeleteLines" ? support::Fault::Fails : support::Fault::None;
    };
    support::FaultyGlobals globals(fixture.globals(), plan);
    EXPECT_TRUE(
        ReplaceIn(globals, ModuleName, u"a", u"b", Line{1}, Line{Highest}, {.goThroughDelete = true}));
    EXPECT_EQ(fixture.text(), "b\nb\nb\na");
}

constexpr std::string_view Source = "Sub A()\n    abc = abc + 1\n    y = abc\nEnd Sub\n' abc";

TEST(FaultySearchAndReplaceTest, EveryFailingStatementIsSkippedAndTheNextRuns) {
    for (const bool goThroughDelete : {false, true}) {
        std::vector<bool> expected;
        std::vector<bool> found;
        support::ExpectAsPlainWithEveryCallFaulty(
            [] { return std::make_unique<CodeFixture>(Source); },
            [&](const auto& globals) {
                expected.push_back(support::PlainSearchAndReplace(
                    *globals, {ModuleName, u"abc", u"def", 1, 4, false, goThroughDelete}));
            },
            [&](const auto& globals) {
                found.push_back(ReplaceIn(*globals, ModuleName, u"abc", u"def", Line{1}, Line{4},
                                          {.goThroughDelete = goThroughDelete}));
            },
            11);
        EXPECT_EQ(found, expected);
    }
}

TEST(FaultySearchAndReplaceTest, ALineThatCannotBeReadBecomesTheOneReadBefore) {
    CodeFixture fixture("x = abc\ny = abc");
    const auto plan = support::PlanWithOneFailure("CodeModule.Lines", 1);
    support::FaultyGlobals globals(fixture.globals(), plan);
    EXPECT_TRUE(ReplaceIn(globals, ModuleName, u"abc", u"d", Line{1}, Line{2}, {}));
    EXPECT_EQ(fixture.text(), "x = d\nx = d");
}

constexpr std::array<TextView, 14> pieces{u"a",  u"b", u"ab", u"A",    u"_", u" ",   u"'",
                                          u"aa", u"",  u"1",  u"\r\n", u"x", u"b a", u"\""};

Text RandomText(support::Random& random, std::size_t most) {
    Text text;
    for (std::size_t i = random.Below(most + 1); i > 0; --i) {
        text += random.Pick(pieces);
    }
    return text;
}

std::string RandomSource(support::Random& random) {
    std::string source;
    for (const char16_t character : RandomText(random, 40)) {
        if (character != u'\r') {
            source += static_cast<char>(character);
        }
    }
    return source;
}

// The replacement over plain lines. Gives up, and returns nothing, after `mostPasses`.
std::optional<bool> ReplaceInLines(support::ReferenceModule& module, TextView sought, TextView replacement,
                                   std::int32_t first, std::int32_t last, bool wholeWord, int mostPasses) {
    bool any = false;
    Position start{Line{first}, Column{0}};
    Position end;
    for (int pass = 0; first <= last; ++pass) {
        const auto match = module.Find(sought, start, end, {.wholeWord = wholeWord});
        if (!match) {
            break;
        }
        if (pass == mostPasses) {
            return std::nullopt;
        }
        any = true;
        std::tie(start, end) = *match;
        const std::int32_t line = start.line.value();
        if (start.line == end.line && line <= last) {
            const Text old = module.lines[static_cast<std::size_t>(line) - 1];
            module.ReplaceLine(line, old.substr(0, static_cast<std::size_t>(start.column.value()) - 1) +
                                         Text(replacement) +
                                         old.substr(static_cast<std::size_t>(end.column.value()) - 1));
        }
        start.column = end.column;
        if (last >= 1 && line > last) {
            break;
        }
    }
    return any;
}

std::string Joined(const support::ReferenceModule& module) {
    std::string text;
    for (const Text& line : module.lines) {
        text +=
            std::string(&line == &module.lines.front() ? "" : "\n") + std::string(line.begin(), line.end());
    }
    return text;
}

support::ReferenceModule LinesOf(const CodeFixture& fixture) {
    support::ReferenceModule module;
    for (Line line{1}; line.value() <= fixture.module().CountOfLines(); ++line) {
        fixture.module().ReadLine(line, module.lines.emplace_back());
    }
    return module;
}

TEST(RandomSearchAndReplaceTest, EveryLoopEndsAndOneThatEndsByItselfIsNotCutShort) {
    support::Random random(31);
    int changed = 0;
    int endless = 0;
    for (int round = 0; round < 6000; ++round) {
        const std::string source = RandomSource(random);
        const Text sought = RandomText(random, 3);
        const Text replacement = RandomText(random, 3);
        const auto first = static_cast<std::int32_t>(random.Below(6)) - 1;
        const auto last = first + static_cast<std::int32_t>(random.Below(8)) - 1;
        const bool wholeWord = random.Chance(30);
        CodeFixture fixture(source);
        support::ReferenceModule reference = LinesOf(fixture);
        const auto expected = ReplaceInLines(reference, sought, replacement, first, last, wholeWord, 300);
        const bool found = Replace(fixture, sought, replacement, first, last,
                                   {.wholeWord = wholeWord, .goThroughDelete = random.Chance(30)});
        EXPECT_EQ(found, expected.value_or(true));
        if (expected) {
            ASSERT_EQ(fixture.text(), Joined(reference)) << "round " << round << "\n" << source;
            changed += fixture.module().edited() ? 1 : 0;
        } else {
            ++endless;
        }
    }
    EXPECT_GT(changed, 500);
    EXPECT_GT(endless, 50);
}

}  // namespace
}  // namespace lintara::transform
