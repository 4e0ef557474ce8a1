#include "ui/qt/shown_text.h"

#include "ui/qt/text_conversion.h"

#include <gtest/gtest.h>

namespace lintara::ui {
namespace {

TEST(ShownTextTest, EachKindOfBreakIsShownAsOneUnit) {
    EXPECT_EQ(ShownText(u"a\r\nb\rc\nd\u2028e\u2029f").shown(), QStringLiteral("a\nb\nc\nd\ne\nf"));
    EXPECT_EQ(ShownText(u"\r\r\n\n").shown(), QStringLiteral("\n\n\n"));
    EXPECT_EQ(ShownText(u"").shown(), QString());
}

TEST(ShownTextTest, PositionsAreCountedWithOneUnitForABreak) {
    const ShownText text(u"a\r\n\r\nb\rc");
    const std::size_t shownAt[] = {0, 1, 1, 2, 2, 3, 4, 5, 6, 6};
    for (std::size_t position = 0; position < std::size(shownAt); ++position) {
        EXPECT_EQ(text.ToShown(position), shownAt[position]) << position;
    }
    const std::size_t textAt[] = {0, 1, 3, 5, 6, 7, 8, 8};
    for (std::size_t position = 0; position < std::size(textAt); ++position) {
        EXPECT_EQ(text.ToText(position), textAt[position]) << position;
    }
}

TEST(ShownTextTest, WhatTheUserWritesHasTheFormsBreaks) {
    EXPECT_EQ(WithFormBreaks(u"a\nb\u2028c\u2029"), u"a\r\nb\r\nc\r\n");
}

struct DifferenceCase {
    const char16_t* before;
    const char16_t* after;
    qsizetype at;
    qsizetype removed;
    const char16_t* inserted;
};

TEST(DifferenceTest, IsTheOnePieceThatWasReplaced) {
    const DifferenceCase cases[] = {
        {u"", u"", 0, 0, u""},
        {u"abc", u"abc", 3, 0, u""},
        {u"abc", u"abXc", 2, 0, u"X"},
        {u"abc", u"ac", 1, 1, u""},
        {u"aaa", u"aaaa", 3, 0, u"a"},
        {u"abcd", u"aXYd", 1, 2, u"XY"},
        {u"abc", u"", 0, 3, u""},
        // U+1F600 and U+1F601 differ in their second halves, U+1F600 and U+1F200 in their first ones.
        {u"a\xD83D\xDE00z", u"a\xD83D\xDE01z", 1, 2, u"\xD83D\xDE01"},
        {u"a\xD83D\xDE00z", u"a\xD83C\xDE00z", 1, 2, u"\xD83C\xDE00"},
    };
    for (const DifferenceCase& c : cases) {
        const Difference difference = DifferenceOf(ToQString(c.before), ToQString(c.after));
        EXPECT_EQ(difference.at, c.at) << ToQString(c.before).toStdString();
        EXPECT_EQ(difference.removed, c.removed);
        EXPECT_EQ(difference.inserted, ToQString(c.inserted));
    }
}

}  // namespace
}  // namespace lintara::ui
