#include "forms/text_difference.h"

#include <gtest/gtest.h>

namespace lintara::forms {
namespace {

struct DifferenceCase {
    TextView before;
    TextView after;
    std::size_t at;
    std::size_t removed;
    TextView inserted;
};

TEST(TextDifference, IsTheOnePieceThatWasReplaced) {
    const DifferenceCase cases[] = {
        {u"", u"", 0, 0, u""},      {u"abc", u"abc", 3, 0, u""},   {u"abc", u"abXc", 2, 0, u"X"},
        {u"abc", u"ac", 1, 1, u""}, {u"aaa", u"aaaa", 3, 0, u"a"}, {u"abcd", u"aXYd", 1, 2, u"XY"},
        {u"abc", u"", 0, 3, u""},
    };
    for (const DifferenceCase& c : cases) {
        const TextDifference difference = DifferenceOf(c.before, c.after);
        EXPECT_EQ(difference.at, c.at);
        EXPECT_EQ(difference.removed, c.removed);
        EXPECT_EQ(difference.inserted, c.inserted);
        EXPECT_EQ(difference.IsNone(), c.before == c.after);
    }
}

TEST(TextDifference, TearsNeitherSurrogatePairsNorLineBreaks) {
    const DifferenceCase cases[] = {
        // U+1F600 and U+1F601 differ in their second halves, U+1F600 and U+1F200 in their first ones.
        {u"a\xD83D\xDE00z", u"a\xD83D\xDE01z", 1, 2, u"\xD83D\xDE01"},
        {u"a\xD83D\xDE00z", u"a\xD83C\xDE00z", 1, 2, u"\xD83C\xDE00"},
        {u"a\r\nb", u"a\rb", 1, 2, u"\r"},
        {u"a\nb", u"a\r\nb", 1, 1, u"\r\n"},
    };
    for (const DifferenceCase& c : cases) {
        const TextDifference difference = DifferenceOf(c.before, c.after);
        EXPECT_EQ(difference.at, c.at);
        EXPECT_EQ(difference.removed, c.removed);
        EXPECT_EQ(difference.inserted, c.inserted);
    }
}

}  // namespace
}  // namespace lintara::forms
