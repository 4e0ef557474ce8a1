#include "transform/line_text.h"

#include "base/text.h"

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

TEST(StripCommentTest, ALineWithoutApostropheStaysAsItIs) {
    EXPECT_EQ(StripComment(u"End Sub"), u"End Sub");
    EXPECT_EQ(StripComment(u"  x = 1   "), u"  x = 1   ");
    EXPECT_EQ(StripComment(u""), u"");
}

TEST(StripCommentTest, TheCutCountsFromTheEndOfTheLine) {
    EXPECT_EQ(StripComment(u"End Sub ' done"), u"End");
    EXPECT_EQ(StripComment(u"End Sub  ' comment"), u"End Sub");
    EXPECT_EQ(StripComment(u"End Sub ' 123456"), u"End Su");
    EXPECT_EQ(StripComment(u"End Sub '1234567"), u"End Su");
    EXPECT_EQ(StripComment(u"End Sub ' 1234567"), u"End Sub");
    EXPECT_EQ(StripComment(u"End Sub ' 12345678"), u"End Sub");
    EXPECT_EQ(StripComment(u"End Sub ' 123456789"), u"End Sub '");
}

TEST(StripCommentTest, ALineThatIsOneApostropheBecomesEmpty) {
    EXPECT_EQ(StripComment(u"'"), u"");
}

TEST(StripCommentTest, ACommentLineKeepsAllButItsLastTwoCharacters) {
    EXPECT_EQ(StripComment(u"'ab"), u"'");
    EXPECT_EQ(StripComment(u"' a comment"), u"' a comme");
}

TEST(StripCommentTest, TheCutMayLeaveNothing) {
    EXPECT_EQ(StripComment(u"'a"), u"");
    EXPECT_EQ(StripComment(u"ab'c"), u"");
    EXPECT_EQ(StripComment(u"x ' y"), u"x");
}

TEST(StripCommentTest, AnApostropheAtTheEndOfALongerLineIsANegativeLength) {
    for (const TextView line : {u"ab'", u"a'", u"End Sub '"}) {
        const auto stripped = StripComment(line);
        ASSERT_FALSE(stripped);
        EXPECT_EQ(stripped.error().number, ErrorNumber::InvalidArgument);
    }
}

TEST(StripCommentTest, AnApostropheInQuotesCountsToo) {
    EXPECT_EQ(StripComment(u"s = \"it's\""), u"s");
}

TEST(StripCommentTest, OnlyTrailingBlanksGo) {
    EXPECT_EQ(StripComment(u"  End Sub  ' 123456789"), u"  End Sub");
    EXPECT_EQ(StripComment(u"End Sub\t  ' 123456789"), u"End Sub\t");
}

struct LabelCase {
    TextView line;
    LineLabel expected;
};

class GetLineLabelTest : public testing::TestWithParam<LabelCase> {};

TEST_P(GetLineLabelTest, IsWhatStandsBeforeTheFirstColonWithoutABlank) {
    EXPECT_EQ(GetLineLabel(GetParam().line), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Lines, GetLineLabelTest,
                         testing::Values(LabelCase{u"10000: x = 1", {u"10000", true}},  // a line number
                                         LabelCase{u"hErr:", {u"hErr", true}},          // a label
                                         LabelCase{u": x = 1", {u"", true}},            // a colon first
                                         LabelCase{u":", {u"", true}},                  //
                                         LabelCase{u"x=1:y=2", {u"x=1", true}},  // a statement without blanks
                                         LabelCase{u"s=\"a:b\"", {u"s=\"a", true}},  // a colon in quotes
                                         LabelCase{u"\tx:", {u"\tx", true}},         // a tab is no blank
                                         LabelCase{u"'note: x", {u"'note", true}},   // a comment
                                         LabelCase{u"' note: x", {}},                //
                                         LabelCase{u"x = 1: y = 2", {}},      // a blank before the colon
                                         LabelCase{u"    x = 1: y = 2", {}},  // indented
                                         LabelCase{u"    On Error GoTo hErr", {}},  //
                                         LabelCase{u" hErr:", {}},                  //
                                         LabelCase{u"hErr :", {}},                  //
                                         LabelCase{u"Exit Sub", {}},                // no colon
                                         LabelCase{u"x=1", {}},                     //
                                         LabelCase{u"", {}}));

TEST(GetLineLabelTest, AnIndentedOnErrorLineHasNoLabel) {
    EXPECT_FALSE(GetLineLabel(u"    On Error GoTo hErr").isLabel);
}

TEST(GetLineLabelTest, AnIndentedLineWithTwoStatementsHasNoLabel) {
    EXPECT_FALSE(GetLineLabel(u"    x = 1: y = 2").isLabel);
}

TEST(IsNumericLabelTest, FollowsTheRuntimesTestForNumbers) {
    for (const TextView label : {u"10000", u"0", u"1.5", u"-7", u"&H10", u"1e3", u"$5"}) {
        EXPECT_TRUE(IsNumericLabel(label));
    }
    for (const TextView label : {u"hErr", u"x=1", u"10_", u"L10", u"&H"}) {
        EXPECT_FALSE(IsNumericLabel(label));
    }
}

TEST(IsNumericLabelTest, AnEmptyLabelIsNotNumeric) {
    EXPECT_FALSE(IsNumericLabel(u""));
}

TEST(StripLineLabelTest, TakesOffTheLabelAndTheBlanksBehindIt) {
    EXPECT_EQ(StripLineLabel(u"10000: x = 1"), u"x = 1");
    EXPECT_EQ(StripLineLabel(u"10000:     x = 1 "), u"x = 1 ");
    EXPECT_EQ(StripLineLabel(u"hErr: Exit Sub"), u"Exit Sub");
    EXPECT_EQ(StripLineLabel(u": x"), u"x");
    EXPECT_EQ(StripLineLabel(u"10: "), u"");
}

TEST(StripLineLabelTest, TheFirstColonCountsWhereverItStands) {
    EXPECT_EQ(StripLineLabel(u"    x = 1: y = 2: z = 3"), u"y = 2: z = 3");
    EXPECT_EQ(StripLineLabel(u"s = \"a: b\": t"), u"b\": t");
}

TEST(StripLineLabelTest, WithoutABlankBehindTheColonTheLineStays) {
    EXPECT_EQ(StripLineLabel(u"x=1:y=2: z"), u"x=1:y=2: z");
    EXPECT_EQ(StripLineLabel(u"10000:\tx"), u"10000:\tx");
    EXPECT_EQ(StripLineLabel(u"hErr:"), u"hErr:");
    EXPECT_EQ(StripLineLabel(u":"), u":");
    EXPECT_EQ(StripLineLabel(u"::  "), u"::  ");
}

TEST(StripLineLabelTest, ALineWithoutColonStays) {
    EXPECT_EQ(StripLineLabel(u"  Exit Sub"), u"  Exit Sub");
    EXPECT_EQ(StripLineLabel(u""), u"");
}

}  // namespace
}  // namespace lintara::transform
