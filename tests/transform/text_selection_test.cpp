#include "transform/text_selection.h"

#include "tests/support/random.h"

#include <array>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using support::Random;

constexpr std::int32_t Least = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Greatest = std::numeric_limits<std::int32_t>::max();

struct SelectionCase {
    TextView lines;
    std::int32_t startLine;
    std::int32_t startColumn;
    std::int32_t endLine;
    std::int32_t endColumn;
    TextView selected;
    TextView linesAfter = lines;
};

void Check(const std::vector<SelectionCase>& cases) {
    for (const SelectionCase& c : cases) {
        Text lines(c.lines);
        EXPECT_EQ(GetTextSelection(lines, c.startLine, c.endLine, c.startColumn, c.endColumn), c.selected)
            << "case " << &c - cases.data();
        EXPECT_EQ(lines, c.linesAfter) << "case " << &c - cases.data();
    }
}

TEST(GetTextSelectionTest, CutsOutOfOneLine) {
    Check({
        {u"abcdef", 7, 3, 7, 5, u"cd"},
        {u"abcdef", 7, 1, 7, 7, u"abcdef"},
        {u"abcdef", 7, 6, 7, 7, u"f"},
    });
}

TEST(GetTextSelectionTest, CutsOutOfSeveralLines) {
    Check({
        {u"abc\r\ndef", 1, 2, 2, 3, u"bc\r\nde"},
        {u"abc\r\ndef\r\nghi", 4, 4, 6, 2, u"\r\ndef\r\ng"},
        {u"\r\n\r\nx", 1, 1, 3, 2, u"\r\n\r\nx"},
    });
}

TEST(GetTextSelectionTest, AnEmptySelectionIsEmpty) {
    Check({
        {u"abc", 2, 1, 2, 1, u""},
        {u"abc", 2, 3, 2, 3, u""},
        {u"abc", 2, 4, 2, 4, u""},
        {u"", 1, 1, 1, 1, u""},
    });
}

// The line break that ends the selection is not in the lines that the IDE gives; the caller sees it appended.
TEST(GetTextSelectionTest, ASelectionOfWholeLinesEndsWithTheirLineBreak) {
    Check({{u"a\r\nb", 3, 1, 5, 1, u"a\r\nb\r\n", u"a\r\nb\r\n"}});
}

TEST(GetTextSelectionTest, TheCallerIsTrustedToPassOnlyTheSelectedLines) {
    Check({{u"a\r\nb\r\nc", 3, 1, 5, 1, u"a\r\nb\r\nc\r\n", u"a\r\nb\r\nc\r\n"}});
}

TEST(GetTextSelectionTest, OnlyADifferentLineAndTheFirstColumnAppendALineBreak) {
    Check({
        {u"a\r\nb", 3, 1, 3, 1, u"a\r\n"},
        {u"a\r\nb", 3, 1, 4, 2, u"a\r\nb"},
        {u"a\r\nb", 4, 1, 3, 1, u"a\r\nb\r\n", u"a\r\nb\r\n"},
    });
}

TEST(GetTextSelectionTest, ALoneCarriageReturnOrLineFeedEndsNoLine) {
    Check({
        {u"a\rb\nc", 1, 1, 1, 6, u"a\rb\nc"},
        {u"a\n\r\nb", 1, 1, 2, 2, u"a\n\r\nb"},
        {u"a\r\r\nb", 1, 1, 2, 2, u"a\r\r\nb"},
    });
}

TEST(GetTextSelectionTest, ASelectionThatEndsBeforeItBeginsIsEmpty) {
    Check({{u"abcdef", 1, 5, 1, 3, u""}});
}

TEST(GetTextSelectionTest, AStartBeforeTheFirstColumnIsEmpty) {
    Check({{u"abc", 1, 0, 1, 3, u""}, {u"abc", 1, -1, 1, 3, u""}, {u"abc", 1, Least, 1, 3, u""}});
}

TEST(GetTextSelectionTest, ColumnsBehindTheTextGiveWhatThereIs) {
    Check({
        {u"abc", 1, 2, 1, 100, u"bc"},
        {u"abc", 1, 4, 1, 100, u""},
        {u"abc", 1, 100, 1, 200, u""},
        {u"abc", 1, 1, 1, Greatest, u"abc"},
    });
}

// The offset of the last line and the end column are added first; the start column does not save the sum.
TEST(GetTextSelectionTest, ASumOutsideTheRangeIsEmpty) {
    Check({
        {u"a\r\nb", 1, 2, 2, Greatest, u""},
        {u"a\r\nb", 1, 2, 2, Greatest - 3, u"\r\nb"},
        {u"abc", 1, 1, 1, Least, u""},
        {u"abc", 1, Least, 1, 1, u""},
    });
}

TEST(GetTextSelectionTest, TheLinesGetTheirLineBreakEvenWhenTheSelectionFails) {
    Check({{u"abc", 1, 0, 2, 1, u"", u"abc\r\n"}});
}

// The text of random lines between two random places, put together line by line.
TEST(GetTextSelectionTest, AgreesWithSlicingTheLines) {
    Random random(20);
    const std::array<char16_t, 6> characters = {u'a', u' ', u'"', u'\'', u'\u00e9', u'\u4e2d'};
    for (int round = 0; round < 2000; ++round) {
        std::vector<Text> lines(1 + random.Below(5));
        for (Text& line : lines) {
            for (std::size_t length = random.Below(6); length > 0; --length) {
                line += random.Pick(characters);
            }
        }
        const std::size_t first = random.Below(lines.size());
        const std::size_t last = first + random.Below(lines.size() - first);
        const std::size_t from = random.Below(lines[first].size() + 1);
        const std::size_t least = first == last ? from : 0;
        const std::size_t to = least + random.Below(lines[last].size() - least + 1);

        Text read;
        Text expected;
        for (std::size_t line = first; line <= last; ++line) {
            read += (line == first ? u"" : u"\r\n") + lines[line];
            const std::size_t begin = line == first ? from : 0;
            const std::size_t end = line == last ? to : lines[line].size();
            expected += lines[line].substr(begin, end - begin) + (line == last ? u"" : u"\r\n");
        }
        // A selection that ends in front of a line does not have that line among those that are read.
        const bool wholeLines = last > first && to == 0;
        if (wholeLines) {
            read.resize(read.size() - lines[last].size() - 2);
        }
        Text after = read;
        EXPECT_EQ(
            GetTextSelection(after, static_cast<std::int32_t>(first) + 1, static_cast<std::int32_t>(last) + 1,
                             static_cast<std::int32_t>(from) + 1, static_cast<std::int32_t>(to) + 1),
            expected);
        EXPECT_EQ(after, wholeLines ? read + u"\r\n" : read);
    }
}

struct InsertionCase {
    TextView line;
    TextView text;
    std::int32_t column;
    TextView result;
};

void Check(const std::vector<InsertionCase>& cases) {
    for (const InsertionCase& c : cases) {
        EXPECT_EQ(InsertTextInLine(c.line, c.text, c.column), c.result) << "case " << &c - cases.data();
    }
}

TEST(InsertTextInLineTest, SplicesTheTextInFrontOfTheColumn) {
    Check({
        {u"abcd", u"XY", 1, u"XYabcd"},
        {u"abcd", u"XY", 3, u"abXYcd"},
        {u"abcd", u"XY", 5, u"abcdXY"},
        {u"abcd", u"X\r\nY", 2, u"aX\r\nYbcd"},
        {u"abcd", u"", 2, u"abcd"},
        {u"", u"XY", 1, u"XY"},
    });
}

TEST(InsertTextInLineTest, AColumnOutsideTheLineGivesNothing) {
    Check({
        {u"abcd", u"XY", 6, u""},
        {u"abcd", u"XY", 0, u""},
        {u"abcd", u"XY", -3, u""},
        {u"", u"XY", 2, u""},
    });
}

TEST(InsertTextInLineTest, AColumnWhoseArithmeticOverflowsGivesNothing) {
    Check({{u"abcd", u"XY", Least, u""}, {u"abcd", u"XY", Least + 1, u""}, {u"abcd", u"XY", Greatest, u""}});
}

struct CaretCase {
    std::int32_t line;
    std::int32_t column;
    TextView text;
    std::int32_t lineAfter;
    std::int32_t columnAfter;
};

void Check(const std::vector<CaretCase>& cases) {
    for (const CaretCase& c : cases) {
        std::int32_t line = c.line;
        std::int32_t column = c.column;
        TranslateCarret(line, column, c.text);
        EXPECT_EQ(line, c.lineAfter) << "case " << &c - cases.data();
        EXPECT_EQ(column, c.columnAfter) << "case " << &c - cases.data();
    }
}

TEST(TranslateCarretTest, AnEmptyTextLeavesTheCaretWhereItWas) {
    Check({{10, 5, u"", 10, 5}});
}

TEST(TranslateCarretTest, TextOfOneLineMovesTheColumn) {
    Check({{10, 5, u"abc", 10, 8}, {1, 1, u"a\rb\nc", 1, 6}});
}

TEST(TranslateCarretTest, TextOfSeveralLinesEndsBehindItsLastLine) {
    Check({{10, 5, u"abcde\r\nfghij", 11, 6}, {10, 5, u"a\r\n\r\nb", 12, 2}});
}

TEST(TranslateCarretTest, TextThatEndsWithALineBreakGoesToTheFirstColumn) {
    Check({{10, 5, u"abc\r\n", 11, 1}, {10, 5, u"\r\n", 11, 1}, {10, 5, u"a\r\nb\r\n", 12, 1}});
}

TEST(TranslateCarretTest, ANumberThatWouldLeaveTheRangeStays) {
    Check({
        {10, Greatest, u"a", 10, Greatest},
        {10, Greatest - 1, u"a", 10, Greatest},
        {Greatest, 5, u"abc", Greatest, 8},
        {Greatest, 5, u"a\r\nbc", Greatest, 3},
        {Greatest - 1, 5, u"a\r\nbc", Greatest, 3},
        {Greatest - 1, 5, u"a\r\nb\r\nc", Greatest - 1, 2},
    });
}

TEST(TranslateCarretTest, PlacesBeforeTheFirstAreMovedAlike) {
    Check({{0, 0, u"ab", 0, 2}, {-1, -5, u"ab\r\n", 0, 1}, {Least, Least, u"a", Least, Least + 1}});
}

// Really inserts the text into a line and counts where what followed the caret begins.
TEST(TranslateCarretTest, AgreesWithInsertingTheText) {
    Random random(21);
    const std::array<TextView, 5> pieces = {u"a", u"bc", u"\r\n", u" ", u"\u4e2d"};
    for (int round = 0; round < 2000; ++round) {
        Text text;
        for (std::size_t length = random.Below(8); length > 0; --length) {
            text += random.Pick(pieces);
        }
        const Text before(random.Below(5), u'x');
        const std::int32_t caretLine = 1 + static_cast<std::int32_t>(random.Below(100));
        std::int32_t line = caretLine;
        auto column = static_cast<std::int32_t>(before.size()) + 1;
        const Text inserted = InsertTextInLine(before + u"|after", text, column);
        TranslateCarret(line, column, text);

        std::int32_t expectedLine = caretLine;
        std::int32_t expectedColumn = 1;
        for (const char16_t character : inserted.substr(0, inserted.find(u'|'))) {
            expectedLine += character == u'\n' ? 1 : 0;
            expectedColumn = character == u'\n' ? 1 : expectedColumn + 1;
        }
        EXPECT_EQ(line, expectedLine);
        EXPECT_EQ(column, expectedColumn);
    }
}

}  // namespace
}  // namespace lintara::transform
