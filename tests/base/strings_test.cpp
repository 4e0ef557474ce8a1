#include "base/strings.h"

#include "base/text.h"

#include <limits>

#include <gtest/gtest.h>

namespace lintara {
namespace {

constexpr std::int32_t Huge = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

void ExpectInvalidArgument(const auto& result) {
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().number, ErrorNumber::InvalidArgument);
}

TEST(StringsTest, LenCountsCodeUnits) {
    EXPECT_EQ(Len(u""), 0);
    EXPECT_EQ(Len(u"a\U0001F600b"), 4);
}

TEST(StringsTest, LeftTakesAtMostTheWholeText) {
    EXPECT_EQ(Left(u"abc", 2), u"ab");
    EXPECT_EQ(Left(u"abc", 0), u"");
    EXPECT_EQ(Left(u"abc", 3), u"abc");
    EXPECT_EQ(Left(u"abc", Huge), u"abc");
    EXPECT_EQ(Left(u"", 1), u"");
}

TEST(StringsTest, LeftRefusesANegativeLength) {
    ExpectInvalidArgument(Left(u"abc", -1));
    ExpectInvalidArgument(Left(u"", Lowest));
}

TEST(StringsTest, RightTakesAtMostTheWholeText) {
    EXPECT_EQ(Right(u"abc", 2), u"bc");
    EXPECT_EQ(Right(u"abc", 0), u"");
    EXPECT_EQ(Right(u"abc", 3), u"abc");
    EXPECT_EQ(Right(u"abc", Huge), u"abc");
}

TEST(StringsTest, RightRefusesANegativeLength) {
    ExpectInvalidArgument(Right(u"abc", -1));
}

TEST(StringsTest, MidTakesTheRestFromItsStart) {
    EXPECT_EQ(Mid(u"abc", 1), u"abc");
    EXPECT_EQ(Mid(u"abc", 3), u"c");
    EXPECT_EQ(Mid(u"abc", 4), u"");
    EXPECT_EQ(Mid(u"abc", Huge), u"");
}

TEST(StringsTest, MidTakesAtMostSoManyCharacters) {
    EXPECT_EQ(Mid(u"abcd", 2, 2), u"bc");
    EXPECT_EQ(Mid(u"abcd", 2, 0), u"");
    EXPECT_EQ(Mid(u"abcd", 2, Huge), u"bcd");
    EXPECT_EQ(Mid(u"abcd", Huge, Huge), u"");
}

TEST(StringsTest, MidRefusesAStartBelowOneAndANegativeLength) {
    ExpectInvalidArgument(Mid(u"abc", 0));
    ExpectInvalidArgument(Mid(u"abc", Lowest));
    ExpectInvalidArgument(Mid(u"abc", 0, 1));
    ExpectInvalidArgument(Mid(u"abc", 1, -1));
}

TEST(StringsTest, InStrFindsTheFirstOccurrenceFromItsStart) {
    EXPECT_EQ(InStr(u"abcabc", u"bc"), 2);
    EXPECT_EQ(InStr(2, u"abcabc", u"bc"), 2);
    EXPECT_EQ(InStr(3, u"abcabc", u"bc"), 5);
    EXPECT_EQ(InStr(6, u"abcabc", u"bc"), 0);
    EXPECT_EQ(InStr(7, u"abcabc", u"bc"), 0);
    EXPECT_EQ(InStr(Huge, u"abcabc", u"bc"), 0);
    EXPECT_EQ(InStr(u"abc", u"abcd"), 0);
}

TEST(StringsTest, InStrFindsAnEmptyTextAtItsStartInsideTheText) {
    EXPECT_EQ(InStr(u"abc", u""), 1);
    EXPECT_EQ(InStr(3, u"abc", u""), 3);
    EXPECT_EQ(InStr(4, u"abc", u""), 0);
    EXPECT_EQ(InStr(u"", u""), 0);
    EXPECT_EQ(InStr(3, u"abc", u"", Compare::Textual), 3);
}

TEST(StringsTest, InStrRefusesAStartBelowOne) {
    ExpectInvalidArgument(InStr(0, u"abc", u"a"));
    ExpectInvalidArgument(InStr(-1, u"", u""));
}

TEST(StringsTest, InStrTellsCaseApartUnlessComparedAsText) {
    EXPECT_EQ(InStr(u"PRIVATE sUb X", u"Sub"), 0);
    EXPECT_EQ(InStr(u"PRIVATE sUb X", u"Sub", Compare::Textual), 9);
    EXPECT_EQ(InStr(10, u"Sub aSUB Sub", u"sub", Compare::Textual), 10);
    EXPECT_EQ(InStr(u"abc", u"x", Compare::Textual), 0);
}

TEST(StringsTest, TextComparisonFoldsOnlyTheLettersAToZ) {
    EXPECT_EQ(InStr(u"Ä", u"ä", Compare::Textual), 0);
    EXPECT_EQ(InStr(u"@[", u"`{", Compare::Textual), 0);
    EXPECT_EQ(InStr(u"Zz", u"zZ", Compare::Textual), 1);
}

TEST(StringsTest, TrimsTakeBlanksOnly) {
    EXPECT_EQ(LTrim(u"  a b "), u"a b ");
    EXPECT_EQ(RTrim(u" a b  "), u" a b");
    EXPECT_EQ(Trim(u"  a b  "), u"a b");
    EXPECT_EQ(Trim(u"\t a\u00A0"), u"\t a\u00A0");
}

TEST(StringsTest, TrimsOfBlanksAloneAreEmpty) {
    for (const TextView text : {u"", u" ", u"     "}) {
        EXPECT_EQ(LTrim(text), u"");
        EXPECT_EQ(RTrim(text), u"");
        EXPECT_EQ(Trim(text), u"");
    }
}

TEST(StringsTest, SpaceMakesBlanks) {
    EXPECT_EQ(Space(3), Text(u"   "));
    EXPECT_EQ(Space(0), Text());
    ExpectInvalidArgument(Space(-1));
}

}  // namespace
}  // namespace lintara
