#include "workspace/find.h"

#include "tests/support/module_text.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using hostmodel::FindOptions;
using support::ModuleOf;

constexpr FindOptions Plain{};
constexpr FindOptions Word{.wholeWord = true, .matchCase = false, .patternSearch = false};
constexpr FindOptions Case{.wholeWord = false, .matchCase = true, .patternSearch = false};
constexpr FindOptions Pattern{.wholeWord = false, .matchCase = false, .patternSearch = true};
constexpr FindOptions WordPattern{.wholeWord = true, .matchCase = false, .patternSearch = true};

std::string Shown(Position position) {
    return std::to_string(position.line.value()) + ":" + std::to_string(position.column.value());
}

Position At(std::int32_t line, std::int32_t column) {
    return {Line{line}, Column{column}};
}

// "line:column-line:column" of the match, or "none".
std::string Find(const Module& module, TextView target, Position start, Position end,
                 FindOptions options = Plain) {
    const Position startBefore = start;
    const Position endBefore = end;
    if (module.Find(target, start, end, options)) {
        return Shown(start) + "-" + Shown(end);
    }
    EXPECT_EQ(start, startBefore);
    EXPECT_EQ(end, endBefore);
    return "none";
}

// The first match in a module of that source.
std::string First(std::string_view source, TextView target, FindOptions options = Plain) {
    return Find(*ModuleOf(source), target, At(1, 1), At(0, 0), options);
}

TEST(Find, GivesTheMatchAndThePlaceBehindIt) {
    EXPECT_EQ(First("abc\nxaby", u"ab"), "1:1-1:3");
    EXPECT_EQ(First("abc\nxaby", u"by"), "2:3-2:5");
    EXPECT_EQ(First("abc\nxaby", u"bx"), "none");
    EXPECT_EQ(First("a", u"a"), "1:1-1:2");
    EXPECT_EQ(First("", u"a"), "none");
    EXPECT_EQ(First("\U0001F600x", u"x"), "1:3-1:4");
    EXPECT_EQ(First("aab", u"ab"), "1:2-1:4");
    EXPECT_EQ(First("abababc", u"ababc"), "1:3-1:8");
}

TEST(Find, AnEmptyTargetIsNeverFound) {
    for (const FindOptions options : {Plain, Word, Case, Pattern}) {
        EXPECT_EQ(First("abc", u"", options), "none");
        EXPECT_EQ(First("", u"", options), "none");
    }
}

TEST(Find, BeginsAtTheStart) {
    const auto module = ModuleOf("a a\na");
    EXPECT_EQ(Find(*module, u"a", At(1, 1), At(0, 0)), "1:1-1:2");
    EXPECT_EQ(Find(*module, u"a", At(1, 2), At(0, 0)), "1:3-1:4");
    EXPECT_EQ(Find(*module, u"a", At(1, 4), At(0, 0)), "2:1-2:2");
    EXPECT_EQ(Find(*module, u"a", At(2, 1), At(0, 0)), "2:1-2:2");
    EXPECT_EQ(Find(*module, u"a", At(2, 2), At(0, 0)), "none");
    // A column past the end of a line.
    EXPECT_EQ(Find(*module, u"a", At(1, 99), At(0, 0)), "2:1-2:2");
    EXPECT_EQ(Find(*module, u"a", At(1, std::numeric_limits<std::int32_t>::max()), At(0, 0)), "2:1-2:2");
}

TEST(Find, ALineOrColumnBelowOneCountsAsOne) {
    const auto module = ModuleOf("a a\na");
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    for (const std::int32_t low : {0, -1, -2, least}) {
        EXPECT_EQ(Find(*module, u"a", At(low, 1), At(0, 0)), "1:1-1:2");
        EXPECT_EQ(Find(*module, u"a", At(1, low), At(0, 0)), "1:1-1:2");
        EXPECT_EQ(Find(*module, u"a", At(low, low), At(0, 0)), "1:1-1:2");
        // Each by itself.
        EXPECT_EQ(Find(*module, u"a", At(low, 2), At(0, 0)), "1:3-1:4");
        EXPECT_EQ(Find(*module, u"a", At(2, low), At(0, 0)), "2:1-2:2");
    }
}

TEST(Find, AStartBehindTheModuleFindsNothing) {
    const auto module = ModuleOf("a\na");
    EXPECT_EQ(Find(*module, u"a", At(3, 1), At(0, 0)), "none");
    EXPECT_EQ(Find(*module, u"a", At(std::numeric_limits<std::int32_t>::max(), 1), At(0, 0)), "none");
}

TEST(Find, AMatchLiesWhollyBeforeTheEnd) {
    const auto module = ModuleOf("abc\nabc");
    EXPECT_EQ(Find(*module, u"abc", At(1, 2), At(2, 4)), "2:1-2:4");
    EXPECT_EQ(Find(*module, u"abc", At(1, 2), At(2, 3)), "none");
    EXPECT_EQ(Find(*module, u"bc", At(1, 1), At(1, 4)), "1:2-1:4");
    EXPECT_EQ(Find(*module, u"bc", At(1, 1), At(1, 3)), "none");
    EXPECT_EQ(Find(*module, u"abc", At(1, 2), At(2, 0)), "none");
    EXPECT_EQ(Find(*module, u"bc", At(1, 1), At(2, 1)), "1:2-1:4");
    // Past the end of a line and of the module.
    EXPECT_EQ(Find(*module, u"abc", At(1, 2), At(2, 99)), "2:1-2:4");
    EXPECT_EQ(Find(*module, u"abc", At(1, 2), At(99, 1)), "2:1-2:4");
    EXPECT_EQ(Find(*module, u"abc", At(1, 2), At(std::numeric_limits<std::int32_t>::max(), 1)), "2:1-2:4");
}

TEST(Find, AnEndThatIsNotAfterTheStartIsTheEndOfTheModule) {
    const auto module = ModuleOf("x abc\nabc\nabc");
    for (const Position end : {At(0, 0), At(2, 2), At(2, 1), At(1, 99), At(1, -1), At(0, 99), At(-2, 5),
                               At(std::numeric_limits<std::int32_t>::min(), 0)}) {
        EXPECT_EQ(Find(*module, u"abc", At(2, 2), end), "3:1-3:4") << Shown(end);
    }
}

TEST(Find, AnEndLineOfMinusOneIsTheEndOfTheModule) {
    const auto module = ModuleOf("abc\nabc");
    for (const std::int32_t column : {-1, 0, 1, 99}) {
        EXPECT_EQ(Find(*module, u"abc", At(1, 2), At(-1, column)), "2:1-2:4");
    }
}

TEST(Find, AnEndColumnOfMinusOneIsTheEndOfItsLine) {
    const auto module = ModuleOf("abc\nabc\nabc");
    EXPECT_EQ(Find(*module, u"abc", At(1, 2), At(2, -1)), "2:1-2:4");
    EXPECT_EQ(Find(*module, u"abc", At(1, 1), At(1, -1)), "1:1-1:4");
    EXPECT_EQ(Find(*module, u"x", At(1, 1), At(1, -1)), "none");
    // The end of line 1 is not after the end of line 1, so the search goes on to the end of the module.
    EXPECT_EQ(Find(*module, u"abc", At(1, 4), At(1, -1)), "2:1-2:4");
    // On a line that does not exist it is column 1.
    EXPECT_EQ(Find(*module, u"abc", At(3, 1), At(4, -1)), "3:1-3:4");
    EXPECT_EQ(Find(*module, u"abc", At(3, 1), At(0, -1)), "3:1-3:4");
}

TEST(Find, WithoutMatchCaseCharactersAreFolded) {
    EXPECT_EQ(First("x END sub", u"End Sub"), "1:3-1:10");
    EXPECT_EQ(First("x END sub\nEnd Sub", u"End Sub", Case), "2:1-2:8");
    EXPECT_EQ(First("\u00C4RGER \u03A3", u"\u00E4rger \u03C2"), "1:1-1:8");
    EXPECT_EQ(First("\u00C4", u"\u00E4", Case), "none");
    EXPECT_EQ(First("stra\u00DFe", u"strasse"), "none");
}

TEST(Find, WholeWordsHaveNoWordCharacterAround) {
    EXPECT_EQ(First("foobar barfoo foo_ _foo 1foo foo1 \u00E4foo foo\u00E4 foo\u0660 foo", u"foo", Word),
              "1:50-1:53");
    EXPECT_EQ(First("foo", u"foo", Word), "1:1-1:4");
    EXPECT_EQ(First("(foo)", u"foo", Word), "1:2-1:5");
    EXPECT_EQ(First("\U0001F600foo\u00D7", u"foo", Word), "1:3-1:6");
    // The target's own ends count, whatever they are.
    EXPECT_EQ(First("a.b .b", u".b", Word), "1:5-1:7");
    EXPECT_EQ(First("xfoo\nfoo", u"foo", Word), "2:1-2:4");
    EXPECT_EQ(First("End Subs\nEnd Sub", u"end sub", Word), "2:1-2:8");
    EXPECT_EQ(First("aaa aa", u"aa", Word), "1:5-1:7");
}

TEST(Find, ATargetMaySpanLines) {
    const std::string_view source = "a\nb\n\nc\nab\nc";
    EXPECT_EQ(First(source, u"a\r\nb"), "1:1-2:2");
    EXPECT_EQ(First(source, u"b\r\nc"), "5:2-6:2");
    EXPECT_EQ(First(source, u"b\r\n\r\nc"), "2:1-4:2");
    EXPECT_EQ(First(source, u"a\nb"), "none");
    EXPECT_EQ(First(source, u"\r\n"), "1:2-2:1");
    EXPECT_EQ(First(source, u"\r\n\r\n"), "2:2-4:1");
    EXPECT_EQ(First(source, u"\r\nc"), "3:1-4:2");
    EXPECT_EQ(First(source, u"c\r\n"), "4:1-5:1");
    EXPECT_EQ(First("a", u"a\r\n"), "none");
    EXPECT_EQ(First("a\nB\nC\nd", u"A\r\nb\r\nc\r\nD"), "1:1-4:2");
}

TEST(Find, ATargetMayHoldAPartOfALineBreak) {
    EXPECT_EQ(First("a\nb", u"\r"), "1:2-1:3");
    EXPECT_EQ(First("a\nb", u"\n"), "1:3-2:1");
    EXPECT_EQ(First("a\nb", u"a\r"), "1:1-1:3");
    EXPECT_EQ(First("a\nb", u"\nb"), "1:3-2:2");
    const auto module = ModuleOf("a\nb");
    EXPECT_EQ(Find(*module, u"\n", At(1, 3), At(0, 0)), "1:3-2:1");
    EXPECT_EQ(Find(*module, u"\n", At(1, 4), At(0, 0)), "none");
    EXPECT_EQ(Find(*module, u"\r\n", At(1, 1), At(1, 99)), "none");
    EXPECT_EQ(Find(*module, u"\r\n", At(1, 1), At(2, 1)), "1:2-2:1");
}

TEST(Find, WholeWordsLookAtTheCharactersOfTheirLines) {
    EXPECT_EQ(First("xa\nb\na\nb", u"a\r\nb", Word), "3:1-4:2");
    EXPECT_EQ(First("a\nbx\na\nb", u"a\r\nb", Word), "3:1-4:2");
    // A break lies between a match and the words of other lines, but "x" and "y" stand on this one's.
    EXPECT_EQ(First("x\ny\n\n(\n)", u"\r\n", Word), "3:1-4:1");
}

TEST(Find, Patterns) {
    EXPECT_EQ(First("abc", u"a?c", Pattern), "1:1-1:4");
    EXPECT_EQ(First("ac abbc", u"a?c", Pattern), "none");
    EXPECT_EQ(First("xac", u"a*c", Pattern), "1:2-1:4");
    EXPECT_EQ(First("ac c\nc", u"a*c", Pattern), "1:1-1:5");  // as long as possible within the line
    EXPECT_EQ(First("a\nc", u"a*c", Pattern), "none");
    EXPECT_EQ(First("abc", u"*", Pattern), "1:1-1:4");
    EXPECT_EQ(First("abc", u"?", Pattern), "1:1-1:2");
    EXPECT_EQ(First("abc", u"b*", Pattern), "1:2-1:4");
    EXPECT_EQ(First("abc", u"**c", Pattern), "1:1-1:4");
    EXPECT_EQ(First("abc", u"*?", Pattern), "1:1-1:4");
    EXPECT_EQ(First("ABC", u"a*C", Pattern), "1:1-1:4");
    EXPECT_EQ(First("a*c abc", u"a*c", Plain), "1:1-1:4");
    EXPECT_EQ(First("a?c", u"abc", Pattern), "none");
    EXPECT_EQ(First("aXbXc", u"a*b*c", Pattern), "1:1-1:6");
    EXPECT_EQ(First("abab", u"a*b", Pattern), "1:1-1:5");
    EXPECT_EQ(First("x", u"x*", Pattern), "1:1-1:2");
    EXPECT_EQ(First("", u"*", Pattern), "none");
}

TEST(Find, PatternsAreBoundByWordsAndEnds) {
    EXPECT_EQ(First("foox foo", u"f*", WordPattern), "1:1-1:9");
    EXPECT_EQ(First("foox.foo1", u"f*o", WordPattern), "none");
    EXPECT_EQ(First("foox.foo_ ", u"f?o*", WordPattern), "1:1-1:11");
    const auto module = ModuleOf("abcbc");
    EXPECT_EQ(Find(*module, u"a*c", At(1, 1), At(1, 5), Pattern), "1:1-1:4");
    EXPECT_EQ(Find(*module, u"a*", At(1, 1), At(1, 3), Pattern), "1:1-1:3");
}

TEST(Find, WildcardsStayOnTheirLine) {
    EXPECT_EQ(First("ab\nc", u"a*\r\n*", Pattern), "1:1-2:2");
    EXPECT_EQ(First("ab\ncd\ne", u"b\r\n*\r\n?", Pattern), "1:2-3:2");
    EXPECT_EQ(First("a\nb", u"a?b", Pattern), "none");
    EXPECT_EQ(First("a\nb", u"a??b", Pattern), "none");
    EXPECT_EQ(First("a\nb", u"a*\r*\nb", Pattern), "1:1-2:2");
    // A lone CR or LF inside a line is a character of it.
    const auto module = ModuleOf("x");
    ASSERT_TRUE(module->ReplaceLine(Line{1}, u"a\rb\nc"));
    EXPECT_EQ(Find(*module, u"a*c", At(1, 1), At(0, 0), Pattern), "1:1-1:6");
    EXPECT_EQ(Find(*module, u"a?b", At(1, 1), At(0, 0), Pattern), "1:1-1:4");
}

TEST(Find, SearchOnWalksThroughAllMatches) {
    const auto module = ModuleOf("foo foo\nxfoo\n\nfoo");
    Position start = At(1, 1);
    Position end = At(0, 0);
    std::string all;
    while (module->Find(u"foo", start, end, Plain)) {
        all += Shown(start) + " ";
        start = end;  // the next search begins where this match ended
    }
    EXPECT_EQ(all, "1:1 1:5 2:2 4:1 ");
}

// Far beyond what is read line by line, where the index of words tells where to look.
TEST(Find, FarAwayAndAfterEdits) {
    Text text;
    for (int i = 0; i < 1000; ++i) {
        text += u"line " + FromUtf8(std::to_string(i)) + u" of many\r\n";
    }
    const auto module = Module::FromText(text);
    EXPECT_EQ(Find(*module, u"needle", At(1, 1), At(0, 0), Word), "none");
    ASSERT_TRUE(module->ReplaceLine(Line{700}, u"a Needle here"));
    EXPECT_EQ(Find(*module, u"needle", At(1, 1), At(0, 0), Word), "700:3-700:9");
    EXPECT_EQ(Find(*module, u"x needle y", At(1, 1), At(0, 0)), "none");
    EXPECT_EQ(Find(*module, u"a needle h", At(1, 1), At(0, 0)), "700:1-700:11");
    EXPECT_EQ(Find(*module, u"needle", At(1, 1), At(699, 99), Word), "none");
    ASSERT_TRUE(module->InsertLines(Line{10}, u"a\r\nb\r\nc"));
    EXPECT_EQ(Find(*module, u"needle", At(1, 1), At(0, 0), Word), "703:3-703:9");
    ASSERT_TRUE(module->DeleteLines(Line{100}, 600));
    EXPECT_EQ(Find(*module, u"needle", At(1, 1), At(0, 0), Word), "103:3-103:9");
    // What is left of a word is a word of its own, and so are two that became one.
    ASSERT_TRUE(module->ReplaceLine(Line{103}, u"a Need, le here"));
    EXPECT_EQ(Find(*module, u"needle", At(1, 1), At(0, 0), Word), "none");
    EXPECT_EQ(Find(*module, u"need", At(1, 1), At(0, 0), Word), "103:3-103:7");
    ASSERT_TRUE(module->ReplaceLine(Line{103}, u"aNeed, le here"));
    EXPECT_EQ(Find(*module, u"aneed", At(1, 1), At(0, 0), Word), "103:1-103:6");
    module->ForgetSearches();
    EXPECT_EQ(Find(*module, u"aneed", At(1, 1), At(0, 0), Word), "103:1-103:6");
    ASSERT_TRUE(module->RestoreLine(Line{103}, u"other"));
    EXPECT_EQ(Find(*module, u"other", At(1, 1), At(0, 0), Word), "103:1-103:6");
    EXPECT_EQ(Find(*module, u"aneed", At(1, 1), At(0, 0), Word), "none");
}

}  // namespace
}  // namespace lintara::workspace
