#include "cli/scope/wildcard.h"

#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

TEST(Wildcard, MatchesWholeNamesWithoutRegardToCase) {
    EXPECT_TRUE(Wildcard(u"Total").Matches(u"tOTAL"));
    EXPECT_TRUE(Wildcard(u"GRÖSSE").Matches(u"größe") == false);
    EXPECT_TRUE(Wildcard(u"MÜLLER").Matches(u"müller"));
    EXPECT_FALSE(Wildcard(u"Total").Matches(u"Totals"));
    EXPECT_FALSE(Wildcard(u"Total").Matches(u"Tota"));
    EXPECT_FALSE(Wildcard(u"").Matches(u"a"));
}

TEST(Wildcard, StarsStandForAnyCharacters) {
    EXPECT_TRUE(Wildcard(u"*").Matches(u""));
    EXPECT_TRUE(Wildcard(u"*_Click").Matches(u"cmdOk_Click"));
    EXPECT_TRUE(Wildcard(u"*_Click").Matches(u"_Click_Click"));
    EXPECT_TRUE(Wildcard(u"cmd*_*").Matches(u"cmdOk_Click"));
    EXPECT_TRUE(Wildcard(u"a*b*c**").Matches(u"aXbbYc"));
    EXPECT_FALSE(Wildcard(u"*_Click").Matches(u"cmdOk_ClickX"));
    EXPECT_FALSE(Wildcard(u"a*b*c").Matches(u"aXcYb"));
}

TEST(Wildcard, AQuestionMarkStandsForOneCharacter) {
    EXPECT_TRUE(Wildcard(u"Text?").Matches(u"Text1"));
    EXPECT_FALSE(Wildcard(u"Text?").Matches(u"Text"));
    EXPECT_FALSE(Wildcard(u"Text?").Matches(u"Text12"));
    EXPECT_TRUE(Wildcard(u"?*").Matches(u"x"));
    EXPECT_FALSE(Wildcard(u"?*").Matches(u""));
}

TEST(Wildcard, StarsInARowMatchWhatOneDoes) {
    EXPECT_TRUE(Wildcard(u"***").Matches(u""));
    EXPECT_TRUE(Wildcard(u"a**b***?").Matches(u"aXbY"));
    EXPECT_FALSE(Wildcard(u"a**?").Matches(u"a"));
}

TEST(Wildcard, ManyStarsCostNoMoreThanTheirProduct) {
    const Text name(2000, u'a');
    Text pattern;
    for (int i = 0; i < 200; ++i) {
        pattern += u"a*";
    }
    EXPECT_FALSE(Wildcard(pattern + u"b").Matches(name));
}

}  // namespace
}  // namespace lintara::cli
