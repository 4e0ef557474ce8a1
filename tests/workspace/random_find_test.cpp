// Random searches, before and after random edits, against the reference's search over the joined text.
#include "tests/support/random.h"
#include "tests/support/reference_module.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <array>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using hostmodel::FindOptions;
using support::Random;
using support::ReferenceModule;

constexpr std::array<TextView, 28> pieces{
    u"a",      u"A",          u"b",     u" ",       u" ",   u"aa",      u"ab",  u"_",      u"1",  u".",
    u"*",      u"?",          u"foo",   u"Foo",     u"Bar", u"foo bar", u"bar", u"\r",     u"\n", u"\u00E4",
    u"\u00C4", u"\U0001F600", u"item1", u"End Sub", u"k",   u"\u212A",  u"s",   u"\u017F",
};

Text RandomLine(Random& random) {
    Text line;
    for (std::size_t count = random.Below(random.Chance(20) ? 12 : 5); count > 0; --count) {
        line += random.Pick(pieces);
    }
    return line;
}

FindOptions RandomOptions(Random& random) {
    return {
        .wholeWord = random.Chance(40), .matchCase = random.Chance(40), .patternSearch = random.Chance(40)};
}

// A part of the module's own text, often with something else in it, or a text of its own.
Text RandomTarget(Random& random, TextView joined) {
    if (joined.empty() || random.Chance(10)) {
        return RandomLine(random);
    }
    const std::size_t begin = random.Below(joined.size());
    Text target(joined.substr(begin, random.Below(random.Chance(80) ? 6 : 30)));
    if (!target.empty() && random.Chance(40)) {
        constexpr std::array<char16_t, 6> others{u'*', u'*', u'?', u'a', u'F', u'\r'};
        target[random.Below(target.size())] = random.Pick(others);
    }
    return target;
}

std::int32_t RandomPlace(Random& random, std::int32_t limit) {
    return static_cast<std::int32_t>(random.Below(static_cast<std::size_t>(limit) + 5)) - 2;
}

std::string Shown(Position position) {
    return std::to_string(position.line.value()) + ":" + std::to_string(position.column.value());
}

void CompareFind(const Module& module, const ReferenceModule& reference, TextView target, Position start,
                 Position end, FindOptions options) {
    const auto expected = reference.Find(target, start, end, options);
    Position foundStart = start;
    Position foundEnd = end;
    const bool found = module.Find(target, foundStart, foundEnd, options);
    const auto context = [&] {
        return "target \"" + testing::PrintToString(target) + "\" from " + Shown(start) + " to " +
               Shown(end) + (options.wholeWord ? " word" : "") + (options.matchCase ? " case" : "") +
               (options.patternSearch ? " pattern" : "") + "\nin " +
               testing::PrintToString(*module.Lines(Line{1}, module.CountOfLines()));
    };
    ASSERT_EQ(found, expected.has_value()) << context();
    ASSERT_EQ(Shown(foundStart), Shown(expected ? expected->first : start)) << context();
    ASSERT_EQ(Shown(foundEnd), Shown(expected ? expected->second : end)) << context();
}

void CompareRandomFind(const Module& module, const ReferenceModule& reference, Random& random) {
    const Text joined = *module.Lines(Line{1}, module.CountOfLines());
    const Text target = RandomTarget(random, joined);
    Position start{Line{1}, Column{1}};
    Position end{Line{0}, Column{0}};
    if (random.Chance(80)) {
        const std::int32_t lines = module.CountOfLines();
        start = {Line{RandomPlace(random, lines)}, Column{RandomPlace(random, 12)}};
        end = {Line{RandomPlace(random, lines)}, Column{RandomPlace(random, 12)}};
    }
    CompareFind(module, reference, target, start, end, RandomOptions(random));
}

std::unique_ptr<Module> RandomModule(Random& random, ReferenceModule& reference, std::size_t lines) {
    auto module = Module::FromText(u"");
    for (std::size_t i = 0; i < lines; ++i) {
        const Text line = RandomLine(random);
        EXPECT_TRUE(module->InsertLines(Line{1}, line));
        reference.InsertLines(1, line);
    }
    for (std::int32_t line = 1; line <= module->CountOfLines(); ++line) {
        module->ReadLine(Line{line}, reference.lines[static_cast<std::size_t>(line) - 1]);
    }
    return module;
}

TEST(RandomFind, EverySearchAnswersAsTheReferenceDoes) {
    for (std::uint64_t seed = 1; seed <= 400; ++seed) {
        Random random(seed);
        ReferenceModule reference;
        const auto module = RandomModule(random, reference, random.Below(9));
        for (int search = 0; search < 60; ++search) {
            ASSERT_NO_FATAL_FAILURE(CompareRandomFind(*module, reference, random)) << "seed " << seed;
        }
    }
}

// Words that are seldom enough to be far away, and common ones.
Text RandomWords(Random& random) {
    Text line;
    for (std::size_t count = random.Below(4); count > 0; --count) {
        const std::size_t number = random.Below(random.Chance(50) ? 3 : 60);
        line += random.Chance(50) ? TextView(u"word") : TextView(u"Word");
        line += FromUtf8(std::to_string(number));
        line += random.Chance(85) ? u' ' : u'_';
    }
    return line;
}

void EditBoth(Module& module, ReferenceModule& reference, Random& random) {
    const auto line = static_cast<std::int32_t>(random.Below(reference.lines.size()) + 1);
    Text text = RandomWords(random);
    while (random.Chance(20)) {
        text += u"\r\n" + RandomWords(random);
    }
    switch (random.Below(random.Chance(70) ? 3 : 4)) {
        case 0:
            ASSERT_TRUE(module.InsertLines(Line{line}, text));
            reference.InsertLines(line, text);
            break;
        case 1: {
            const std::size_t left = reference.lines.size() + 1 - static_cast<std::size_t>(line);
            const auto count = static_cast<std::int32_t>(random.Below(std::min<std::size_t>(left, 4)));
            ASSERT_TRUE(module.DeleteLines(Line{line}, count));
            reference.DeleteLines(line, count);
            break;
        }
        case 2: {
            // A part of the line changes.
            Text& old = reference.lines[static_cast<std::size_t>(line) - 1];
            Text changed = old;
            changed.insert(random.Below(changed.size() + 1), random.Chance(50) ? u"7" : u" word59 ");
            ASSERT_TRUE(module.ReplaceLine(Line{line}, changed));
            reference.ReplaceLine(line, changed);
            break;
        }
        default:
            ASSERT_TRUE(module.ReplaceLine(Line{line}, text));
            reference.ReplaceLine(line, text);
    }
    if (reference.lines.empty()) {
        ASSERT_TRUE(module.InsertLines(Line{1}, u"word1"));
        reference.InsertLines(1, u"word1");
    }
}

void CompareWordFind(const Module& module, const ReferenceModule& reference, Random& random) {
    Text target = RandomWords(random);
    if (random.Chance(50)) {
        target = u"word" + FromUtf8(std::to_string(random.Below(60)));
    }
    if (random.Chance(20)) {
        target = u" " + target + u" ";
    }
    const std::int32_t lines = module.CountOfLines();
    const Position start{Line{random.Chance(60) ? 1 : RandomPlace(random, lines)},
                         Column{random.Chance(50) ? 1 : RandomPlace(random, 20)}};
    const Position end{Line{random.Chance(60) ? 0 : RandomPlace(random, lines)},
                       Column{RandomPlace(random, 20)}};
    const FindOptions options{
        .wholeWord = random.Chance(70), .matchCase = random.Chance(30), .patternSearch = false};
    CompareFind(module, reference, target, start, end, options);
}

TEST(RandomFind, WordsFarAwayAreFoundAfterEdits) {
    for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        Random random(seed);
        ReferenceModule reference;
        for (std::size_t lines = 40 + random.Below(200); lines > 0; --lines) {
            reference.lines.push_back(RandomWords(random));
        }
        Text text;
        for (const Text& line : reference.lines) {
            text += line + u"\r\n";
        }
        const auto module = Module::FromText(text);
        for (int step = 0; step < 150; ++step) {
            ASSERT_NO_FATAL_FAILURE(CompareWordFind(*module, reference, random))
                << "seed " << seed << ", step " << step;
            ASSERT_NO_FATAL_FAILURE(EditBoth(*module, reference, random));
        }
    }
}

// What a walk over a module leaves behind and asks for: texts of frequent words, with overlaps and in all
// letter cases.
constexpr std::array<TextView, 14> statements{
    u"    On Error GoTo 0",
    u"On Error Goto hErr",
    u"10010: on error goto 0",
    u"On Error GoTo 0: On Error Goto 0 ' on error goto 00",
    u"On Error Resume Next",
    u"x = 0",
    u"' begin",
    u"' BEGIN of it",
    u"'  begin",
    u"aaa",
    u"aAaa",
    u"aa",
    u"",
    u"On Error GoTo0",
};

struct Question {
    TextView target;
    FindOptions options;
};

constexpr FindOptions wholeWord{.wholeWord = true, .matchCase = false, .patternSearch = false};
constexpr FindOptions exactCase{.wholeWord = false, .matchCase = true, .patternSearch = false};
constexpr FindOptions pattern{.wholeWord = false, .matchCase = false, .patternSearch = true};

constexpr std::array<Question, 12> questions{{
    {u"On Error Goto 0", {}},
    {u"ON ERROR GOTO 0", {}},
    {u"On Error GoTo 0", exactCase},
    {u"On Error Goto 0", wholeWord},
    {u"On Error Goto hErr", {}},
    {u"' begin", {}},
    {u"aa", {}},
    {u"aaa", wholeWord},
    {u"nowhere", {}},
    {u"on*0", pattern},
    {u"'??begin", pattern},
    {u"0\r\nOn", {}},
}};

void EditStatement(Module& module, ReferenceModule& reference, Random& random) {
    const auto line = static_cast<std::int32_t>(random.Below(reference.lines.size()) + 1);
    Text text(random.Pick(statements));
    while (random.Chance(20)) {
        text += u"\r\n";
        text += random.Pick(statements);
    }
    switch (random.Below(4)) {
        case 0:
            ASSERT_TRUE(module.InsertLines(Line{line}, text));
            reference.InsertLines(line, text);
            break;
        case 1: {
            const std::size_t left = reference.lines.size() - static_cast<std::size_t>(line);
            const auto count = static_cast<std::int32_t>(random.Below(std::min<std::size_t>(left + 1, 4)));
            ASSERT_TRUE(module.DeleteLines(Line{line}, count));
            reference.DeleteLines(line, count);
            break;
        }
        case 2: {
            // A character more, or one less, creates and destroys matches.
            Text changed = reference.lines[static_cast<std::size_t>(line) - 1];
            const std::size_t at = random.Below(changed.size() + 1);
            random.Chance(50) ? changed.insert(at, u"0") : changed.erase(at, 1);
            ASSERT_TRUE(module.ReplaceLine(Line{line}, changed));
            reference.ReplaceLine(line, changed);
            break;
        }
        default:
            ASSERT_TRUE(module.ReplaceLine(Line{line}, text));
            reference.ReplaceLine(line, text);
    }
    // Keywords take their letter case when a line is committed, which an exact search can see.
    ASSERT_EQ(module.CountOfLines(), reference.CountOfLines());
    for (std::int32_t i = 1; i <= module.CountOfLines(); ++i) {
        module.ReadLine(Line{i}, reference.lines[static_cast<std::size_t>(i) - 1]);
    }
}

void AskAgain(const Module& module, const ReferenceModule& reference, Random& random) {
    const Question& question = random.Pick(questions);
    const std::int32_t lines = module.CountOfLines();
    const Position start{Line{random.Chance(40) ? 1 : RandomPlace(random, lines)},
                         Column{random.Chance(60) ? 0 : RandomPlace(random, 40)}};
    const Position end{Line{random.Chance(50) ? 0 : RandomPlace(random, lines)},
                       Column{random.Chance(50) ? 0 : RandomPlace(random, 40)}};
    CompareFind(module, reference, question.target, start, end, question.options);
}

TEST(RandomFind, TheSameTargetsAreFoundAgainAndAgainBetweenEdits) {
    for (std::uint64_t seed = 1; seed <= 25; ++seed) {
        Random random(seed);
        ReferenceModule reference;
        Text text;
        for (std::size_t lines = 20 + random.Below(60); lines > 0; --lines) {
            reference.lines.emplace_back(random.Pick(statements));
            text += reference.lines.back() + u"\r\n";
        }
        const auto module = Module::FromText(text);
        for (int step = 0; step < 200; ++step) {
            for (int search = 0; search < 6; ++search) {
                ASSERT_NO_FATAL_FAILURE(AskAgain(*module, reference, random))
                    << "seed " << seed << ", step " << step;
            }
            ASSERT_NO_FATAL_FAILURE(EditStatement(*module, reference, random));
        }
    }
}

// So many that the index that speeds up the searches is given up and made anew.
TEST(RandomFind, WordsAreFoundAfterLongSessions) {
    Random random(1);
    ReferenceModule reference;
    reference.lines.assign(400, u"word1 word2");
    Text text;
    for (const Text& line : reference.lines) {
        text += line + u"\r\n";
    }
    const auto module = Module::FromText(text);
    for (int step = 0; step < 6000; ++step) {
        ASSERT_NO_FATAL_FAILURE(EditBoth(*module, reference, random));
        if (step % 50 == 0) {
            ASSERT_NO_FATAL_FAILURE(CompareWordFind(*module, reference, random)) << "step " << step;
        }
    }
}

}  // namespace
}  // namespace lintara::workspace
